// A main window left alone for hours: its minute timer must not leak memory.

#include <array>
#include <cstdlib>
#include <memory>

#include "platform/clock.h"
#include "resources/ids.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara::test {
namespace {

/// Bytes and blocks in use on all heaps of the process. There are several: the C library has its
/// own.
struct HeapUse {
    std::size_t bytes = 0;
    int blocks = 0;
};

HeapUse MeasureHeap() {
    HeapUse use;
    std::array<HANDLE, 32> heaps{};
    const DWORD count = ::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    EXPECT_LE(count, heaps.size());
    for (DWORD i = 0; i < count && i < heaps.size(); ++i) {
        PROCESS_HEAP_ENTRY entry{};
        ::HeapLock(heaps[i]);
        while (::HeapWalk(heaps[i], &entry) != FALSE) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
                use.bytes += entry.cbData;
                ++use.blocks;
            }
        }
        ::HeapUnlock(heaps[i]);
    }
    return use;
}

class MainWindowIdle : public MainWindowTest {
  protected:
    /// Plays that many ticks of the minute timer, with the painting that each causes.
    void Idle(int minutes) {
        for (int minute = 0; minute < minutes; ++minute) {
            Send(WM_TIMER, DayTimerId);
            PumpMessages();
        }
    }
};

TEST_F(MainWindowIdle, TheMeasurementSeesAnAllocation) {
    const HeapUse before = MeasureHeap();
    const std::unique_ptr<char, decltype(&std::free)> kept(static_cast<char*>(std::malloc(5000)),
                                                           &std::free);
    kept.get()[0] = 1;  // or the compiler optimises the allocation away
    EXPECT_EQ(MeasureHeap().blocks, before.blocks + 1);
    EXPECT_GE(MeasureHeap().bytes, before.bytes + 5000);
}

TEST_F(MainWindowIdle, MemoryDoesNotGrowWhileTheProgramIsLeftAlone) {
    // Fewer than one block in ten minutes and one byte a minute, so a leak at each tick would show.
    constexpr int Minutes = 500;
    constexpr int ToleranceBlocks = Minutes / 10;
    constexpr std::size_t ToleranceBytes = Minutes;
    for (const UINT view : {UINT{IDM_VIEW_DIARY}, UINT{IDM_VIEW_GRAPH}}) {
        SCOPED_TRACE(view);
        RemoveUser(TestUser);
        ASSERT_EQ(SignIn(), 1);
        FillDiary(main->Data());
        Command(view);
        for (const SYSTEMTIME& today : {TestToday, Day(2024, 5, 18)}) {
            SetLocalNow(today);
            Idle(50);  // fills the caches of fonts and of the system
            const HeapUse before = MeasureHeap();
            Idle(Minutes);
            const HeapUse after = MeasureHeap();
            EXPECT_LE(after.blocks, before.blocks + ToleranceBlocks);
            EXPECT_LE(after.bytes, before.bytes + ToleranceBytes);
        }
        ASSERT_TRUE(Close());
    }
}

}  // namespace
}  // namespace lunara::test
