// The history dialog, which enters whole past periods: by dates and by length, normal and heavy;
// what it refuses; and the prediction with its warning after it is closed.

#include "tests/driver/fields.h"
#include "tests/driver/menus.h"
#include "tests/driver/remote.h"
#include "tests/driver/wait.h"
#include "tests/e2e/expectation.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

constexpr WCHAR Title[] = L"Menstrual Period History";
constexpr WCHAR Exists[] = L"Bleeding entry for the period exists!";

struct Period {
    Day start;
    std::vector<int> levels;  // of bleeding, one for each day
};

/// The CSV records of the periods, without the header; the periods are in order of their days.
std::string RecordsOf(const std::vector<Period>& periods) {
    std::string records;
    for (const Period& period : periods) {
        Day day = period.start;
        for (const int level : period.levels) {
            records += ToUtf8(IsoDate(day)) + "," + std::to_string(level) + ",,,,\r\n";
            day = AddDays(day, 1);
        }
    }
    return records;
}

std::string CsvOf(const std::vector<Period>& periods) { return CsvHeader + RecordsOf(periods); }

/// Operates the open history dialog.
class HistoryScreen {
  public:
    HistoryScreen(Program& shown, HWND window) : program(shown), dialog(window) {}

    HWND Item(int id) const { return ::GetDlgItem(dialog, id); }
    std::wstring Text(int id) const { return Program::TextOf(Item(id)); }
    bool MayAdd() const { return ::IsWindowEnabled(Item(ControlOk)) != 0; }

    bool SetStart(Day day) { return PickFromCalendar(program, Item(HistoryStart), day); }
    bool SetEnd(Day day) { return PickFromCalendar(program, Item(HistoryEnd), day); }
    bool SetLength(int days) {
        const std::wstring text = std::to_wstring(days);
        const bool up = Text(HistoryLength) < text;
        return ClickArrowUntil(program, Item(HistoryLengthSpin), up, Item(HistoryLength), text, 5);
    }
    bool SetHeavy(bool heavy) {
        return ClickArrowUntil(program, Item(HistoryBleedingSpin), heavy, Item(HistoryBleeding),
                               heavy ? L"Heavy" : L"Normal", 1);
    }
    /// Clicks Add and waits until that has been handled. True when Add is then disabled, as it is
    /// after both an addition and a refusal.
    bool Add() { return program.Click(Item(ControlOk)) && program.Settle() && !MayAdd(); }
    bool Close() { return program.Leave(dialog, ControlCancel); }

    void Expect(Day start, Day end, const WCHAR* length, const WCHAR* bleeding, bool mayAdd) const {
        EXPECT_EQ(IsoDate(PickedDay(program, Item(HistoryStart))), IsoDate(start));
        EXPECT_EQ(IsoDate(PickedDay(program, Item(HistoryEnd))), IsoDate(end));
        EXPECT_EQ(Text(HistoryLength), length);
        EXPECT_EQ(Text(HistoryBleeding), bleeding);
        EXPECT_EQ(MayAdd(), mayAdd);
    }

  private:
    Program& program;
    HWND dialog;
};

class History : public EndToEnd {
  protected:
    void SetUp() override {
        EndToEnd::SetUp();
        // The diary would predict at the start, and its warning would be the only one for an hour.
        WriteNumber(L"CurrentView", ViewGraph);
    }

    HistoryScreen Open() {
        ChooseFromMenu(program, CommandHistory);
        const HWND dialog = program.WaitForDialog(Title);
        // The dialog is visible before it is in the foreground and takes keys.
        EXPECT_TRUE(WaitFor([&] { return ::GetForegroundWindow() == dialog; }));
        program.Settle();
        return {program, dialog};
    }

    /// Closes the dialog, puts the warning that follows away, and ends the program.
    void CloseAndExit(HistoryScreen& history) {
        ASSERT_TRUE(history.Close());
        ASSERT_TRUE(program.PutWarningAway());
        ASSERT_TRUE(program.Exit());
    }

    /// Expects the box of a refusal, closes it with the Return key, and expects the dialog to stay
    /// open.
    void ExpectExistsBox() {
        const HWND box = program.WaitForDialog(L"Warning");
        ASSERT_NE(box, nullptr);
        program.Keep(L"exists");
        EXPECT_EQ(Program::BoxText(box), Exists);
        program.Press(VK_RETURN);
        ASSERT_TRUE(program.WaitForNoDialog(L"Warning"));
        ASSERT_TRUE(program.Settle());
        EXPECT_NE(program.FindDialog(Title), nullptr);
    }

    /// What a diary with these periods and nothing else must show. The companion cannot read the
    /// diary under test, which is in memory until the program ends, so that it gets a copy.
    Expectation ExpectationOf(const std::vector<Period>& periods) {
        EXPECT_TRUE(Import(folder.UserFolder(L"Twin"), RecordsOf(periods)));
        return {folder, L"Twin", Password, Today};
    }

    void AddAndClose(Day start) {
        HistoryScreen history = Open();
        ASSERT_TRUE(history.SetStart(start));
        ASSERT_TRUE(history.Add());
        ASSERT_TRUE(history.Close());
    }

    Program program{folder};
};

// ---- Adding ----

TEST_F(History, TheLastFiveDaysAreOfferedAndAdded) {
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    HistoryScreen history = Open();
    program.Keep(L"opened");
    history.Expect({2006, 2, 28}, Today, L"5", L"Normal", true);
    ASSERT_TRUE(history.Add());
    history.Expect({2006, 2, 28}, Today, L"5", L"Normal", false);
    CloseAndExit(history);
    EXPECT_EQ(Export(L"Anna"), CsvOf({{{2006, 2, 28}, {2, 2, 2, 1, 1}}}));
}

TEST_F(History, PeriodsAreAddedByTheirDates) {
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    HistoryScreen history = Open();
    ASSERT_TRUE(history.SetStart({2006, 1, 3}));
    history.Expect({2006, 1, 3}, {2006, 1, 8}, L"5", L"Normal", true);
    ASSERT_TRUE(history.SetEnd({2006, 1, 10}));
    history.Expect({2006, 1, 3}, {2006, 1, 10}, L"7", L"Normal", true);
    program.Keep(L"normal");
    ASSERT_TRUE(history.Add());

    // A period over the end of the year, added after a later one: the export is in order.
    ASSERT_TRUE(history.SetStart({2005, 12, 29}));
    history.Expect({2005, 12, 29}, {2006, 1, 5}, L"7", L"Normal", true);
    ASSERT_TRUE(history.SetEnd({2006, 1, 2}));
    ASSERT_TRUE(history.SetHeavy(true));
    history.Expect({2005, 12, 29}, {2006, 1, 2}, L"4", L"Heavy", true);
    program.Keep(L"heavy");
    ASSERT_TRUE(history.Add());
    CloseAndExit(history);
    EXPECT_EQ(Export(L"Anna"),
              CsvOf({{{2005, 12, 29}, {3, 3, 2, 1}}, {{2006, 1, 3}, {2, 2, 2, 2, 1, 1, 1}}}));
}

TEST_F(History, TypedDatesCountLikePickedOnes) {
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    HistoryScreen history = Open();
    ASSERT_TRUE(TypeDate(program, history.Item(HistoryStart), {2006, 1, 16}));
    program.Keep(L"start-typed");
    history.Expect({2006, 1, 16}, {2006, 1, 21}, L"5", L"Normal", true);
    ASSERT_TRUE(TypeDate(program, history.Item(HistoryEnd), {2006, 1, 19}));
    history.Expect({2006, 1, 16}, {2006, 1, 19}, L"3", L"Normal", true);
    ASSERT_TRUE(history.Add());
    CloseAndExit(history);
    EXPECT_EQ(Export(L"Anna"), CsvOf({{{2006, 1, 16}, {2, 2, 1}}}));
}

TEST_F(History, EveryLengthIsAddedNormalAndHeavy) {
    struct Row {
        const char* label;
        int length;
        bool heavy;
        Period period;
    };
    const std::vector<Row> rows = {
        {"2 heavy", 2, true, {{2005, 9, 5}, {3, 2}}},
        {"3 heavy", 3, true, {{2005, 9, 10}, {3, 3, 2}}},
        {"4 heavy", 4, true, {{2005, 9, 15}, {3, 3, 2, 1}}},
        {"5 heavy", 5, true, {{2005, 9, 20}, {3, 3, 2, 2, 1}}},
        {"6 heavy", 6, true, {{2005, 10, 1}, {3, 3, 3, 2, 2, 1}}},
        {"7 heavy", 7, true, {{2005, 10, 10}, {3, 3, 3, 2, 2, 1, 1}}},
        {"7", 7, false, {{2005, 10, 20}, {2, 2, 2, 2, 1, 1, 1}}},
        {"6", 6, false, {{2005, 11, 1}, {2, 2, 2, 2, 1, 1}}},
        {"5", 5, false, {{2005, 11, 10}, {2, 2, 2, 1, 1}}},
        {"4", 4, false, {{2005, 11, 20}, {2, 2, 2, 1}}},
        {"3", 3, false, {{2005, 12, 5}, {2, 2, 1}}},
        {"2", 2, false, {{2005, 12, 15}, {2, 2}}},
    };
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    HistoryScreen history = Open();
    std::vector<Period> added;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        ASSERT_TRUE(history.SetStart(row.period.start));
        ASSERT_TRUE(history.SetLength(row.length));
        ASSERT_TRUE(history.SetHeavy(row.heavy));
        history.Expect(row.period.start, AddDays(row.period.start, row.length),
                       std::to_wstring(row.length).c_str(), row.heavy ? L"Heavy" : L"Normal", true);
        ASSERT_TRUE(history.Add());
        ASSERT_EQ(program.FindDialog(L"Warning"), nullptr);
        added.push_back(row.period);
    }
    CloseAndExit(history);
    EXPECT_EQ(Export(L"Anna"), CsvOf(added));
}

TEST_F(History, TheArrowsStopAtTheirEnds) {
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    HistoryScreen history = Open();
    ASSERT_TRUE(history.SetStart({2006, 2, 1}));
    const HWND length = history.Item(HistoryLengthSpin);
    ASSERT_TRUE(
        HoldArrow(program, length, true, [&] { return history.Text(HistoryLength) == L"7"; }));
    ASSERT_TRUE(ClickArrow(program, length, true));
    history.Expect({2006, 2, 1}, {2006, 2, 8}, L"7", L"Normal", true);
    ASSERT_TRUE(
        HoldArrow(program, length, false, [&] { return history.Text(HistoryLength) == L"2"; }));
    ASSERT_TRUE(ClickArrow(program, length, false));
    history.Expect({2006, 2, 1}, {2006, 2, 3}, L"2", L"Normal", true);
    const HWND bleeding = history.Item(HistoryBleedingSpin);
    for (const bool up : {true, false}) {
        for (int clicks = 0; clicks < 2; ++clicks) {
            ASSERT_TRUE(ClickArrow(program, bleeding, up));
            EXPECT_EQ(history.Text(HistoryBleeding), up ? L"Heavy" : L"Normal");
        }
    }
    CloseAndExit(history);
    EXPECT_EQ(Export(L"Anna"), CsvHeader);
}

// ---- Refusing ----

TEST_F(History, APeriodThatOverlapsIsRefusedWhole) {
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    HistoryScreen history = Open();
    ASSERT_TRUE(history.Add());
    // The new period's last day is the first day of the other one.
    ASSERT_TRUE(history.SetStart({2006, 2, 24}));
    ASSERT_TRUE(history.SetHeavy(true));
    ASSERT_TRUE(history.Add());
    ExpectExistsBox();
    history.Expect({2006, 2, 24}, {2006, 3, 1}, L"5", L"Heavy", false);
    // One day shorter, it does not overlap.
    ASSERT_TRUE(history.SetLength(4));
    history.Expect({2006, 2, 24}, {2006, 2, 28}, L"4", L"Heavy", true);
    ASSERT_TRUE(history.Add());
    EXPECT_EQ(program.FindDialog(L"Warning"), nullptr);
    // The same period again overlaps itself.
    ASSERT_TRUE(history.SetHeavy(false));
    ASSERT_TRUE(history.Add());
    ExpectExistsBox();
    CloseAndExit(history);
    EXPECT_EQ(Export(L"Anna"),
              CsvOf({{{2006, 2, 24}, {3, 3, 2, 1}}, {{2006, 2, 28}, {2, 2, 2, 1, 1}}}));
}

TEST_F(History, NothingReachesPastToday) {
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    HistoryScreen history = Open();
    const HWND length = history.Item(HistoryLengthSpin);
    const auto expectLastFiveDays = [&] {
        history.Expect({2006, 2, 28}, Today, L"5", L"Normal", true);
    };
    ASSERT_TRUE(ClickArrow(program, length, true));
    expectLastFiveDays();
    ASSERT_TRUE(history.SetStart({2006, 3, 1}));
    expectLastFiveDays();
    ASSERT_TRUE(history.SetEnd({2006, 3, 6}));
    expectLastFiveDays();
    program.Keep(L"refused");
    // The arrows go on from the value that stayed, not from the refused one.
    ASSERT_TRUE(ClickArrow(program, length, false));
    history.Expect({2006, 2, 28}, {2006, 3, 4}, L"4", L"Normal", true);

    ASSERT_TRUE(history.SetLength(2));
    ASSERT_TRUE(history.SetStart({2006, 3, 4}));
    history.Expect({2006, 2, 28}, {2006, 3, 2}, L"2", L"Normal", true);
    ASSERT_TRUE(history.SetStart({2006, 3, 3}));
    history.Expect({2006, 3, 3}, Today, L"2", L"Normal", true);
    ASSERT_TRUE(history.Add());
    CloseAndExit(history);
    EXPECT_EQ(Export(L"Anna"), CsvOf({{{2006, 3, 3}, {2, 2}}}));
}

TEST_F(History, AnEndTooNearOrTooFarJumpsBack) {
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    HistoryScreen history = Open();
    ASSERT_TRUE(history.SetStart({2006, 2, 7}));
    for (const Day end : {Day{2006, 2, 8}, Day{2006, 2, 15}, Day{2006, 2, 7}, Day{2006, 2, 1}}) {
        SCOPED_TRACE(ToUtf8(IsoDate(end)));
        ASSERT_TRUE(history.SetEnd(end));
        history.Expect({2006, 2, 7}, {2006, 2, 12}, L"5", L"Normal", true);
    }
    ASSERT_TRUE(history.SetEnd({2006, 2, 9}));
    history.Expect({2006, 2, 7}, {2006, 2, 9}, L"2", L"Normal", true);
    ASSERT_TRUE(history.SetEnd({2006, 2, 14}));
    history.Expect({2006, 2, 7}, {2006, 2, 14}, L"7", L"Normal", true);
    CloseAndExit(history);
    EXPECT_EQ(Export(L"Anna"), CsvHeader);
}

// ---- Closing ----

TEST_F(History, ClosingPredictsAndWarnsOnceWithinAnHour) {
    const std::vector<int> levels = {2, 2, 2, 1, 1};
    std::vector<Period> periods = {{{2006, 1, 1}, levels}};
    ASSERT_TRUE(Import(folder.UserFolder(L"Anna"), RecordsOf(periods)));
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    ASSERT_EQ(program.Warning(), L"");

    periods.push_back({{2006, 1, 29}, levels});
    ASSERT_NO_FATAL_FAILURE(AddAndClose({2006, 1, 29}));
    const Expectation afterFirst = ExpectationOf(periods);
    const HWND box = program.WaitForDialog(L"Warning");
    ASSERT_NE(box, nullptr);
    program.Keep(L"warned");
    EXPECT_NE(afterFirst.Warning(), L"");
    EXPECT_EQ(Program::BoxText(box), afterFirst.Warning());
    ASSERT_TRUE(program.PutWarningAway());
    EXPECT_EQ(program.FindAnyDialog(), nullptr) << "a second box";
    ASSERT_TRUE(ChooseFromMenu(program, CommandViewDiary));
    ASSERT_TRUE(program.PutWarningAway());
    EXPECT_EQ(program.Warning(), L"");
    CompareDiary(program, folder, afterFirst);

    // Within the hour the diary shows the new prediction without a warning.
    periods.push_back({{2006, 2, 26}, levels});
    ASSERT_NO_FATAL_FAILURE(AddAndClose({2006, 2, 26}));
    const Expectation afterSecond = ExpectationOf(periods);
    EXPECT_NE(afterSecond.Warning(), L"");
    ASSERT_TRUE(program.PutWarningAway());
    EXPECT_EQ(program.Warning(), L"");
    program.Keep(L"not-warned-again");
    CompareDiary(program, folder, afterSecond);

    constexpr DWORD HourMs = 60 * 60 * 1000;
    ASSERT_TRUE(AdvanceTicks(program.Process(), HourMs + 1));
    periods.insert(periods.begin(), {{2005, 11, 6}, levels});
    ASSERT_NO_FATAL_FAILURE(AddAndClose({2005, 11, 6}));
    const Expectation afterThird = ExpectationOf(periods);
    EXPECT_NE(afterThird.Warning(), L"");
    ASSERT_TRUE(program.PutWarningAway());
    program.Keep(L"warned-again");
    EXPECT_EQ(program.Warning(), afterThird.Warning());
    CompareDiary(program, folder, afterThird);
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvOf(periods));
}

}  // namespace
}  // namespace lunara::test
