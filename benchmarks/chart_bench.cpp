// What it costs to repaint the graph's chart for 15 days and to move the pen by one step while a
// point is dragged, at the size of the program's window, beside a bare fill and copy of the same
// size in the same run.

#include <algorithm>
#include <cstdio>
#include <vector>

#include "frame/gdi.h"
#include "frame/settings.h"
#include "frame/window.h"
#include "platform/clock.h"
#include "platform/pocketpc/common_controls.h"
#include "records/dates.h"
#include "records/user_data.h"
#include "views/graph_view.h"

namespace lunara {
namespace {

constexpr int WidthPx = 480;
constexpr int HeightPx = 640;
constexpr int Rounds = 400;
constexpr double RepaintTargetMs = 8.0;
constexpr double StepTargetMs = 4.0;
constexpr int DaysRecorded = 4 * 365;

double NowMs() {
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    ::QueryPerformanceCounter(&count);
    ::QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

struct Spread {
    double median;
    double low;   // tenth percentile
    double high;  // ninetieth percentile
    double worst;
};

template <typename Work>
Spread Measure(Work work) {
    std::vector<double> times;
    for (int i = 0; i < Rounds; ++i) {
        const double start = NowMs();
        work();
        times.push_back(NowMs() - start);
    }
    std::sort(times.begin(), times.end());
    return {times[Rounds / 2], times[Rounds / 10], times[Rounds * 9 / 10], times.back()};
}

void Print(const char* name, const Spread& spread) {
    std::printf("%-32s median %7.3f ms   10%% %7.3f   90%% %7.3f   worst %7.3f\n", name,
                spread.median, spread.low, spread.high, spread.worst);
}

bool Keeps(const char* name, const Spread& spread, const Spread& bare, double targetMs) {
    const bool isKept = spread.median <= targetMs;
    std::printf("%s: %.1f times the bare fill and copy; at most %.0f ms allowed: %s\n", name,
                spread.median / bare.median, targetMs, isKept ? "kept" : "EXCEEDED");
    return isKept;
}

/// A temperature and a level for every day.
void FillDiary(UserData& data, const SYSTEMTIME& today) {
    for (int day = 0; day < DaysRecorded; ++day) {
        SYSTEMTIME date{};
        AddDays(today, -day, date);
        data.temperature.Set(ToDateKey(date), 9720 + day * 37 % 100);
        data.bleeding.Set(ToDateKey(date), 1 + day % 3);
    }
    SYSTEMTIME lastWeek{};
    AddDays(today, -7, lastWeek);
    data.SetCurrentDate(lastWeek);
}

Spread MeasureBare(HWND window) {
    const WindowDcScope screen(window);
    const MemoryDc memory(::CreateCompatibleDC(screen.Dc()));
    const Bitmap bitmap(::CreateCompatibleBitmap(screen.Dc(), WidthPx, HeightPx));
    const SelectScope selected(memory.Get(), bitmap.Get());
    const RECT all = {0, 0, WidthPx, HeightPx};
    return Measure([&] {
        ::FillRect(memory.Get(), &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        ::BitBlt(screen.Dc(), 0, 0, WidthPx, HeightPx, memory.Get(), 0, 0, SRCCOPY);
        ::GdiFlush();
    });
}

Spread MeasureRepaint(HWND chart) {
    return Measure([&] {
        // From the data on: the points are asked for anew as after every change.
        ::SendMessageW(chart, CHM_RESETDATA, 0, 0);
        ::UpdateWindow(chart);
        ::GdiFlush();
    });
}

/// Whether a point could be taken hold of and was held to the end; then `steps` is what the moves
/// cost.
bool MeasureDrag(HWND chart, Spread& steps) {
    RECT client{};
    ::GetClientRect(chart, &client);
    // The middle of a column, from the top down until there is a point.
    const LONG x = GraphLeftColumnPx + (client.right - GraphLeftColumnPx) / 4;
    for (LONG reach = 0; reach < 60; ++reach) {
        for (LONG y = 0; y < client.bottom; y += 4) {
            ::SendMessageW(chart, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x + reach, y));
            if (::GetCapture() == chart) {
                ::UpdateWindow(chart);
                int step = 0;
                steps = Measure([&] {
                    ++step;
                    ::SendMessageW(chart, WM_MOUSEMOVE, MK_LBUTTON,
                                   MAKELPARAM(x, 20 + step * 7 % 300));
                    ::GdiFlush();
                });
                const bool wasHeld = ::GetCapture() == chart;
                ::ReleaseCapture();
                return wasHeld;
            }
        }
    }
    return false;
}

int Run() {
    INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    ::InitCommonControlsEx(&controls);
    SYSTEMTIME today{};
    FromDateKey(MakeDateKey(2026, 3, 15), today);
    SetLocalNow(today);
    SetSettingsLocation({nullptr, nullptr, TEXT("")});

    UserData data;
    FillDiary(data, today);
    Window frame;
    GraphView view(data);
    if (frame.Create(0, nullptr, TEXT("Chart"), WS_POPUP | WS_VISIBLE, 0, 0, WidthPx, HeightPx,
                     nullptr, nullptr) == 0 ||
        view.Create(0, nullptr, TEXT("Graph view"), WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                    WidthPx, HeightPx, frame.Handle(), nullptr) == 0) {
        std::fprintf(stderr, "no window could be made\n");
        return 2;
    }
    ::RedrawWindow(view.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const HWND chart = ::GetDlgItem(view.Handle(), GraphView::ChartId);

    const Spread temperature = MeasureRepaint(chart);
    Spread steps{};
    const bool hasDragged = MeasureDrag(chart, steps);
    view.SetShowBleeding(true);
    const Spread bleeding = MeasureRepaint(chart);
    const Spread bare = MeasureBare(frame.Handle());
    ::DestroyWindow(frame.Handle());
    if (!hasDragged) {
        std::fprintf(stderr, "no point could be dragged\n");
        return 2;
    }

    std::printf("g++ %s, %d rounds, %d days recorded, %d x %d px\n", __VERSION__, Rounds,
                DaysRecorded, WidthPx, HeightPx);
    Print("repaint the temperature chart", temperature);
    Print("repaint the bleeding chart", bleeding);
    Print("one step of a drag", steps);
    Print("bare fill and copy", bare);
    const bool isKept = Keeps("temperature", temperature, bare, RepaintTargetMs) &
                        Keeps("bleeding", bleeding, bare, RepaintTargetMs) &
                        Keeps("drag step", steps, bare, StepTargetMs);
    return isKept ? 0 : 1;
}

}  // namespace
}  // namespace lunara

int main() {
    lunara::SetAppInstance(::GetModuleHandleW(nullptr));
    return lunara::Run();
}
