// The Show commands, from the menu and from the menu bar, in both views, and the commands that
// switch views.

#include <windows.h>

// commctrl.h requires windows.h.
#include <commctrl.h>

#include "tests/driver/menus.h"
#include "tests/driver/wait.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

struct Show {
    const char* label;
    UINT command;
    DWORD bit;  // in the setting DiaryView_ShowFlags
};

constexpr std::array<Show, 5> DiaryItems = {{
    {"Notes", CommandShowNotes, 1},
    {"Bleeding", CommandShowBleeding, 2},
    {"Period", CommandShowPeriod, 4},
    {"Ovulation", CommandShowOvulation, 8},
    {"Pregnancy", CommandShowPregnancy, 16},
}};
constexpr int On = TBSTATE_ENABLED | TBSTATE_CHECKED;
constexpr int Off = TBSTATE_ENABLED;

class Commands : public EndToEnd {
  protected:
    void SetUp() override {
        EndToEnd::SetUp();
        MakeSampleDiary(L"Anna");
    }

    /// Counts the cells of the first row on the screen: each ends in a black border.
    static int CellsShown(Program& program) {
        const int side = program.AskRow(0, 5).height;
        const Picture agenda = Program::Look(program.Agenda());
        int cells = 0;
        while (agenda.At((cells + 1) * side, side / 2) == RGB(0, 0, 0)) {
            ++cells;
        }
        return cells;
    }

    /// Whether the rows come to have that many cells. Polls, because painting comes after all
    /// messages.
    static testing::AssertionResult ShowsCells(Program& program, int cells) {
        if (WaitFor([&] { return CellsShown(program) == cells; })) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << CellsShown(program) << " cells are shown";
    }
};

TEST_F(Commands, DiaryItemsAreToggledFromMenuAndMenuBar) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    EXPECT_TRUE(ShowsCells(program, 5));
    for (const Show& item : DiaryItems) {
        SCOPED_TRACE(item.label);
        EXPECT_EQ(ButtonState(program, item.command), On);
        ASSERT_TRUE(SwitchByButton(program, item.command));
        EXPECT_EQ(ButtonState(program, item.command), Off);
        EXPECT_TRUE(ShowsCells(program, 4));
        ASSERT_TRUE(SwitchByMenu(program, item.command));
        EXPECT_EQ(ButtonState(program, item.command), On);
        EXPECT_TRUE(ShowsCells(program, 5));
    }
    EXPECT_TRUE(program.Exit());
}

TEST_F(Commands, TheLastShownItemCannotBeHidden) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    for (const Show& item : DiaryItems) {
        if (item.command != CommandShowPeriod) {
            ASSERT_TRUE(SwitchByButton(program, item.command));
        }
    }
    EXPECT_TRUE(ShowsCells(program, 1));
    ASSERT_TRUE(SwitchByMenu(program, CommandShowPeriod));
    program.Keep(L"period-only");
    EXPECT_EQ(ButtonState(program, CommandShowPeriod), On);
    EXPECT_TRUE(ShowsCells(program, 1));
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(ReadNumber(L"DiaryView_ShowFlags"), 4u);
}

TEST_F(Commands, ARefusedClickLeavesTheButtonPressed) {
    WriteNumber(L"DiaryView_ShowFlags", 2);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    EXPECT_EQ(ButtonState(program, CommandShowNotes), Off);
    ASSERT_TRUE(SwitchByButton(program, CommandShowBleeding));
    EXPECT_EQ(ButtonState(program, CommandShowBleeding), On);
    EXPECT_TRUE(ShowsCells(program, 1));
    EXPECT_TRUE(program.Exit());
}

TEST_F(Commands, ChosenItemsComeBackAtTheNextStart) {
    WriteNumber(L"DiaryView_ShowFlags", 2 + 16);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    for (const Show& item : DiaryItems) {
        EXPECT_EQ(ButtonState(program, item.command), (item.bit & 18U) != 0 ? On : Off)
            << item.label;
    }
    EXPECT_TRUE(ShowsCells(program, 2));
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(ReadNumber(L"DiaryView_ShowFlags"), 18u);
}

TEST_F(Commands, ViewCommandsSwitchTheViewAndItsButtons) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    EXPECT_TRUE(program.IsOnTop(program.Diary()));
    EXPECT_NE(ButtonState(program, CommandShowTemperature) & TBSTATE_HIDDEN, 0);
    for (const Show& item : DiaryItems) {
        EXPECT_EQ(ButtonStyle(program, item.command), TBSTYLE_CHECK) << item.label;
    }

    ASSERT_TRUE(SwitchByMenu(program, CommandViewGraph));
    program.Keep(L"graph");
    EXPECT_TRUE(program.IsOnTop(program.Graph()));
    for (const UINT hidden :
         {CommandShowNotes, CommandShowPeriod, CommandShowOvulation, CommandShowPregnancy}) {
        EXPECT_NE(ButtonState(program, hidden) & TBSTATE_HIDDEN, 0) << hidden;
    }
    for (const UINT shown : {CommandShowBleeding, CommandShowTemperature}) {
        EXPECT_EQ(ButtonState(program, shown) & TBSTATE_HIDDEN, 0) << shown;
        EXPECT_EQ(ButtonStyle(program, shown), TBSTYLE_CHECKGROUP) << shown;
    }

    ASSERT_TRUE(ChooseFromMenu(program, CommandViewDiary));
    ASSERT_TRUE(program.PutWarningAway());
    EXPECT_TRUE(program.IsOnTop(program.Diary()));
    EXPECT_NE(ButtonState(program, CommandShowTemperature) & TBSTATE_HIDDEN, 0);
    for (const Show& item : DiaryItems) {
        EXPECT_EQ(ButtonState(program, item.command), On) << item.label;
    }
    EXPECT_TRUE(program.Exit());
}

TEST_F(Commands, GraphShowsEitherBleedingOrTemperature) {
    WriteNumber(L"CurrentView", ViewGraph);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const auto expect = [&](UINT checked, UINT other) {
        EXPECT_EQ(ButtonState(program, checked), On) << checked;
        EXPECT_EQ(ButtonState(program, other), Off) << other;
    };
    ASSERT_TRUE(SwitchByButton(program, CommandShowTemperature));
    expect(CommandShowTemperature, CommandShowBleeding);
    ASSERT_TRUE(SwitchByMenu(program, CommandShowBleeding));
    expect(CommandShowBleeding, CommandShowTemperature);
    ASSERT_TRUE(SwitchByMenu(program, CommandShowTemperature));
    expect(CommandShowTemperature, CommandShowBleeding);
    ASSERT_TRUE(SwitchByButton(program, CommandShowBleeding));
    expect(CommandShowBleeding, CommandShowTemperature);
    // The menu also offers the items that only the diary has; in the graph they do nothing.
    for (const UINT other :
         {CommandShowNotes, CommandShowPeriod, CommandShowOvulation, CommandShowPregnancy}) {
        ASSERT_TRUE(SwitchByMenu(program, other));
        expect(CommandShowBleeding, CommandShowTemperature);
    }
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(ReadNumber(L"CurrentView"), ViewGraph);
}

TEST_F(Commands, AboutHidesTheButtonsWhileItIsShown) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    program.Press('A', true);
    const HWND about = program.WaitForDialog(L"About Lunara");
    ASSERT_NE(about, nullptr);
    program.Keep(L"about");
    for (const Show& item : DiaryItems) {
        EXPECT_NE(ButtonState(program, item.command) & TBSTATE_HIDDEN, 0) << item.label;
    }
    ASSERT_TRUE(program.Leave(about, ControlOk));
    ASSERT_TRUE(program.Settle());
    for (const Show& item : DiaryItems) {
        EXPECT_EQ(ButtonState(program, item.command), On) << item.label;
    }
    EXPECT_TRUE(program.Exit());
}

}  // namespace
}  // namespace lunara::test
