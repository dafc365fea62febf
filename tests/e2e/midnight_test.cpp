// A new day begins while the program runs. One test waits for the program's minute timer in real
// time.

#include "tests/driver/wait.h"
#include "tests/e2e/expectation.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

/// Longer than the minute after which the program's timer compares the date.
constexpr DWORD TimerPatienceMs = 90000;

class Midnight : public EndToEnd {};

TEST_F(Midnight, TheNewDaysPredictionIsShownByItself) {
    MakeSampleDiary(L"Anna");
    // A period is expected on this day, so that a day without it moves the whole prediction.
    const Day lateDay = AddDays(Today, 17);
    ASSERT_TRUE(SetToday(lateDay));
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    CompareDiary(program, folder, Expectation(folder, L"Anna", Password, lateDay));
    program.Keep(L"before");
    const Picture before = Program::Look(program.Agenda());

    const Day tomorrow = AddDays(lateDay, 1);
    ASSERT_TRUE(SetToday(tomorrow));
    EXPECT_TRUE(
        WaitFor([&] { return !(Program::Look(program.Agenda()) == before); }, TimerPatienceMs))
        << "nothing changes by itself";
    ASSERT_TRUE(program.Settle());
    program.Keep(L"after");
    EXPECT_EQ(program.FindAnyDialog(), nullptr) << "the timer warns of nothing";
    CompareDiary(program, folder, Expectation(folder, L"Anna", Password, tomorrow));

    // The next tick of the timer finds the same day and changes nothing.
    ::SendMessageW(program.Main(), WM_TIMER, DayTimer, 0);
    CompareDiary(program, folder, Expectation(folder, L"Anna", Password, tomorrow));
    EXPECT_TRUE(program.Exit());
}

TEST_F(Midnight, SeveralDaysThatPassAtOnceAreCaughtUp) {
    MakeSampleDiary(L"Anna");
    ASSERT_TRUE(SetToday(AddDays(Today, 17)));
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const Day later = AddDays(Today, 21);
    ASSERT_TRUE(SetToday(later));
    ::SendMessageW(program.Main(), WM_TIMER, DayTimer, 0);
    ASSERT_TRUE(program.Settle());
    ::UpdateWindow(program.Agenda());
    ASSERT_TRUE(program.Settle());
    program.Keep(L"later");
    CompareDiary(program, folder, Expectation(folder, L"Anna", Password, later));
    EXPECT_TRUE(program.Exit());
}

}  // namespace
}  // namespace lunara::test
