#include "cycle/predictor.h"

#include "cycle/day_status.h"
#include "tests/core/cycle/diary_support.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {
namespace {

using Cycles = std::vector<std::pair<std::int32_t, std::int32_t>>;  // period length, cycle length

const SYSTEMTIME Start = Day(2024, 1, 1);

// ---- Periods and cycles ----

TEST(Periods, OneDayWithoutBleedingIsBridged) {
    Diary diary;
    const SYSTEMTIME second = Later(Start, 28);
    diary.Bleed(Start, "1101").Bleed(second, "11");
    diary.Predict(Later(second, 5));
    EXPECT_EQ(diary.ValidCycles(), (Cycles{{4, 28}}));
}

TEST(Periods, GapOfThreeDaysStartsNewPeriod) {
    Diary diary;
    diary.Bleed(Start, "11").Bleed(Later(Start, 4), "11").Bleed(Later(Start, 30), "11");
    diary.Predict(Later(Start, 33));
    EXPECT_EQ(diary.ValidCycles(), (Cycles{{2, 26}}));
    EXPECT_EQ(diary.data.Prediction().invalidCycles, 2);  // the cycle of 4 days, and the open one
    EXPECT_EQ(diary.data.Prediction().discardedPeriods, 0);
}

TEST(Periods, SingleDayYesterdayIsKept) {
    Diary diary;
    diary.Bleed(Start, "221").Bleed(Later(Start, 28), "1");
    diary.Predict(Later(Start, 29));
    EXPECT_EQ(diary.ValidCycles(), (Cycles{{3, 28}}));
    EXPECT_EQ(diary.data.Prediction().discardedPeriods, 0);
    EXPECT_EQ(IsBleedingDayCounted(diary.data, Later(Start, 28)), 1);
    // A single day is no valid period start yet: it may turn out to be no period.
    EXPECT_EQ(IsSameDay(diary.data.LastValidPeriodStart(), Start), 1);
}

TEST(Periods, SingleDayIsDiscardedAndItsCycleBridged) {
    Diary diary;
    diary.Bleed(Start, "221").Bleed(Later(Start, 12), "1").Bleed(Later(Start, 28), "221");
    diary.Predict(Later(Start, 30));
    EXPECT_EQ(diary.ValidCycles(), (Cycles{{3, 28}}));
    EXPECT_EQ(diary.data.Prediction().discardedPeriods, 1);
    EXPECT_EQ(diary.data.Prediction().discardedDays.Count(), 1);
    EXPECT_EQ(IsBleedingDayCounted(diary.data, Later(Start, 12)), 0);
    EXPECT_EQ(IsBleedingDayCounted(diary.data, Later(Start, 13)), 1);
}

TEST(Periods, DiscardedOpenPeriodMakesTheCycleBeforeItTooLong) {
    Diary diary;
    diary.Bleed(Start, "221").Bleed(Later(Start, 28), "1");
    diary.Predict(Later(Start, 30));
    EXPECT_EQ(diary.ValidCycles(), Cycles{});  // the one left has 28 + 37 days
    EXPECT_EQ(diary.data.Prediction().discardedPeriods, 1);
    EXPECT_EQ(diary.data.Prediction().invalidCycles, 1);
}

TEST(Periods, PeriodOfEightDaysIsDiscarded) {
    Diary diary;
    diary.Bleed(Start, "3322111").Bleed(Later(Start, 26), "22222222");
    diary.Predict(Later(Start, 40));
    EXPECT_EQ(diary.data.Prediction().discardedPeriods, 1);
    EXPECT_EQ(diary.data.Prediction().discardedDays.Count(), 8);
    for (int day = 26; day < 34; ++day) {
        EXPECT_EQ(IsBleedingDayCounted(diary.data, Later(Start, day)), 0) << day;
    }
    EXPECT_EQ(IsBleedingDayCounted(diary.data, Later(Start, 6)), 1);
    EXPECT_EQ(IsSameDay(diary.data.LastValidPeriodStart(), Start), 1);
}

TEST(Periods, DaysWithoutBleedingInsideADiscardedPeriodAreDiscardedToo) {
    Diary diary;
    diary.Bleed(Start, "221").Bleed(Later(Start, 28), "1010101011");
    diary.Predict(Later(Start, 45));
    EXPECT_EQ(diary.data.Prediction().discardedDays.Count(), 10);
    EXPECT_EQ(IsBleedingDayCounted(diary.data, Later(Start, 29)), 0);
}

struct LengthCase {
    const char* label;
    std::int32_t length;
    bool isValid;
};

TEST(Periods, CyclesOf21To36DaysAreValid) {
    constexpr LengthCase Cases[] = {{"just too short", 20, false},
                                    {"shortest", 21, true},
                                    {"longest", 36, true},
                                    {"just too long", 37, false}};
    for (const LengthCase& test : Cases) {
        SCOPED_TRACE(test.label);
        Diary diary;
        const SYSTEMTIME last = diary.BleedCycles(Start, {28, test.length});
        diary.Predict(Later(last, 5));
        EXPECT_EQ(diary.ValidCycles().size(), test.isValid ? 2U : 1U);
        EXPECT_EQ(diary.data.Prediction().invalidCycles, test.isValid ? 1 : 2);
    }
}

TEST(Periods, RecordsAfterTodayChangeNothing) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 27, 29, 30});
    const SYSTEMTIME today = Later(last, 3);
    diary.Predict(today);
    const std::int32_t levels = diary.data.Prediction().bleedingLevels.Count();
    const float level = GetBleedingLevel(diary.data, Later(last, 28));
    EXPECT_GT(level, 0);
    diary.Bleed(Later(last, 6), "3333").Bleed(Later(last, 28), "3");
    EXPECT_EQ(diary.Predict(today), "");
    EXPECT_EQ(diary.ValidCycles().size(), 4U);
    EXPECT_EQ(diary.data.Prediction().bleedingLevels.Count(), levels);
    EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, 28)), level);
}

TEST(Periods, FirstRecordAfterTodayMeansNothingIsKnown) {
    Diary diary;
    diary.Bleed(Later(Start, 1), "33211");
    EXPECT_EQ(diary.Predict(Start), "Insufficient statistical data. Prediction not available! ");
    EXPECT_EQ(diary.data.LastValidPeriodStart().wYear, 0);
    EXPECT_EQ(diary.data.Prediction().invalidCycles, 0);
    EXPECT_EQ(diary.data.Prediction().bleedingLevels.Count(), 0);
    EXPECT_EQ(diary.data.Prediction().dayFlags.Count(), 0);
}

// ---- Warnings ----

TEST(PredictionWarning, EmptyDiaryHasNoStatisticalData) {
    Diary diary;
    EXPECT_EQ(diary.Predict(Start), "No statistical data. ");
    EXPECT_TRUE(diary.data.Prediction().predictionUpToDate);
}

struct WarningCase {
    const char* label;
    std::vector<std::int32_t> cycles;
    std::int32_t today;  // days after the last start
    const char* warning;
};

TEST(PredictionWarning, FollowsTheCyclesAndTheDay) {
    const WarningCase cases[] = {
        {"four cycles", {28, 27, 29, 30}, 5, ""},
        {"three cycles", {28, 27, 29}, 5, "Too few valid cycles for stable prediction. "},
        {"one cycle", {28}, 5, "Too few valid cycles for stable prediction. "},
        {"no cycle", {}, 5, "Insufficient statistical data. Prediction not available! "},
        {"invalid cycles without a discarded period are not counted",
         {28, 27, 29, 30, 40, 20},
         5,
         ""},
        {"last day with a prediction", {28, 27, 29, 36}, 36, ""},
        {"too far",
         {28, 27, 29, 36},
         37,
         "Too far from the last valid period start. Prediction not meaningfull! "},
        {"few and too far",
         {28},
         37,
         "Too few valid cycles for stable prediction. Too far from the last valid period start. "
         "Prediction not meaningfull! "},
        {"past every observed length",
         {28, 27, 29, 30},
         31,
         "Today after statistically expected cycle length. Prediction not available! "},
        {"on the longest observed length", {28, 27, 29, 30}, 30, ""},
    };
    for (const WarningCase& test : cases) {
        SCOPED_TRACE(test.label);
        Diary diary;
        const SYSTEMTIME last = diary.BleedCycles(Start, test.cycles);
        EXPECT_EQ(diary.Predict(Later(last, test.today)), test.warning);
    }
}

TEST(PredictionWarning, DiscardedPeriodBringsBothCounts) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 27, 29, 30, 40});
    diary.Bleed(Later(Start, 14), "1");
    EXPECT_EQ(diary.Predict(Later(last, 5)), "1 discarded period(s). 2 invalid cycle(s). ");
}

TEST(PredictionWarning, CountsStandBetweenTheOthers) {
    Diary diary;
    diary.Bleed(Start, "33211").Bleed(Later(Start, 10), "1");
    EXPECT_EQ(diary.Predict(Later(Start, 20)),
              "Insufficient statistical data. 1 discarded period(s). 1 invalid cycle(s). "
              "Prediction not available! ");
}

TEST(PredictionWarning, NoInvalidCycleIsLeftWhenEveryPeriodWasDiscarded) {
    Diary diary;
    diary.Bleed(Start, "1").Bleed(Later(Start, 28), "22222222");
    EXPECT_EQ(diary.Predict(Later(Start, 50)),
              "Insufficient statistical data. 2 discarded period(s). 0 invalid cycle(s). "
              "Prediction not available! ");
    EXPECT_EQ(diary.data.LastValidPeriodStart().wYear, 0);
}

TEST(PredictionWarning, IsNotPostedWithoutBeingAskedFor) {
    Diary diary;
    diary.Bleed(Start, "33211");
    SetLocalNow(Start);
    EXPECT_EQ(UpdatePrediction(diary.data, 0), 1);
    EXPECT_TRUE(diary.recorder.warnings.empty());
    EXPECT_TRUE(diary.data.Prediction().predictionUpToDate);
}

TEST(PredictionWarning, IsDroppedWithoutASink) {
    Diary diary;
    diary.data.SetWarningSink(nullptr);
    EXPECT_EQ(diary.Predict(Start), "");
}

TEST(PredictionWarning, IsShownOnceAnHourAtMost) {
    struct Turn {
        const char* label;
        DWORD tick;
        bool shown;
    };
    constexpr Turn Turns[] = {{"the first, early after the device's start", 1, true},
                              {"an hour later to the millisecond", 3'600'001, false},
                              {"one more millisecond", 3'600'002, true},
                              {"within the hour", 3'600'003, false},
                              {"much later", 0xFFFF'0000, true},
                              {"across the count's wrap, within the hour", 1'000'000, false},
                              {"across the count's wrap, after the hour", 3'534'466, true}};
    UserData data;
    for (const Turn& turn : Turns) {
        SCOPED_TRACE(turn.label);
        const DWORD before = data.Prediction().lastWarningTick;
        EXPECT_EQ(data.TakeWarningTurn(turn.tick), turn.shown);
        EXPECT_EQ(data.Prediction().lastWarningTick, turn.shown ? turn.tick : before);
    }
}

// ---- When a prediction is computed ----

TEST(UpdatePrediction, ReturnsAtOnceWhileNothingChanged) {
    Diary diary;
    diary.Predict(Start);
    diary.recorder.warnings.clear();
    EXPECT_EQ(UpdatePrediction(diary.data, 1), 1);
    EXPECT_TRUE(diary.recorder.warnings.empty());
}

TEST(UpdatePrediction, AnotherDayIsComputedAnew) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 27, 29, 30});
    diary.Predict(Later(last, 4));
    EXPECT_TRUE(diary.data.Prediction().todayIsBleeding);
    EXPECT_EQ(diary.data.Prediction().computedFor, ToDateKey(Later(last, 4)));
    EXPECT_GT(GetPeriodProbability(diary.data, Later(last, 30)), 0.2F);

    SYSTEMTIME midnight = Later(last, 31);
    midnight.wHour = 0;
    SetLocalNow(midnight);
    EXPECT_EQ(UpdatePrediction(diary.data, 0), 1);
    EXPECT_FALSE(diary.data.Prediction().todayIsBleeding);
    EXPECT_EQ(GetPeriodProbability(diary.data, Later(last, 58)), 0);
    EXPECT_EQ(diary.data.Prediction().computedFor, ToDateKey(Later(last, 31)));
}

TEST(UpdatePrediction, ChangeOfBleedingIsComputedAnew) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 27, 29, 30});
    diary.Predict(Later(last, 5));
    EXPECT_EQ(diary.data.SetCurrentDate(Later(last, 4)), 1);
    EXPECT_EQ(diary.data.SetBleeding(0), 1);
    EXPECT_FALSE(diary.data.Prediction().predictionUpToDate);
    EXPECT_EQ(UpdatePrediction(diary.data, 1), 1);
    EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, 4)), 0);
}

TEST(UpdatePrediction, WithoutRecordsNothingIsLeftOfTheLastResult) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 27, 29, 30});
    diary.Bleed(Later(Start, 14), "1");
    diary.Predict(Later(last, 1));
    const CyclePredictor& state = diary.data.Prediction();
    EXPECT_TRUE(state.todayIsBleeding);
    EXPECT_NE(state.lastValidPeriodStart.wYear, 0);

    UserDataTestAccess::Bleeding(diary.data).Clear();
    EXPECT_EQ(diary.Predict(Later(last, 1)), "No statistical data. ");
    EXPECT_FALSE(state.todayIsBleeding);
    EXPECT_EQ(state.lastValidPeriodStart.wYear, 0);
    EXPECT_EQ(state.validCycles.Count(), 0);
    EXPECT_EQ(state.discardedPeriods, 0);
    EXPECT_EQ(state.invalidCycles, 0);
    EXPECT_EQ(state.dayFlags.Count(), 0);
    EXPECT_EQ(state.dayFlagArgs.Count(), 0);
    for (const DayValueList* list :
         {&state.bleedingLevels, &state.periodProbabilities, &state.ovulationProbabilities,
          &state.pregnancyProbabilities, &state.discardedDays}) {
        EXPECT_EQ(list->Count(), 0);
    }
}

TEST(UpdatePrediction, RecordsNeedNotBeInOrder) {
    Diary diary;
    diary.Bleed(Later(Start, 28), "33211").Bleed(Start, "33211");
    diary.Predict(Later(Start, 33));
    EXPECT_EQ(diary.ValidCycles(), (Cycles{{5, 28}}));
}

// ---- The day lists ----

TEST(DayLists, RecordedDaysHaveTheirLevelAndAreCertain) {
    Diary diary;
    diary.Bleed(Start, "3021");
    UserDataTestAccess::Bleeding(diary.data).Set(ToDateKey(Later(Start, 3)), -2);
    diary.Predict(Later(Start, 9));
    const float levels[] = {3, 0, 2, -2, 0};
    const float probabilities[] = {1, 0, 1, 1, 0};
    for (int day = 0; day < 5; ++day) {
        EXPECT_EQ(GetBleedingLevel(diary.data, Later(Start, day)), levels[day]) << day;
        EXPECT_EQ(GetPeriodProbability(diary.data, Later(Start, day)), probabilities[day]) << day;
    }
}

TEST(DayLists, RecordOfLevelZeroIsKeptAsImprobable) {
    Diary diary;
    UserDataTestAccess::Bleeding(diary.data).Set(ToDateKey(Start), 0);
    diary.Predict(Start);
    EXPECT_EQ(diary.data.Prediction().periodProbabilities.Count(), 1);
    EXPECT_EQ(GetPeriodProbability(diary.data, Start), 0);
    EXPECT_TRUE(diary.data.Prediction().todayIsBleeding);
}

TEST(DayLists, EvenCycleOvulatesInItsMiddle) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28});
    diary.Predict(Later(last, 40));
    EXPECT_EQ(diary.data.Prediction().ovulationProbabilities.Count(), 1);
    EXPECT_EQ(GetOvulationProbability(diary.data, Later(Start, 14)), 1.0F);
    const float weights[] = {0, 0.5F, 1, 1, 1, 0};
    for (int day = 12; day <= 17; ++day) {
        EXPECT_EQ(GetPregnancyProbability(diary.data, Later(Start, day)), weights[day - 12]) << day;
    }
    EXPECT_EQ(diary.data.Prediction().pregnancyProbabilities.Count(), 4);
}

TEST(DayLists, OddCycleOvulatesOnEitherOfTwoDays) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {29});
    diary.Predict(Later(last, 40));
    EXPECT_EQ(diary.data.Prediction().ovulationProbabilities.Count(), 2);
    EXPECT_EQ(GetOvulationProbability(diary.data, Later(Start, 14)), 0.5F);
    EXPECT_EQ(GetOvulationProbability(diary.data, Later(Start, 15)), 0.5F);
    const float weights[] = {0, 0.25F, 0.75F, 1, 1, 0.5F, 0};
    for (int day = 12; day <= 18; ++day) {
        EXPECT_EQ(GetPregnancyProbability(diary.data, Later(Start, day)), weights[day - 12]) << day;
    }
}

TEST(DayLists, PredictionCoversAYearFromTheLastStart) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 28, 28, 28}, "22");
    const SYSTEMTIME today = Later(last, 10);
    diary.Predict(today);
    for (int k = 10; k < 400; ++k) {
        const float expected = k % 28 < 2 && k < 365 ? 1.0F : 0.0F;
        EXPECT_EQ(GetPeriodProbability(diary.data, Later(last, k)), expected) << k;
        EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, k)), 2 * expected) << k;
        EXPECT_EQ(GetOvulationProbability(diary.data, Later(last, k)),
                  k % 28 == 14 && k < 365 ? 1.0F : 0.0F)
            << k;
    }
}

TEST(DayLists, RecordedTodayGoesBeforeItsPrediction) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 28, 28, 28}, "33");
    diary.Bleed(Later(last, 28), "1");
    diary.Predict(Later(last, 28));
    EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, 28)), 1.0F);
    EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, 29)), 3.0F);
}

TEST(DayLists, EndedCycleGoesBeforeThePredictionOfItsOvulation) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 30, 28, 30});
    diary.Bleed(Later(last, 26), "1");  // today, so kept: ends a cycle of 26 days
    diary.Predict(Later(last, 26));
    EXPECT_EQ(diary.ValidCycles().back().second, 26);
    EXPECT_EQ(GetOvulationProbability(diary.data, Later(last, 13)), 1.0F);
    // A day on which the ended cycle has no ovulation keeps its predicted value.
    EXPECT_GT(GetOvulationProbability(diary.data, Later(last, 15)), 0.3F);
    EXPECT_LT(GetOvulationProbability(diary.data, Later(last, 15)), 0.5F);
}

TEST(DayLists, ValuesUnderAHundredthLeaveNoEntry) {
    Diary diary;
    std::vector<std::int32_t> lengths(100, 28);
    lengths[50] = 33;
    const SYSTEMTIME last = diary.BleedCycles(Start, lengths, "11");
    diary.Predict(Later(last, 3));
    EXPECT_EQ(GetPeriodProbability(diary.data, Later(last, 33)), 0.01F);  // one cycle in a hundred
    lengths.push_back(28);
    Diary longer;
    const SYSTEMTIME end = longer.BleedCycles(Start, lengths, "11");
    longer.Predict(Later(end, 3));
    EXPECT_LT(longer.data.Prediction().periodProbabilities.Find(ToDateKey(Later(end, 33))), 0);
}

TEST(DayLists, ProfileCountsBleedingOfDiscardedPeriods) {
    Diary diary;
    // Bleeding on days 0 and 1 and, as a period of its own, on day 5.
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 28, 28, 28}, "220001");
    diary.Predict(Later(last, 6));
    // The fifth was yesterday, and may go on.
    EXPECT_EQ(diary.data.Prediction().discardedPeriods, 4);
    EXPECT_EQ(diary.ValidCycles(), (Cycles{{2, 28}, {2, 28}, {2, 28}, {2, 28}}));
    EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, 28)), 2.0F);
    EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, 33)), 1.0F);
    EXPECT_EQ(GetPeriodProbability(diary.data, Later(last, 33)), 1.0F);
}

TEST(DayLists, LevelsAreSigned) {
    Diary diary;
    SYSTEMTIME start = Start;
    for (int cycle = 0; cycle < 5; ++cycle, start = Later(start, 28)) {
        UserDataTestAccess::Bleeding(diary.data).Set(ToDateKey(start), cycle % 2 == 0 ? 3 : -1);
        UserDataTestAccess::Bleeding(diary.data).Set(ToDateKey(Later(start, 1)), -1);
    }
    const SYSTEMTIME last = Later(start, -28);
    diary.Predict(Later(last, 2));
    EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, 28)), 1.0F);
    EXPECT_EQ(GetBleedingLevel(diary.data, Later(last, 29)), 0.0F);  // its mean of -1 is below 0.01
    EXPECT_EQ(GetPeriodProbability(diary.data, Later(last, 29)), 1.0F);
}

TEST(DayLists, NothingIsPredictedAfterEveryObservedLength) {
    Diary diary;
    const SYSTEMTIME last = diary.BleedCycles(Start, {28, 27, 29, 30});
    diary.Predict(Later(last, 31));
    for (const DayValueList* list :
         {&diary.data.Prediction().bleedingLevels, &diary.data.Prediction().periodProbabilities,
          &diary.data.Prediction().ovulationProbabilities,
          &diary.data.Prediction().pregnancyProbabilities}) {
        EXPECT_LE(list->At(list->Count() - 1).date, ToDateKey(Later(last, 4)));
    }
}

// ---- Record dates ----

TEST(RecordDates, SpanBleedingAndTemperature) {
    Diary diary;
    SYSTEMTIME date = Day(1999, 9, 9);
    EXPECT_EQ(GetFirstRecordDate(diary.data, date), 0);
    EXPECT_EQ(GetLastRecordDate(diary.data, date), 0);
    EXPECT_EQ(IsSameDay(date, Day(1999, 9, 9)), 1);

    diary.Bleed(Later(Start, 10), "11");
    EXPECT_EQ(GetFirstRecordDate(diary.data, date), 1);
    EXPECT_EQ(IsSameDay(date, Later(Start, 10)), 1);
    EXPECT_EQ(GetLastRecordDate(diary.data, date), 1);
    EXPECT_EQ(IsSameDay(date, Later(Start, 11)), 1);

    UserDataTestAccess::Temperature(diary.data).Set(ToDateKey(Later(Start, 40)), 9800);
    UserDataTestAccess::Temperature(diary.data).Set(ToDateKey(Start), 9700);  // not in order
    EXPECT_EQ(GetFirstRecordDate(diary.data, date), 1);
    EXPECT_EQ(IsSameDay(date, Start), 1);
    EXPECT_EQ(GetLastRecordDate(diary.data, date), 1);
    EXPECT_EQ(IsSameDay(date, Later(Start, 40)), 1);

    UserDataTestAccess::Bleeding(diary.data).Clear();
    EXPECT_EQ(GetLastRecordDate(diary.data, date), 1);
    EXPECT_EQ(IsSameDay(date, Later(Start, 40)), 1);
}

TEST(RecordDates, DayThatTheCalendarDoesNotHaveIsNoFirstRealRecord) {
    Diary diary;
    SYSTEMTIME date = Day(1999, 9, 9);
    UserDataTestAccess::Bleeding(diary.data).Set(MakeDateKey(2006, 2, 31), 1);
    EXPECT_EQ(GetFirstRealRecordDate(diary.data, date), 0);
    EXPECT_EQ(IsSameDay(date, Day(1999, 9, 9)), 1);
    UserDataTestAccess::Bleeding(diary.data).Set(MakeDateKey(2006, 4, 2), 1);
    EXPECT_EQ(GetFirstRealRecordDate(diary.data, date), 1);
    EXPECT_EQ(IsSameDay(date, Day(2006, 4, 2)), 1);
    UserDataTestAccess::Temperature(diary.data).Set(MakeDateKey(2006, 3, 5), 9800);
    UserDataTestAccess::Temperature(diary.data)
        .Set(MakeDateKey(2006, 2, 30), 9800);  // not in order
    EXPECT_EQ(GetFirstRealRecordDate(diary.data, date), 1);
    EXPECT_EQ(IsSameDay(date, Day(2006, 3, 5)), 1);
}

}  // namespace
}  // namespace lunara::test
