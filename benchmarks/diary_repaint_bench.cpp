// Times scrolling the diary by one day and repainting it, at the size of the program's window. The
// peer in the same run is a bare fill and copy of that size.

#include <cstdlib>

#include "benchmarks/window_bench.h"
#include "cycle/predictor.h"
#include "diary/diary_edit.h"
#include "views/diary_view.h"

namespace lunara::bench {
namespace {

constexpr int CyclesRecorded = 52;  // four years
constexpr int CycleDays = 28;
constexpr int PeriodDays = 5;

/// Records four years of cycles of 26 to 30 days and, for the last three years and the coming 30
/// days, a note every third day.
void FillDiary(UserData& data, const SYSTEMTIME& today) {
    DiaryEdit edit(data);
    SYSTEMTIME start{};
    AddDays(today, -CyclesRecorded * CycleDays, start);
    for (int cycle = 0; cycle < CyclesRecorded; ++cycle) {
        for (int day = 0; day < PeriodDays; ++day) {
            SYSTEMTIME date{};
            AddDays(start, day, date);
            edit.SetBleeding(ToDateKey(date), day == 1 ? 3 : 2);
        }
        AddDays(start, CycleDays - 2 + cycle % 5, start);
    }
    if (!edit.Store()) {
        std::abort();
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
    const SYSTEMTIME today = SetSurroundings();
    UserData data;
    FillDiary(data, today);
    Window frame;
    DiaryView view(data);
    if (!ShowView(frame, view)) {
        return 2;
    }

    int step = 0;
    const Spread scrolled = Measure(Rounds, [&] {
        // 100 days down and up again, so that past, predicted and empty days are all painted.
        const int request = ++step % 200 < 100 ? SB_LINEDOWN : SB_LINEUP;
        ::SendMessageW(view.Handle(), WM_VSCROLL, static_cast<WPARAM>(request), 0);
        ::RedrawWindow(view.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        ::GdiFlush();
    });
    const Spread bare = MeasureBare(frame.Handle());
    ::DestroyWindow(frame.Handle());

    std::printf("g++ %s, %d repaints of %d x %d px\n", __VERSION__, Rounds, WidthPx, HeightPx);
    Print("scroll by a day and repaint", scrolled);
    Print("bare fill and copy", bare);
    return Keeps("scroll", scrolled, bare, RepaintTargetMs) ? 0 : 1;
}

}  // namespace
}  // namespace lunara::bench

int main() { return lunara::bench::Run(); }
