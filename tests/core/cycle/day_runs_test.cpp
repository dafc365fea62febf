#include "cycle/day_runs.h"

#include <gtest/gtest.h>

#include <random>

#include "cycle/day_step.h"

namespace lunara::test {
namespace {

constexpr std::int32_t SomeNumber = 145'000;  // a day in 1997

std::vector<std::pair<int, int>> Offsets(const DayRuns& runs) {
    std::vector<std::pair<int, int>> offsets;
    for (const DayRun& run : runs) {
        offsets.emplace_back(DayNumber(run.first) - SomeNumber, DayNumber(run.last) - SomeNumber);
    }
    return offsets;
}

void Fill(DayValueList& list, const std::vector<int>& days) {
    for (const int day : days) {
        list.Set(KeyOfDayNumber(SomeNumber + day), 0);
    }
}

using Runs = std::vector<std::pair<int, int>>;

TEST(DayRuns, JoinsDaysUpToTheGap) {
    struct Case {
        const char* label;
        std::vector<int> days;
        DateKey gap;
        Runs runs;
    };
    const Case cases[] = {
        {"none", {}, 1, {}},
        {"one day", {3}, 1, {{3, 3}}},
        {"neighbours", {3, 4, 5}, 1, {{3, 5}}},
        {"gap of two under a limit of one", {3, 5}, 1, {{3, 3}, {5, 5}}},
        {"gap of two under a limit of two", {3, 5}, 2, {{3, 5}}},
        {"gap of three under a limit of two", {3, 6, 7}, 2, {{3, 3}, {6, 7}}},
        {"not in order", {9, 3, 8}, 1, {{3, 3}, {8, 9}}},
        {"over two months", {28, 29, 30, 31, 32, 60, 61}, 1, {{28, 32}, {60, 61}}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.label);
        DayValueList list;
        Fill(list, test.days);
        DayRuns runs;
        CompleteRuns(list, test.gap, 0, runs);
        EXPECT_EQ(Offsets(runs), test.runs);
    }
}

TEST(DayRuns, KnownRunsAreTakenOverOnlyBeforeTheDate) {
    DayValueList list;
    Fill(list, {3, 4, 10, 11, 12, 20});
    const auto key = [](int day) { return KeyOfDayNumber(SomeNumber + day); };
    for (const int known : {0, 4, 5, 12, 13, 30}) {
        SCOPED_TRACE(known);
        DayRuns runs = {{key(3), key(4)}, {key(10), key(12)}};
        CompleteRuns(list, 2, key(known), runs);
        EXPECT_EQ(Offsets(runs), (Runs{{3, 4}, {10, 12}, {20, 20}}));
    }
    // The last known run may continue.
    DayRuns runs = {{key(3), key(4)}, {key(10), key(11)}};
    CompleteRuns(list, 2, key(20), runs);
    EXPECT_EQ(Offsets(runs), (Runs{{3, 4}, {10, 12}, {20, 20}}));
}

// ---- Steps between near days ----

/// Visits all keys, months 0 to 14 and days 0 to 33, of years at both ends of the calendar, of a
/// common and a leap century, and of a common year before a leap year.
template <typename Visit>
void ForEachKey(Visit visit) {
    for (const unsigned year : {0U, 1600U, 1601U, 1602U, 1900U, 2000U, 2023U, 2024U, 30'826U,
                                30'827U, 30'828U, 0x7FFFU}) {
        for (unsigned month = 0; month <= 14; ++month) {
            for (unsigned day = 0; day <= 33; ++day) {
                visit(MakeDateKey(year, month, day));
            }
        }
    }
}

TEST(DayStep, DaysAfterIsTheSumOfDayNumbers) {
    ForEachKey([](DateKey key) {
        const DaysAfter after(key);
        for (std::int32_t days = 0; days <= 28; ++days) {
            ASSERT_EQ(after[days], KeyOfDayNumber(DayNumber(key) + days))
                << std::hex << key << " + " << std::dec << days;
        }
    });
}

TEST(DayStep, AreWithinIsTheDifferenceOfDayNumbers) {
    ForEachKey([](DateKey key) {
        for (DateKey later = key + 1; later < key + 0x300; ++later) {
            for (const DateKey days : {1U, 2U, 28U}) {
                ASSERT_EQ(AreWithin(key, later, days),
                          DayNumber(later) - DayNumber(key) <= static_cast<std::int32_t>(days))
                    << std::hex << key << " to " << later << ", " << std::dec << days;
            }
        }
    });
    EXPECT_TRUE(AreWithin(MakeDateKey(2023, 12, 31), MakeDateKey(2024, 1, 1), 1));
    EXPECT_FALSE(AreWithin(MakeDateKey(2023, 12, 31), MakeDateKey(2025, 1, 1), 2));
}

TEST(DayStep, NumberingIsDayNumber) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        std::mt19937 random(seed);
        DayNumbering numbering;
        DateKey key = MakeDateKey(1600, 12, 20);
        for (int i = 0; i < 200'000; ++i) {
            ASSERT_EQ(numbering.Next(key), DayNumber(key)) << std::hex << key;
            const auto step = static_cast<DateKey>(random());
            key += 1 + (step % 4 == 0 ? step >> 23 : 0);
        }
    }
}

}  // namespace
}  // namespace lunara::test
