// Times a repaint of the graph's chart of 15 days, and one step of the pen while a point is
// dragged, at the size of the program's window. The peer in the same run is a bare fill and copy of
// that size.

#include <cstdlib>

#include "benchmarks/window_bench.h"
#include "diary/diary_edit.h"
#include "platform/pocketpc/common_controls.h"
#include "views/graph_view.h"

namespace lunara::bench {
namespace {

constexpr double StepTargetMs = 4.0;
constexpr int DaysRecorded = 4 * 365;

/// Records a temperature and a bleeding level for each of the last DaysRecorded days.
void FillDiary(UserData& data, const SYSTEMTIME& today) {
    DiaryEdit edit(data);
    for (int day = 0; day < DaysRecorded; ++day) {
        SYSTEMTIME date{};
        AddDays(today, -day, date);
        edit.SetTemperature(ToDateKey(date), 9720 + day * 37 % 100);
        edit.SetBleeding(ToDateKey(date), 1 + day % 3);
    }
    if (!edit.Store()) {
        std::abort();
    }
    SYSTEMTIME lastWeek{};
    AddDays(today, -7, lastWeek);
    data.SetCurrentDate(lastWeek);
}

Spread MeasureRepaint(HWND chart) {
    return Measure(Rounds, [&] {
        // Includes fetching the data: a reset makes the chart ask for its points again.
        ::SendMessageW(chart, CHM_RESETDATA, 0, 0);
        ::UpdateWindow(chart);
        ::GdiFlush();
    });
}

/// Drags a point and sets `steps` to the times of its moves. False when no point could be grabbed,
/// or the capture was lost during the drag.
bool MeasureDrag(HWND chart, Spread& steps) {
    RECT client{};
    ::GetClientRect(chart, &client);
    // Presses the button on a grid of positions, column by column from the top down, until one hits
    // a point and the chart takes the capture.
    const LONG x = GraphLeftColumnPx + (client.right - GraphLeftColumnPx) / 4;
    for (LONG reach = 0; reach < 60; ++reach) {
        for (LONG y = 0; y < client.bottom; y += 4) {
            ::SendMessageW(chart, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x + reach, y));
            if (::GetCapture() == chart) {
                ::UpdateWindow(chart);
                int step = 0;
                steps = Measure(Rounds, [&] {
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
    const SYSTEMTIME today = SetSurroundings();
    UserData data;
    FillDiary(data, today);
    Window frame;
    GraphView view(data);
    if (!ShowView(frame, view, WS_CLIPCHILDREN)) {
        return 2;
    }
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
    // All are printed, whatever the first one says.
    const bool isTemperatureKept = Keeps("temperature", temperature, bare, RepaintTargetMs);
    const bool isBleedingKept = Keeps("bleeding", bleeding, bare, RepaintTargetMs);
    const bool isDragKept = Keeps("drag step", steps, bare, StepTargetMs);
    return isTemperatureKept && isBleedingKept && isDragKept ? 0 : 1;
}

}  // namespace
}  // namespace lunara::bench

int main() { return lunara::bench::Run(); }
