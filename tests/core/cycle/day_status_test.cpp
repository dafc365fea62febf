#include "cycle/day_status.h"

#include "tests/core/cycle/diary_support.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {
namespace {

const SYSTEMTIME Start = Day(2024, 1, 1);

std::uint32_t FlagsOf(Diary& diary, const SYSTEMTIME& date) {
    const DayTripleList& list = diary.data.Prediction().dayFlags;
    const std::int32_t index = list.Find(ToDateKey(date));
    return index < 0 ? 0 : list.At(index).flags;
}

// ---- Marks ----

TEST(DayStatus, RecordedPeriodHasFirstAndLastDay) {
    Diary diary;
    diary.Bleed(Start, "33211");
    diary.Predict(Later(Start, 9));
    EXPECT_EQ(diary.StatusOf(Start), "Bleeding 1st day. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 4)), "Bleeding end. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 2)), "");
    EXPECT_EQ(diary.StatusOf(Later(Start, 5)), "");
}

TEST(DayStatus, SingleBleedingDayHasOneMark) {
    Diary diary;
    diary.Bleed(Start, "1").Bleed(Later(Start, 9), "1");
    diary.Predict(Later(Start, 9));
    EXPECT_EQ(diary.StatusOf(Start), "Bleeding. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 9)), "Bleeding. ");  // today, but recorded
}

TEST(DayStatus, CycleMarksReplaceTheBleedingMarks) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 30, 50});
    diary.Predict(Later(last, 5));
    EXPECT_EQ(diary.StatusOf(Start), "Cycle start. Period len 5. Cycle len 28. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 4)), "Period end. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 28)), "Cycle start. Period len 5. Cycle len 30. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 32)), "Period end. ");
    // The periods of the invalid cycle and of the open one keep the bleeding marks.
    EXPECT_EQ(diary.StatusOf(Later(Start, 58)), "Bleeding 1st day. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 62)), "Bleeding end. ");
    EXPECT_EQ(diary.StatusOf(last), "Bleeding 1st day. ");
    EXPECT_EQ(diary.StatusOf(Later(last, 4)), "Bleeding end. ");
}

TEST(DayStatus, PastCyclesShowOvulationAndTheEndsOfTheFertileDays) {
    Diary diary;
    diary.BleedCycles(Start, {28, 29});
    diary.Predict(Later(Start, 100));
    EXPECT_EQ(diary.StatusOf(Later(Start, 13)), "1st day pregnancy possible. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 14)), "Ovulation. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 15)), "");
    EXPECT_EQ(diary.StatusOf(Later(Start, 16)), "Last day pregnancy possible. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 28 + 13)), "1st day pregnancy possible. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 28 + 14)), "Ovulation 1st day. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 28 + 15)), "Ovulation end. ");
    EXPECT_EQ(diary.StatusOf(Later(Start, 28 + 17)), "Last day pregnancy possible. ");
}

TEST(DayStatus, ComingDaysAreMarkedPossible) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 28, 28, 28});
    diary.Predict(Later(last, 14));
    EXPECT_EQ(diary.StatusOf(Later(last, 14)),
              "Ovulation possible. ");  // today counts as a coming day
    EXPECT_EQ(diary.StatusOf(Later(last, 13)), "1st day pregnancy possible. ");
    EXPECT_EQ(diary.StatusOf(Later(last, 28)), "1st day bleeding possible. ");
    EXPECT_EQ(diary.StatusOf(Later(last, 32)), "Last day bleeding possible. ");
    EXPECT_EQ(diary.StatusOf(Later(last, 42)), "Ovulation possible. ");
    diary.Predict(Later(last, 15));
    EXPECT_EQ(diary.StatusOf(Later(last, 14)), "Ovulation. ");
}

TEST(DayStatus, PossibleStretchesHaveFirstAndLastDay) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {29, 29, 29, 29}, "1010");
    diary.Predict(Later(last, 10));
    EXPECT_EQ(diary.StatusOf(Later(last, 14)), "1st day ovulation possible. ");
    EXPECT_EQ(diary.StatusOf(Later(last, 15)), "Last day ovulation possible. ");
    EXPECT_EQ(diary.StatusOf(Later(last, 29)), "1st day bleeding possible. ");
    EXPECT_EQ(diary.StatusOf(Later(last, 31)),
              "Last day bleeding possible. ");  // two days apart make one stretch
}

TEST(DayStatus, BleedingPredictedForTodayIsPossibleUntilItIsRecorded) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 28, 28, 28});
    diary.Predict(Later(last, 28));
    EXPECT_EQ(diary.StatusOf(Later(last, 28)), "1st day bleeding possible. ");

    diary.Bleed(Later(last, 28), "2");
    diary.Predict(Later(last, 28));
    EXPECT_EQ(diary.StatusOf(Later(last, 28)), "Bleeding 1st day. ");
    EXPECT_EQ(diary.StatusOf(Later(last, 32)), "Last day bleeding possible. ");
}

TEST(DayStatus, BleedingRecordedUpToTodayEndsToday) {
    Diary diary;
    diary.Bleed(Start, "332");
    diary.Predict(Later(Start, 2));
    EXPECT_EQ(diary.StatusOf(Later(Start, 2)), "Bleeding end. ");
}

struct AlertCase {
    const char* label;
    std::int32_t today;  // days after the last start
    std::uint32_t flags;
    const char* text;
};

TEST(DayStatus, AlertsFollowTheDaysSinceTheLastStart) {
    constexpr std::uint32_t Doctor = DAY_MAY_BE_PREGNANT | DAY_SEE_DOCTOR;
    constexpr AlertCase Cases[] = {
        {"as long as the longest", 30, 0, ""},
        {"longer", 31, DAY_PREGNANCY_HIGHLY_PROBABLE, "Pregnancy highly probable. "},
        {"last day of it", 36, DAY_PREGNANCY_HIGHLY_PROBABLE, "Pregnancy highly probable. "},
        {"too long for a cycle", 37, Doctor, "You may be pregnant. Go see a doctor. "},
        {"last day of it", 72, Doctor, "You may be pregnant. Go see a doctor. "},
        {"later than any alert", 73, 0, ""},
    };
    constexpr std::uint32_t Alerts = Doctor | DAY_PREGNANCY_HIGHLY_PROBABLE;
    for (const AlertCase& test : Cases) {
        SCOPED_TRACE(std::string(test.label) + ", day " + std::to_string(test.today));
        Diary diary;
        const SYSTEMTIME last = diary.BleedCycles(Start, {28, 30, 27, 29});
        const SYSTEMTIME today = Later(last, test.today);
        diary.Predict(today);
        EXPECT_EQ(FlagsOf(diary, today) & Alerts, test.flags);
        EXPECT_EQ(diary.StatusOf(today, Alerts), test.text);
        EXPECT_EQ(FlagsOf(diary, Later(today, -1)) & Alerts, 0U);
    }
}

TEST(DayStatus, AlertsNeedAValidCycle) {
    Diary diary;
    diary.Bleed(Start, "33211");
    diary.Predict(Later(Start, 40));
    EXPECT_EQ(FlagsOf(diary, Later(Start, 40)), 0U);
}

TEST(DayStatus, BitsWithoutAUseStayClear) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 29, 30, 27, 40, 21});
    diary.Predict(Later(last, 31));
    for (const DayFlagsEntry& entry : diary.data.Prediction().dayFlags) {
        EXPECT_EQ(entry.flags & (DAY_PREGNANCY | DAY_PREGNANCY_FIRST | DAY_PREGNANCY_END |
                                 DAY_PREDICTION_IMPOSSIBLE | 0xFE00'0000),
                  0U);
    }
}

// ---- SetDayFlags ----

TEST(SetDayFlags, ClearsThenSets) {
    CyclePredictor state;
    const DateKey date = MakeDateKey(2024, 5, 6);
    SetDayFlags(state, 0x9, 0x1, date);  // a new entry has nothing to clear
    EXPECT_EQ(state.dayFlags.At(0).flags, 0x9U);
    SetDayFlags(state, 0x18, 0x9, date);
    EXPECT_EQ(state.dayFlags.At(0).flags, 0x18U);
    EXPECT_EQ(state.dayFlags.Count(), 1);
    EXPECT_EQ(state.dayFlagArgs.Count(), 0);
}

TEST(SetDayFlags, ArgumentsAreAppended) {
    CyclePredictor state;
    SetDayFlags(state, 2, 0, MakeDateKey(2024, 5, 6), {5, 28});
    SetDayFlags(state, 2, 0, MakeDateKey(2024, 5, 1), {4, 30});
    SetDayFlags(state, 1, 0, MakeDateKey(2024, 5, 1));
    EXPECT_EQ(state.dayFlagArgs.Count(), 4);
    EXPECT_EQ(state.dayFlags.At(state.dayFlags.Find(MakeDateKey(2024, 5, 6))).argIndex, 0);
    const DayFlagsEntry entry = state.dayFlags.At(state.dayFlags.Find(MakeDateKey(2024, 5, 1)));
    EXPECT_EQ(entry.argIndex, 2);
    EXPECT_EQ(entry.flags, 3U);
    EXPECT_EQ(state.dayFlagArgs.At(3), 30);
}

// ---- Texts ----

TEST(DayStatusText, FollowsTheMaskInBitOrder) {
    Diary diary;
    const DateKey date = ToDateKey(Start);
    SetDayFlags(UserDataTestAccess::Prediction(diary.data), DAY_SEE_DOCTOR, 0, date);
    SetDayFlags(UserDataTestAccess::Prediction(diary.data), DAY_OVULATION, 0, date);
    SetDayFlags(UserDataTestAccess::Prediction(diary.data), DAY_CYCLE_LENGTHS, 0, date, {5, 28});
    EXPECT_EQ(diary.StatusOf(Start), "Period len 5. Cycle len 28. Ovulation. Go see a doctor. ");
    EXPECT_EQ(diary.StatusOf(Start, ~std::uint32_t{DAY_OVULATION}),
              "Period len 5. Cycle len 28. Go see a doctor. ");
    EXPECT_EQ(diary.StatusOf(Start, DAY_SEE_DOCTOR), "Go see a doctor. ");
    EXPECT_EQ(diary.StatusOf(Start, DAY_BLEEDING | 0x8000'0000), "");
    EXPECT_EQ(diary.StatusOf(Start, 0), "");
    EXPECT_EQ(diary.StatusOf(Later(Start, 1)), "");
}

TEST(DayStatusText, BitsWithoutATextAreSkipped) {
    Diary diary;
    SetDayFlags(UserDataTestAccess::Prediction(diary.data), 0xFE00'0000 | DAY_BLEEDING, 0,
                ToDateKey(Start));
    EXPECT_EQ(diary.StatusOf(Start), "Bleeding. ");
    SetDayFlags(UserDataTestAccess::Prediction(diary.data), 0xFE00'0000, 0,
                ToDateKey(Later(Start, 1)));
    EXPECT_EQ(diary.StatusOf(Later(Start, 1)), "");
}

TEST(DayStatusText, EveryBitHasItsText) {
    const char* const texts[] = {"Cycle start. ",
                                 "Period len 7. Cycle len 36. ",
                                 "Period end. ",
                                 "Bleeding. ",
                                 "Bleeding 1st day. ",
                                 "Bleeding end. ",
                                 "Bleeding possible. ",
                                 "1st day bleeding possible. ",
                                 "Last day bleeding possible. ",
                                 "Ovulation. ",
                                 "Ovulation 1st day. ",
                                 "Ovulation end. ",
                                 "Ovulation possible. ",
                                 "1st day ovulation possible. ",
                                 "Last day ovulation possible. ",
                                 "Pregnancy. ",
                                 "Pregnancy 1st day. ",
                                 "Pregnancy end. ",
                                 "Pregnancy possible. ",
                                 "1st day pregnancy possible. ",
                                 "Last day pregnancy possible. ",
                                 "Pregnancy highly probable. ",
                                 "You may be pregnant. ",
                                 "Go see a doctor. ",
                                 "Prediction impossible! "};
    Diary diary;
    SetDayFlags(UserDataTestAccess::Prediction(diary.data), AllBits, 0, ToDateKey(Start), {7, 36});
    for (std::size_t bit = 0; bit < std::size(texts); ++bit) {
        EXPECT_EQ(diary.StatusOf(Start, 1U << bit), texts[bit]);
    }
}

TEST(DayStatusText, TextThatDoesNotFitIsNone) {
    Diary diary;
    SetDayFlags(UserDataTestAccess::Prediction(diary.data), DAY_BLEEDING, 0, ToDateKey(Start));
    WCHAR text[12] = {};
    EXPECT_EQ(GetDayStatusText(diary.data, Start, text, 11, AllBits), 1);
    EXPECT_EQ(ToUtf8(text), "Bleeding. ");
    EXPECT_EQ(GetDayStatusText(diary.data, Start, text, 10, AllBits), 0);
    EXPECT_EQ(text[0], 0);
}

struct PlaceholderCase {
    const char* label;
    const WCHAR* source;
    const char* target;
    bool succeeds;
};

TEST(NumberPlaceholders, NumbersEachConversion) {
    const PlaceholderCase cases[] = {
        {"empty", TEXT(""), "", true},
        {"none", TEXT("Period end. "), "Period end. ", true},
        {"two", TEXT("Period len %d. Cycle len %d. "), "Period len %1!d!. Cycle len %2!d!. ", true},
        {"percent sign", TEXT("100%% of %s"), "100%% of %1!s!", true},
        {"with width", TEXT("%5.2f|%-3lX"), "%1!5.2f!|%2!-3lX!", true},
        {"first letter that ends it", TEXT("%hd"), "%1!hd!", true},
        {"ends inside", TEXT("%d and %5"), "%d and %5", false},
        {"ends at once", TEXT("%"), "%", false},
        {"eleven", TEXT("%d%d%d%d%d%d%d%d%d%d%d"),
         "%1!d!%2!d!%3!d!%4!d!%5!d!%6!d!%7!d!%8!d!%9!d!%10!d!%11!d!", true},
    };
    for (const PlaceholderCase& test : cases) {
        SCOPED_TRACE(test.label);
        WCHAR target[100];
        EXPECT_EQ(NumberPlaceholders(test.source, target, 100), test.succeeds);
        EXPECT_EQ(ToUtf8(target), test.target);
    }
}

TEST(NumberPlaceholders, CutsTheResultToItsBuffer) {
    WCHAR target[8];
    target[7] = 'x';
    EXPECT_TRUE(NumberPlaceholders(TEXT("ab%dcd"), target, 7));
    EXPECT_EQ(ToUtf8(target), "ab%1!d");
    EXPECT_EQ(target[7], 'x');
    EXPECT_FALSE(NumberPlaceholders(TEXT("abcdefghi%"), target, 7));
    EXPECT_EQ(ToUtf8(target), "abcdef");
    EXPECT_EQ(target[7], 'x');
}

}  // namespace
}  // namespace lunara::test
