#include "cycle/periods.h"

#include <array>

#include "cycle/day_step.h"

namespace lunara {
namespace {

/// Largest distance, in days, between neighbouring bleeding days of one period: a single day
/// without bleeding between them is bridged.
constexpr std::int32_t LargestGapInPeriod = 2;

/// Length given to the open cycle, which has not ended: one day more than the longest valid cycle,
/// so that the open cycle always counts as invalid.
constexpr std::int32_t OpenCycleLength = LongestCycle + 1;

/// A period with the day number of its first day.
struct Period {
    CycleRecord record;
    std::int32_t startNumber;
};

std::vector<Period> SplitIntoPeriods(const RecordedDays& days, DayRuns& runs) {
    std::vector<Period> periods;
    if (days.Count() == 0) {
        return periods;
    }
    DateKey start = days.Record(0).date;
    std::int32_t startNumber = days.Number(0);
    std::int32_t previous = startNumber;
    // Length of the period so far, days. A record of an impossible date counts as day 0 and makes
    // this negative, which discards the period.
    std::int32_t run = 1;
    for (std::size_t i = 1; i < days.Count(); ++i) {
        const std::int32_t number = days.Number(i);
        const std::int32_t gap = number - previous;
        previous = number;
        if (gap <= LargestGapInPeriod) {
            run += gap;
            continue;
        }
        periods.push_back({{run, gap + run - 1, start}, startNumber});
        runs.push_back({start, days.Record(i - 1).date});
        start = days.Record(i).date;
        startNumber = number;
        run = 1;
    }
    periods.push_back({{run, OpenCycleLength, start}, startNumber});
    runs.push_back({start, days.Record(days.Count() - 1).date});
    return periods;
}

bool IsOfValidLength(const CycleRecord& period) {
    return period.periodLength >= ShortestPeriod && period.periodLength <= LongestPeriod;
}

/// Whether a period is kept: 2 to 7 days long, or a single day, today or yesterday, that may still
/// go on.
bool IsKept(const Period& period, std::int32_t today) {
    const std::int32_t length = period.record.periodLength;
    const std::int32_t age = today - period.startNumber;
    return length <= LongestPeriod && (length >= ShortestPeriod || (age >= 0 && age < length + 1));
}

/// Removes the periods that are not kept and records their days in `state.discardedDays`. The cycle
/// before a discarded period is lengthened by the cycle that this period opened.
void DiscardPeriods(std::vector<Period>& periods, std::int32_t today, CyclePredictor& state) {
    std::size_t kept = 0;
    for (const Period& period : periods) {
        if (IsKept(period, today)) {
            periods[kept++] = period;
            continue;
        }
        if (kept > 0) {
            periods[kept - 1].record.cycleLength += period.record.cycleLength;
        }
        for (std::int32_t i = 0; i < period.record.periodLength; ++i) {
            state.discardedDays.Set(KeyOfDayNumber(period.startNumber + i), 1);
        }
        ++state.discardedPeriods;
    }
    periods.resize(kept);
}

}  // namespace

RecordedDays::RecordedDays(const DayValueList& bleeding, DateKey today)
    : records(bleeding.begin()), numbers(static_cast<std::size_t>(bleeding.Count())) {
    DayNumbering numbering;
    std::size_t count = 0;
    while (count < numbers.size() && records[count].date <= today) {
        numbers[count] = numbering.Next(records[count].date);
        ++count;
    }
    numbers.resize(count);
}

void FindPeriods(const RecordedDays& days, DateKey today, CyclePredictor& state, DayRuns& runs) {
    std::vector<Period> periods = SplitIntoPeriods(days, runs);
    for (std::size_t i = periods.size(); i-- > 0;) {
        if (IsOfValidLength(periods[i].record)) {
            FromDateKey(periods[i].record.start, state.lastValidPeriodStart);
            break;
        }
    }
    DiscardPeriods(periods, DayNumber(today), state);
    const auto isInvalid = [](const Period& period) {
        return period.record.cycleLength < ShortestCycle ||
               period.record.cycleLength > LongestCycle;
    };
    state.invalidCycles = static_cast<std::int32_t>(std::erase_if(periods, isInvalid));
    state.validCycles.SetSize(static_cast<std::int32_t>(periods.size()));
    for (std::int32_t i = 0; i < state.validCycles.Count(); ++i) {
        state.validCycles.SetAt(i, periods[static_cast<std::size_t>(i)].record);
    }
}

PeriodProfile MeasurePeriodProfile(std::span<const CycleRecord> validCycles,
                                   const RecordedDays& days) {
    std::array<std::int64_t, ProfileDays> levelSum{};
    std::array<std::int32_t, ProfileDays> dayCount{};
    std::size_t first = 0;
    for (const CycleRecord& cycle : validCycles) {
        while (first < days.Count() && days.Record(first).date != cycle.start) {
            ++first;
        }
        if (first == days.Count()) {
            break;
        }
        const std::int32_t start = days.Number(first);
        for (; first < days.Count(); ++first) {
            const std::int32_t t = days.Number(first) - start;
            if (t >= ProfileDays) {
                break;
            }
            if (t >= 0) {  // an impossible date counts as day 0, far before the start
                levelSum[static_cast<std::size_t>(t)] += days.Record(first).value;
                ++dayCount[static_cast<std::size_t>(t)];
            }
        }
    }
    PeriodProfile profile;
    const auto cycles = static_cast<float>(validCycles.size());
    for (std::size_t t = 0; t < ProfileDays; ++t) {
        profile.meanLevel[t] = static_cast<float>(levelSum[t]) / cycles;
        profile.bleedShare[t] = static_cast<float>(dayCount[t]) / cycles;
    }
    return profile;
}

}  // namespace lunara
