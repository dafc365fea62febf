#pragma once

// The past: periods found in the bleeding records, the cycles between them, and what the periods of
// valid cycles look like on average.

#include <cstdint>
#include <span>
#include <vector>

#include "cycle/day_runs.h"
#include "cycle/distribution.h"
#include "diary/prediction_state.h"

namespace lunara {

/// The bleeding records up to today in date order, each with its day number, so that no later step
/// converts a date again. Later records are left out: what the diary says of the future is ignored.
class RecordedDays {
  public:
    /// `bleeding` is sorted and outlives this object unchanged.
    RecordedDays(const DayValueList& bleeding, DateKey today);

    std::size_t Count() const { return numbers.size(); }
    const DayValue& Record(std::size_t index) const { return records[index]; }
    std::int32_t Number(std::size_t index) const { return numbers[index]; }
    std::span<const DayValue> Records() const { return {records, numbers.size()}; }

  private:
    const DayValue* records;
    std::vector<std::int32_t> numbers;
};

/// Fills `lastValidPeriodStart`, `discardedDays`, `validCycles`, `discardedPeriods` and
/// `invalidCycles`, all of which must be empty, and `runs` with the first and last days of all
/// periods, the discarded ones included.
void FindPeriods(const RecordedDays& days, DateKey today, CyclePredictor& state, DayRuns& runs);

/// The mean period of the valid cycles (at least one), from every bleeding record within 7 days of
/// a cycle's start, whatever became of the period that the record belongs to.
PeriodProfile MeasurePeriodProfile(std::span<const CycleRecord> validCycles,
                                   const RecordedDays& days);

}  // namespace lunara
