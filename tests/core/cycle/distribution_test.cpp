#include "cycle/distribution.h"

#include <bit>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "cycle/periods.h"
#include "tests/core/cycle/diary_support.h"

namespace lunara::test {
namespace {

std::vector<CycleRecord> CyclesOfLengths(const std::vector<std::int32_t>& lengths) {
    std::vector<CycleRecord> cycles;
    cycles.reserve(lengths.size());
    for (const std::int32_t length : lengths) {
        cycles.push_back({5, length, 0});
    }
    return cycles;
}

// ---- Each step ----

TEST(LengthShares, ReciprocalIsRoundedFirst) {
    const LengthShares shares = MeasureLengthShares(CyclesOfLengths(
        {21, 36, 36, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28,
         28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28}));
    constexpr float Reciprocal = 1.0F / 41.0F;
    EXPECT_EQ(shares[0], Reciprocal);
    EXPECT_EQ(shares[15], Reciprocal * 2.0F);
    EXPECT_EQ(shares[7], Reciprocal * 38.0F);
    EXPECT_NE(shares[7], 38.0F / 41.0F);  // a direct division rounds differently
    EXPECT_EQ(shares[6], 0);
}

TEST(PredictStarts, KeepsTheSharesUnconditionedUpToDay21) {
    const LengthShares shares = MeasureLengthShares(CyclesOfLengths({21, 28}));
    HorizonValues starts{};
    ASSERT_TRUE(PredictStarts(shares, 21, starts));
    EXPECT_EQ(starts[0], 0);
    EXPECT_EQ(starts[21], 0.5F);
    EXPECT_EQ(starts[28], 0.5F);
    EXPECT_EQ(starts[42], 0.25F);
    EXPECT_EQ(starts[49], 0.5F);
    EXPECT_EQ(starts[56], 0.25F);
}

TEST(PredictStarts, PassedDaysLendTheirShareToTheComingOnes) {
    const LengthShares shares = MeasureLengthShares(CyclesOfLengths({21, 28}));
    HorizonValues starts{};
    ASSERT_TRUE(PredictStarts(shares, 22, starts));
    EXPECT_EQ(starts[21], 0);
    EXPECT_EQ(starts[28], 1.0F);
    EXPECT_EQ(starts[42], 0);
    EXPECT_EQ(starts[49], 0.5F);
}

TEST(PredictStarts, FailsWhenNoShareIsLeft) {
    const LengthShares shares = MeasureLengthShares(CyclesOfLengths({21, 28}));
    HorizonValues starts{};
    EXPECT_TRUE(PredictStarts(shares, 28, starts));
    EXPECT_FALSE(PredictStarts(shares, 29, starts));
    EXPECT_FALSE(PredictStarts(shares, 36, starts));
    EXPECT_TRUE(PredictStarts(MeasureLengthShares(CyclesOfLengths({36})), 36, starts));
}

TEST(SpreadOverPeriod, BeginsOnTheFirstDay) {
    HorizonValues starts{};
    starts[0] = 1.0F;
    starts[3] = 0.5F;
    const PeriodDays profile = {4, 2, 0, 0, 0, 0, 1};
    HorizonValues values;
    SpreadOverPeriod(profile, starts, 1, values);
    const float expected[] = {0, 2, 0, 2, 1, 0, 1, 0, 0, 0.5F, 0};
    for (std::size_t k = 0; k < std::size(expected); ++k) {
        EXPECT_EQ(values[k], expected[k]) << k;
    }
}

TEST(OvulationOffsets, ShortestAndLongestCycleReachTheEnds) {
    LengthShares shares{};
    shares[0] = 0.5F;
    shares[15] = 0.5F;
    const OvulationOffsets offsets = MeasureOvulationOffsets(shares);
    const OvulationOffsets expected = {0, 0, 0.25F, 0.25F, 0, 0, 0, 0, 0, 0, 0.5F, 0, 0};
    EXPECT_EQ(offsets, expected);  // offset 0 is day 8: days 10 and 11, and day 18
}

TEST(PredictOvulation, LastStartCountsAsCertain) {
    HorizonValues starts{};
    starts[28] = 0.5F;
    starts[356] = 1.0F;
    OvulationOffsets offsets{};
    offsets[0] = 1.0F;
    offsets[6] = 0.5F;
    HorizonValues ovulation{};
    PredictOvulation(offsets, starts, ovulation);
    EXPECT_EQ(ovulation[8], 1.0F);
    EXPECT_EQ(ovulation[14], 0.5F);
    EXPECT_EQ(ovulation[36], 0.5F);
    EXPECT_EQ(ovulation[42], 0.25F);
    EXPECT_EQ(ovulation[364], 1.0F);
    EXPECT_EQ(starts[0], 0);
}

TEST(PredictPregnancy, WeighsTheDaysAroundAnOvulation) {
    HorizonValues ovulation{};
    ovulation[10] = 1.0F;
    ovulation[364] = 0.5F;
    ovulation[3] = 0.25F;
    HorizonValues pregnancy{};
    PredictPregnancy(ovulation, pregnancy);
    const float expected[] = {0, 0, 0, 0.25F, 0.25F, 0.25F, 0, 0, 0, 0.5F, 1, 1, 1, 0};
    for (std::size_t k = 0; k < std::size(expected); ++k) {
        EXPECT_EQ(pregnancy[k], expected[k]) << k;
    }
    EXPECT_EQ(pregnancy[363], 0.25F);
    EXPECT_EQ(pregnancy[364], 0.5F);
}

// ---- The worked example ----

/// The diary of the worked example in docs/predictions.md, and each value computed from it.
struct WorkedExample {
    WorkedExample() {
        constexpr std::int32_t Lengths[] = {26, 28, 27, 29, 28};
        const char* const levels[] = {"3321", "33211", "3321", "33211", "2321", "33221"};
        lastStart = Day(2024, 1, 3);
        for (std::size_t i = 0; i < std::size(Lengths); ++i) {
            diary.Bleed(lastStart, levels[i]);
            lastStart = Later(lastStart, Lengths[i]);
        }
        diary.Bleed(lastStart, levels[std::size(Lengths)]);
        diary.Predict(Later(lastStart, DaysPassed));

        const std::span cycles(diary.data.Prediction().validCycles.begin(), std::size(Lengths));
        const LengthShares shares = MeasureLengthShares(cycles);
        profile = MeasurePeriodProfile(
            cycles, RecordedDays(diary.data.Bleeding(), diary.data.Prediction().computedFor));
        EXPECT_TRUE(PredictStarts(shares, DaysPassed, starts));
        SpreadOverPeriod(profile.meanLevel, starts, DaysPassed, levelsByDay);
        SpreadOverPeriod(profile.bleedShare, starts, DaysPassed, bleedingByDay);
        PredictOvulation(MeasureOvulationOffsets(shares), starts, ovulation);
        PredictPregnancy(ovulation, pregnancy);
    }

    static constexpr std::int32_t DaysPassed = 28;

    Diary diary;
    SYSTEMTIME lastStart{};
    PeriodProfile profile;
    HorizonValues starts{};
    HorizonValues levelsByDay{};
    HorizonValues bleedingByDay{};
    HorizonValues ovulation{};
    HorizonValues pregnancy{};
};

TEST(WorkedExample, EveryBitIsThatOfTheIndependentCalculation) {
    const WorkedExample example;
    std::uint64_t digest = 0xCBF2'9CE4'8422'2325;
    for (const HorizonValues* values :
         {&example.starts, &example.levelsByDay, &example.bleedingByDay, &example.ovulation,
          &example.pregnancy}) {
        for (const float value : *values) {
            const auto bits = std::bit_cast<std::uint32_t>(value);
            for (int byte = 0; byte < 4; ++byte) {
                digest = (digest ^ (bits >> (8 * byte) & 0xFF)) * 0x100'0000'01B3;
            }
        }
    }
    EXPECT_EQ(digest, 0x4301'0E91'6B6D'1200U);  // printed by worked_example.py
}

TEST(WorkedExample, ChosenValuesAreRightToTheBit) {
    const WorkedExample example;
    struct Value {
        const char* label;
        float value;
        std::uint32_t bits;
    };
    const Value values[] = {
        {"mean level of day 0", example.profile.meanLevel[0], 0x4033'3333},
        {"share of day 4", example.profile.bleedShare[4], 0x3ECC'CCCD},
        {"start today", example.starts[28], 0x3F2A'AAAA},
        {"start tomorrow", example.starts[29], 0x3EAA'AAAA},
        {"bleeding tomorrow", example.bleedingByDay[29], 0x3F7F'FFFF},
        {"level tomorrow", example.levelsByDay[29], 0x403B'BBBB},
        {"ovulation of the running cycle", example.ovulation[14], 0x3F19'999A},
        {"fertile days", example.pregnancy[14], 0x3F73'3334},
        {"start in the third cycle", example.starts[84], 0x3E75'C28E},
    };
    for (const Value& value : values) {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(value.value), value.bits)
            << value.label << std::hex << ", " << std::bit_cast<std::uint32_t>(value.value);
    }
}

TEST(WorkedExample, DocumentShowsTheProgramsNumbers) {
    WorkedExample example;
    std::ifstream document(LUNARA_TEST_DATA "/../../docs/predictions.md");
    ASSERT_TRUE(document.is_open());
    std::string line;
    int rows = 0;
    while (std::getline(document, line)) {
        int k = 0;
        unsigned year = 0;
        unsigned month = 0;
        unsigned day = 0;
        float cells[5] = {};
        if (std::sscanf(line.c_str(), "| %d | %u-%u-%u | %f | %f | %f | %f | %f |", &k, &year,
                        &month, &day, &cells[0], &cells[1], &cells[2], &cells[3], &cells[4]) != 9) {
            continue;
        }
        SCOPED_TRACE(line);
        ++rows;
        const auto index = static_cast<std::size_t>(k);
        const SYSTEMTIME date = Later(example.lastStart, k);
        EXPECT_EQ(ToDateKey(date), MakeDateKey(year, month, day));
        EXPECT_EQ(cells[0], example.starts[index]);
        EXPECT_EQ(cells[1], example.levelsByDay[index]);
        EXPECT_EQ(cells[2], example.bleedingByDay[index]);
        EXPECT_EQ(cells[3], example.ovulation[index]);
        EXPECT_EQ(cells[4], example.pregnancy[index]);
        // Values below 0.01 are not stored, so the diary shows 0 for them.
        const auto shown = [](float value) { return value >= 0.01F ? value : 0.0F; };
        EXPECT_EQ(GetBleedingLevel(example.diary.data, date), shown(cells[1]));
        EXPECT_EQ(GetPeriodProbability(example.diary.data, date), shown(cells[2]));
        EXPECT_EQ(GetOvulationProbability(example.diary.data, date), shown(cells[3]));
        EXPECT_EQ(GetPregnancyProbability(example.diary.data, date), shown(cells[4]));
    }
    EXPECT_EQ(rows, 20);
}

}  // namespace
}  // namespace lunara::test
