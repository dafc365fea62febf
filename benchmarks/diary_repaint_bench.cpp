// What it costs to scroll the diary by one day and paint it again, at the size of the program's
// window, beside a bare fill and copy of the same size in the same run.

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "cycle/predictor.h"
#include "frame/gdi.h"
#include "frame/settings.h"
#include "frame/window.h"
#include "platform/clock.h"
#include "records/dates.h"
#include "records/user_data.h"
#include "views/diary_view.h"

namespace lunara {
namespace {

constexpr int WidthPx = 480;
constexpr int HeightPx = 640;
constexpr int Repaints = 400;
constexpr double TargetMs = 8.0;
constexpr int CyclesRecorded = 52;  // four years
constexpr int CycleDays = 28;
constexpr int PeriodDays = 5;

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
    for (int i = 0; i < Repaints; ++i) {
        const double start = NowMs();
        work();
        times.push_back(NowMs() - start);
    }
    std::sort(times.begin(), times.end());
    return {times[Repaints / 2], times[Repaints / 10], times[Repaints * 9 / 10], times.back()};
}

void Print(const char* name, const Spread& spread) {
    std::printf("%-28s median %7.3f ms   10%% %7.3f   90%% %7.3f   worst %7.3f\n", name,
                spread.median, spread.low, spread.high, spread.worst);
}

/// Four years of cycles that vary by a few days, and a note every third day.
void FillDiary(UserData& data, const SYSTEMTIME& today) {
    SYSTEMTIME start{};
    AddDays(today, -CyclesRecorded * CycleDays, start);
    for (int cycle = 0; cycle < CyclesRecorded; ++cycle) {
        for (int day = 0; day < PeriodDays; ++day) {
            SYSTEMTIME date{};
            AddDays(start, day, date);
            data.bleeding.Set(ToDateKey(date), day == 1 ? 3 : 2);
        }
        AddDays(start, CycleDays - 2 + cycle % 5, start);
    }
    for (int day = -3 * 365; day < 30; day += 3) {
        SYSTEMTIME date{};
        AddDays(today, day, date);
        data.SetNoteFlags(day % 2 == 0 ? NoteFlagCramps : NoteFlagPms, &date);
        data.SetNoteText(TEXT("a note of some length"), &date);
    }
    UpdatePrediction(data, 0);
}

int Run() {
    SYSTEMTIME today{};
    FromDateKey(MakeDateKey(2026, 3, 15), today);
    SetLocalNow(today);
    SetSettingsLocation({nullptr, nullptr, TEXT("")});

    UserData data;
    FillDiary(data, today);
    Window frame;
    DiaryView view(data);
    if (frame.Create(0, nullptr, TEXT("Diary repaint"), WS_POPUP | WS_VISIBLE, 0, 0, WidthPx,
                     HeightPx, nullptr, nullptr) == 0 ||
        view.Create(0, nullptr, TEXT("Diary view"), WS_CHILD | WS_VISIBLE, 0, 0, WidthPx, HeightPx,
                    frame.Handle(), nullptr) == 0) {
        std::fprintf(stderr, "no window could be made\n");
        return 2;
    }
    const auto repaint = [&view] {
        ::RedrawWindow(view.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        ::GdiFlush();
    };
    repaint();

    int step = 0;
    const Spread scrolled = Measure([&] {
        // Down a quarter of a year and up again, so that all kinds of days come by.
        const int request = ++step % 200 < 100 ? SB_LINEDOWN : SB_LINEUP;
        ::SendMessageW(view.Handle(), WM_VSCROLL, static_cast<WPARAM>(request), 0);
        repaint();
    });

    Spread bare{};
    {
        const WindowDcScope screen(frame.Handle());
        const MemoryDc memory(::CreateCompatibleDC(screen.Dc()));
        const Bitmap bitmap(::CreateCompatibleBitmap(screen.Dc(), WidthPx, HeightPx));
        const SelectScope selected(memory.Get(), bitmap.Get());
        const RECT all = {0, 0, WidthPx, HeightPx};
        bare = Measure([&] {
            ::FillRect(memory.Get(), &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
            ::BitBlt(screen.Dc(), 0, 0, WidthPx, HeightPx, memory.Get(), 0, 0, SRCCOPY);
            ::GdiFlush();
        });
    }
    std::printf("g++ %s, %d repaints of %d x %d px\n", __VERSION__, Repaints, WidthPx, HeightPx);
    Print("scroll by a day and repaint", scrolled);
    Print("bare fill and copy", bare);
    std::printf("ratio %.1f; at most %.0f ms allowed: %s\n", scrolled.median / bare.median,
                TargetMs, scrolled.median <= TargetMs ? "kept" : "EXCEEDED");
    ::DestroyWindow(frame.Handle());
    return scrolled.median <= TargetMs ? 0 : 1;
}

}  // namespace
}  // namespace lunara

int main() {
    lunara::SetAppInstance(::GetModuleHandleW(nullptr));
    return lunara::Run();
}
