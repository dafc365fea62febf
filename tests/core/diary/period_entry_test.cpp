#include "diary/period_entry.h"

#include <string>
#include <vector>

#include "tests/support/dates.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {
namespace {

struct LevelRow {
    const char* label;
    std::int32_t length;
    std::int32_t mode;
    std::vector<std::int32_t> levels;
};

TEST(BleedingLevelOfDay, FallsOffTowardsTheEnd) {
    const LevelRow rows[] = {
        {"2 days, Normal", 2, BleedingNormal, {2, 2}},
        {"2 days, Heavy", 2, BleedingHeavy, {3, 2}},
        {"3 days, Normal", 3, BleedingNormal, {2, 2, 1}},
        {"3 days, Heavy", 3, BleedingHeavy, {3, 3, 2}},
        {"4 days, Normal", 4, BleedingNormal, {2, 2, 2, 1}},
        {"4 days, Heavy", 4, BleedingHeavy, {3, 3, 2, 1}},
        {"5 days, Normal", 5, BleedingNormal, {2, 2, 2, 1, 1}},
        {"5 days, Heavy", 5, BleedingHeavy, {3, 3, 2, 2, 1}},
        {"7 days, Normal", 7, BleedingNormal, {2, 2, 2, 2, 1, 1, 1}},
        {"7 days, Heavy", 7, BleedingHeavy, {3, 3, 3, 2, 2, 1, 1}},
    };
    for (const LevelRow& row : rows) {
        SCOPED_TRACE(row.label);
        for (std::int32_t day = 0; day < row.length; ++day) {
            EXPECT_EQ(BleedingLevelOfDay(day, row.length, row.mode),
                      row.levels[static_cast<std::size_t>(day)])
                << "day " << day;
        }
    }
}

class PeriodEntryTest : public testing::Test {
  protected:
    ClockScope clock{Day(2006, 3, 15)};
    PeriodEntry entry;
    PeriodRules rules;

    void SetUp() override { ASSERT_EQ(entry.AddListener(rules), 1); }

    void ExpectValues(DateKey start, DateKey end, std::int32_t length) {
        EXPECT_EQ(ToDateKey(entry.GetStartDate()), start);
        EXPECT_EQ(ToDateKey(entry.GetEndDate()), end);
        EXPECT_EQ(entry.GetPeriodLength(), length);
    }
};

constexpr DateKey Today = MakeDateKey(2006, 3, 15);

TEST_F(PeriodEntryTest, StartsWithFiveNormalDaysThatEndedYesterday) {
    ExpectValues(MakeDateKey(2006, 3, 10), Today, 5);
    EXPECT_EQ(entry.GetBleeding(), BleedingNormal);
    UserData data;
    ASSERT_EQ(AddPeriod(data, entry.GetStartDate(), 5, BleedingNormal), 1);
    ASSERT_EQ(data.Bleeding().Count(), 5);
    EXPECT_GE(data.Bleeding().Find(MakeDateKey(2006, 3, 10)), 0);
    EXPECT_GE(data.Bleeding().Find(MakeDateKey(2006, 3, 14)), 0);
    EXPECT_EQ(data.Bleeding().Find(Today), -1);
}

struct RefusedChange {
    const char* label;
    int (*change)(PeriodEntry&);
};

TEST_F(PeriodEntryTest, RefusesWhatIsNoPeriodAndKeepsItsValues) {
    const RefusedChange changes[] = {
        {"end one day after the start",
         [](PeriodEntry& e) { return e.SetEndDate(Day(2006, 3, 11), false); }},
        {"end on the start", [](PeriodEntry& e) { return e.SetEndDate(Day(2006, 3, 10), false); }},
        {"end before the start",
         [](PeriodEntry& e) { return e.SetEndDate(Day(2006, 3, 1), false); }},
        {"end tomorrow", [](PeriodEntry& e) { return e.SetEndDate(Day(2006, 3, 16), false); }},
        {"start such that the period ends tomorrow",
         [](PeriodEntry& e) { return e.SetStartDate(Day(2006, 3, 11), false); }},
        {"length 1", [](PeriodEntry& e) { return e.SetPeriodLength(1, false); }},
        {"length 8", [](PeriodEntry& e) { return e.SetPeriodLength(8, false); }},
        {"length that ends tomorrow", [](PeriodEntry& e) { return e.SetPeriodLength(6, false); }},
        {"neither Normal nor Heavy", [](PeriodEntry& e) { return e.SetBleeding(2); }},
    };
    for (const RefusedChange& change : changes) {
        SCOPED_TRACE(change.label);
        EXPECT_EQ(change.change(entry), 0);
        ExpectValues(MakeDateKey(2006, 3, 10), Today, 5);
        EXPECT_EQ(entry.GetBleeding(), BleedingNormal);
    }
}

TEST_F(PeriodEntryTest, AnEndEightDaysAfterTheStartIsRefused) {
    ASSERT_EQ(entry.SetStartDate(Day(2006, 3, 1), false), 1);
    EXPECT_EQ(entry.SetEndDate(Day(2006, 3, 9), false), 0);
    ExpectValues(MakeDateKey(2006, 3, 1), MakeDateKey(2006, 3, 6), 5);
    EXPECT_EQ(entry.SetEndDate(Day(2006, 3, 8), false), 1);
    ExpectValues(MakeDateKey(2006, 3, 1), MakeDateKey(2006, 3, 8), 7);
}

TEST_F(PeriodEntryTest, TheOtherValuesMoveAlong) {
    EXPECT_EQ(entry.SetStartDate(Day(2006, 2, 26), false), 1);
    ExpectValues(MakeDateKey(2006, 2, 26), MakeDateKey(2006, 3, 3), 5);
    EXPECT_EQ(entry.SetPeriodLength(7, false), 1);
    ExpectValues(MakeDateKey(2006, 2, 26), MakeDateKey(2006, 3, 5), 7);
    EXPECT_EQ(entry.SetEndDate(Day(2006, 2, 28), false), 1);
    ExpectValues(MakeDateKey(2006, 2, 26), MakeDateKey(2006, 2, 28), 2);
    EXPECT_EQ(entry.SetBleeding(BleedingHeavy), 1);
    EXPECT_EQ(entry.GetBleeding(), BleedingHeavy);
}

/// Appends each call to a log that listeners share, as its name and a letter: lower case for a
/// question, upper case for a notification. Can refuse changes.
class NotingListener : public PeriodEntryListener {
  public:
    NotingListener(char ownName, std::string& log) : name(ownName), calls(log) {}
    bool CanChangeStartDate(PeriodEntry&, const SYSTEMTIME&, const SYSTEMTIME&) override {
        return Ask('s');
    }
    void StartDateChanged(PeriodEntry&, const SYSTEMTIME&, const SYSTEMTIME&) override {
        Tell('S');
    }
    bool CanChangeEndDate(PeriodEntry&, const SYSTEMTIME&, const SYSTEMTIME&) override {
        return Ask('e');
    }
    void EndDateChanged(PeriodEntry&, const SYSTEMTIME&, const SYSTEMTIME&) override { Tell('E'); }
    bool CanChangePeriodLength(PeriodEntry&, std::int32_t, std::int32_t) override {
        return Ask('l');
    }
    void PeriodLengthChanged(PeriodEntry&, std::int32_t, std::int32_t) override { Tell('L'); }
    bool refuses = false;

  private:
    bool Ask(char what) {
        Tell(what);
        return !refuses;
    }
    void Tell(char what) { calls = calls + name + what + ' '; }
    char name;
    std::string& calls;
};

TEST(PeriodEntryListeners, AreAllAskedInOrderAndOneRefusalIsEnough) {
    const ClockScope clock(Day(2006, 3, 15));
    PeriodEntry entry;
    std::string calls;
    NotingListener a('a', calls);
    NotingListener b('b', calls);
    EXPECT_EQ(entry.AddListener(a), 1);
    EXPECT_EQ(entry.AddListener(b), 1);
    EXPECT_EQ(entry.AddListener(a), 1);  // added already: nothing to do
    a.refuses = true;
    EXPECT_EQ(entry.SetStartDate(Day(2006, 3, 1), false), 0);
    EXPECT_EQ(calls, "as bs ");
    a.refuses = false;
    calls.clear();
    EXPECT_EQ(entry.SetPeriodLength(4, false), 1);
    EXPECT_EQ(calls, "al bl aL bL ");
    calls.clear();
    EXPECT_EQ(entry.SetPeriodLength(4, false), 1);
    EXPECT_EQ(calls, "");
    EXPECT_EQ(entry.SetPeriodLength(4, true), 1);
    EXPECT_EQ(calls, "al bl aL bL ");
    calls.clear();
    EXPECT_EQ(entry.RemoveListener(a), 1);
    EXPECT_EQ(entry.RemoveListener(a), 0);
    EXPECT_EQ(entry.SetEndDate(Day(2006, 3, 1), false), 1);
    EXPECT_EQ(calls, "be bE ");
}

// ---- Adding ----

class AddPeriodTest : public testing::Test {
  protected:
    ClockScope clock{Day(2006, 3, 15)};
    UserData data;
};

TEST_F(AddPeriodTest, RecordsEveryDayAndEndsOnTheLast) {
    ASSERT_EQ(AddPeriod(data, Day(2006, 3, 1), 5, BleedingHeavy), 1);
    std::vector<std::int32_t> levels;
    for (const DayValue& record : data.Bleeding()) {
        levels.push_back(record.value);
    }
    EXPECT_EQ(levels, (std::vector<std::int32_t>{3, 3, 2, 2, 1}));
    SYSTEMTIME current{};
    data.GetCurrentDate(current);
    EXPECT_EQ(ToDateKey(current), MakeDateKey(2006, 3, 5));
    EXPECT_TRUE(data.Bleeding().dirty);
    EXPECT_FALSE(data.Prediction().predictionUpToDate);
}

TEST_F(AddPeriodTest, WritesNothingWhenADayHasBleeding) {
    const SYSTEMTIME taken = Day(2006, 3, 5);
    test::RecordBleeding(data, ToDateKey(taken), 1);
    test::ClearDirty(data);
    EXPECT_EQ(AddPeriod(data, Day(2006, 3, 1), 5, BleedingNormal), 0);
    EXPECT_EQ(::GetLastError(), DWORD{PeriodEntryExists});
    EXPECT_EQ(data.Bleeding().Count(), 1);
    EXPECT_FALSE(data.Bleeding().dirty);
    SYSTEMTIME current{};
    data.GetCurrentDate(current);
    EXPECT_EQ(ToDateKey(current), Today);
}

TEST_F(AddPeriodTest, WritesNothingWhenADayLiesInTheFuture) {
    EXPECT_EQ(AddPeriod(data, Day(2006, 3, 14), 3, BleedingNormal), 0);
    EXPECT_EQ(::GetLastError(), DWORD{PeriodEntryExists});
    EXPECT_EQ(data.Bleeding().Count(), 0);
}

class RefusingObserver : public DataObserver {
  public:
    int CanChangeDate(UserData&, const SYSTEMTIME&, const SYSTEMTIME& wanted) override {
        return wanted.wDay == refusedDay ? 0 : 1;
    }
    int CanChangeBleeding(UserData&, std::int32_t, std::int32_t wanted) override {
        return wanted == refusedLevel ? 0 : 1;
    }
    WORD refusedDay = 0;
    std::int32_t refusedLevel = 0;
};

TEST_F(AddPeriodTest, StopsAtARefusedDateAndKeepsTheDaysBefore) {
    RefusingObserver observer;
    observer.refusedDay = 3;
    data.AttachObserver(observer);
    EXPECT_EQ(AddPeriod(data, Day(2006, 3, 1), 5, BleedingNormal), 0);
    EXPECT_EQ(::GetLastError(), DWORD{PeriodEntryDateRefused});
    EXPECT_EQ(data.Bleeding().Count(), 2);
}

TEST_F(AddPeriodTest, StopsAtARefusedValueAndKeepsTheDaysBefore) {
    RefusingObserver observer;
    observer.refusedLevel = 1;
    data.AttachObserver(observer);
    EXPECT_EQ(AddPeriod(data, Day(2006, 3, 1), 5, BleedingNormal), 0);
    EXPECT_EQ(::GetLastError(), DWORD{PeriodEntryValueRefused});
    EXPECT_EQ(data.Bleeding().Count(), 3);
}

}  // namespace
}  // namespace lunara::test
