// Switching between charts, units and views keeps the date, and the next start restores all
// choices.

#include <windows.h>

// commctrl.h requires windows.h.
#include <commctrl.h>

#include "tests/driver/fields.h"
#include "tests/driver/graph.h"
#include "tests/driver/menus.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

constexpr int On = TBSTATE_ENABLED | TBSTATE_CHECKED;
constexpr int Off = TBSTATE_ENABLED;
constexpr Day LongAgo{2005, 12, 24};

class GraphSettings : public EndToEnd {
  protected:
    static void ExpectSettings(DWORD view, DWORD chart, DWORD measure, DWORD diaryItems) {
        EXPECT_EQ(ReadNumber(L"CurrentView"), view);
        EXPECT_EQ(ReadNumber(L"GraphView_ShowFlags"), chart);
        EXPECT_EQ(ReadNumber(L"TemperatureMeasure"), measure);
        EXPECT_EQ(ReadNumber(L"DiaryView_ShowFlags"), diaryItems);
    }

    /// Checks the value field, the unit buttons and the menu bar for a chart of temperature or
    /// bleeding.
    static void ExpectChart(Program& program, bool temperature, const std::wstring& value) {
        const GraphScreen graph(program);
        EXPECT_TRUE(program.IsOnTop(program.Graph()));
        EXPECT_EQ(graph.ShowsUnits(), temperature);
        EXPECT_EQ(graph.Value(), value);
        EXPECT_EQ(ButtonState(program, CommandShowTemperature), temperature ? On : Off);
        EXPECT_EQ(ButtonState(program, CommandShowBleeding), temperature ? Off : On);
    }

    /// Whether the day is one of the 15 on the chart. A failure names the day's column.
    static testing::AssertionResult GraphShows(const GraphScreen& graph, Day day) {
        constexpr int DaysShown = 15;
        const int column = DaysBetween(day, graph.FirstDay());
        return (column >= 0 && column < DaysShown ? testing::AssertionSuccess()
                                                  : testing::AssertionFailure())
               << "column " << column;
    }

    /// Whether the day has a row, perhaps a cut one, in the diary.
    static testing::AssertionResult DiaryShows(Program& program, Day day) {
        RECT calendar{};
        ::GetClientRect(program.Calendar(), &calendar);
        const CalendarHit first = program.FirstCell(program.Calendar());
        const LONG rows = calendar.bottom / (first.cell.bottom - first.cell.top);
        const int row = DaysBetween(day, ToDay(first.date));
        return (row >= 0 && row < rows ? testing::AssertionSuccess() : testing::AssertionFailure())
               << "row " << row << " of " << rows;
    }
};

TEST_F(GraphSettings, ChangingChartOrUnitKeepsTheDate) {
    WriteNumber(L"CurrentView", ViewGraph);
    WriteNumber(L"GraphView_ShowFlags", 2);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const GraphScreen graph(program);
    ASSERT_TRUE(PickFromCalendar(program, graph.Control(GraphDatePicker), LongAgo));
    ASSERT_TRUE(ClickArrow(program, graph.Control(GraphSpin), true));
    EXPECT_TRUE(GraphShows(graph, LongAgo));
    const Day first = graph.FirstDay();
    const auto expectDate = [&] {
        EXPECT_EQ(IsoDate(graph.CurrentDay()), IsoDate(LongAgo));
        EXPECT_EQ(IsoDate(graph.FirstDay()), IsoDate(first));
    };
    ExpectChart(program, true, L"97.6");
    EXPECT_TRUE(graph.IsUnit(GraphFahrenheit));

    ASSERT_TRUE(graph.ClickUnit(GraphCelsius));
    program.Keep(L"celsius");
    ExpectChart(program, true, L"36.4");
    EXPECT_TRUE(graph.IsUnit(GraphCelsius));
    expectDate();
    ASSERT_TRUE(SwitchByButton(program, CommandShowBleeding));
    program.Keep(L"bleeding");
    ExpectChart(program, false, L"None");
    expectDate();
    ASSERT_TRUE(SwitchByButton(program, CommandShowTemperature));
    ExpectChart(program, true, L"36.4");
    EXPECT_TRUE(graph.IsUnit(GraphCelsius));
    expectDate();
    ASSERT_TRUE(graph.ClickUnit(GraphFahrenheit));
    ExpectChart(program, true, L"97.6");
    // A click on the unit that is already chosen changes nothing.
    ASSERT_TRUE(graph.ClickUnit(GraphFahrenheit));
    ExpectChart(program, true, L"97.6");
    EXPECT_TRUE(graph.IsUnit(GraphFahrenheit));
    expectDate();
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader + "2005-12-24,,97.60,,,\r\n");
}

TEST_F(GraphSettings, SwitchingViewsKeepsTheDate) {
    WriteNumber(L"CurrentView", ViewGraph);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const GraphScreen graph(program);
    ASSERT_TRUE(PickFromCalendar(program, graph.Control(GraphDatePicker), LongAgo));
    EXPECT_TRUE(GraphShows(graph, LongAgo));
    const Day first = graph.FirstDay();
    ASSERT_TRUE(ChooseFromMenu(program, CommandViewDiary));
    ASSERT_TRUE(program.PutWarningAway());
    program.Keep(L"diary");
    EXPECT_TRUE(program.IsOnTop(program.Diary()));
    EXPECT_TRUE(DiaryShows(program, LongAgo));
    EXPECT_FALSE(DiaryShows(program, Today));

    ASSERT_TRUE(SwitchByMenu(program, CommandViewGraph));
    EXPECT_TRUE(program.IsOnTop(program.Graph()));
    EXPECT_EQ(IsoDate(graph.CurrentDay()), IsoDate(LongAgo));
    EXPECT_EQ(IsoDate(graph.FirstDay()), IsoDate(first));

    // A date that neither view shows scrolls both.
    ASSERT_TRUE(PickFromCalendar(program, graph.Control(GraphDatePicker), Today));
    EXPECT_TRUE(GraphShows(graph, Today));
    ASSERT_TRUE(SwitchByMenu(program, CommandViewDiary));
    EXPECT_TRUE(DiaryShows(program, Today));
    EXPECT_FALSE(DiaryShows(program, LongAgo));
    EXPECT_TRUE(program.Exit());
}

TEST_F(GraphSettings, TheFirstStartShowsAndSavesTheDefaults) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    program.Keep(L"first-start");
    // The default is bleeding, although the chart control itself starts with temperatures.
    ExpectChart(program, false, L"None");
    ASSERT_TRUE(program.Exit());
    ExpectSettings(ViewGraph, 1, 0, 31);
}

TEST_F(GraphSettings, EverythingIsFoundAgainAtTheNextStart) {
    {
        Program program(folder);
        ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
        ASSERT_TRUE(SwitchByButton(program, CommandShowTemperature));
        ASSERT_TRUE(GraphScreen(program).ClickUnit(GraphCelsius));
        ASSERT_TRUE(ChooseFromMenu(program, CommandViewDiary));
        ASSERT_TRUE(program.PutWarningAway());
        for (const UINT item : {CommandShowNotes, CommandShowOvulation}) {
            ASSERT_TRUE(SwitchByButton(program, item));
        }
        ASSERT_TRUE(program.Exit());
    }
    ExpectSettings(ViewDiary, 2, 1, 2 + 4 + 16);
    {
        Program program(folder);
        ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
        EXPECT_TRUE(program.IsOnTop(program.Diary()));
        for (const UINT item : {CommandShowBleeding, CommandShowPeriod, CommandShowPregnancy}) {
            EXPECT_EQ(ButtonState(program, item), On) << item;
        }
        for (const UINT item : {CommandShowNotes, CommandShowOvulation}) {
            EXPECT_EQ(ButtonState(program, item), Off) << item;
        }
        ASSERT_TRUE(SwitchByMenu(program, CommandViewGraph));
        program.Keep(L"found-again");
        ExpectChart(program, true, L"36.4");
        EXPECT_TRUE(GraphScreen(program).IsUnit(GraphCelsius));
        ASSERT_TRUE(SwitchByButton(program, CommandShowBleeding));
        ASSERT_TRUE(program.Exit());
    }
    ExpectSettings(ViewGraph, 1, 1, 2 + 4 + 16);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    ExpectChart(program, false, L"None");
    ASSERT_TRUE(SwitchByButton(program, CommandShowTemperature));
    ExpectChart(program, true, L"36.4");
    ASSERT_TRUE(program.Exit());
    ExpectSettings(ViewGraph, 2, 1, 2 + 4 + 16);
}

TEST_F(GraphSettings, PickedDatesAreWrittenTheUsersWayAndTheProgramsOwnAreNot) {
    const ShortDateFormat format(L"dd.MM.yyyy");
    WriteNumber(L"CurrentView", ViewGraph);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const GraphScreen graph(program);
    EXPECT_EQ(Program::TextOf(graph.Control(GraphDatePicker)), L"05.03.2006");
    program.Post(CommandHistory);
    const HWND history = program.WaitForDialog(L"Menstrual Period History");
    ASSERT_NE(history, nullptr);
    EXPECT_EQ(Program::TextOf(::GetDlgItem(history, HistoryStart)), L"28.02.2006");
    EXPECT_EQ(Program::TextOf(::GetDlgItem(history, HistoryEnd)), L"05.03.2006");
    ASSERT_TRUE(program.Leave(history, ControlCancel));
    program.Post(CommandBackup);
    const HWND backup = program.WaitForDialog(L"Backup");
    ASSERT_NE(backup, nullptr);
    EXPECT_EQ(Program::TextOf(::GetDlgItem(backup, BackupName)), L"05-Mar-2006 12-00");
    ASSERT_TRUE(program.Leave(backup, ControlCancel));
}

}  // namespace
}  // namespace lunara::test
