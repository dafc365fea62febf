#pragma once

// Finds the periods in the bleeding records and the cycles between them, and averages the periods
// of valid cycles.

#include <cstdint>
#include <span>
#include <vector>

#include "cycle/day_runs.h"
#include "cycle/distribution.h"
#include "diary/prediction_state.h"

namespace lunara {

/// The bleeding records up to and including today, in date order, each with its day number, so that
/// no later step converts a date again. Later records are left out: the prediction ignores what the
/// diary says of the future.
class RecordedDays {
  public:
    /// `bleeding` must be sorted and must outlive this object unchanged.
    RecordedDays(const DayValueList& bleeding, DateKey today);

    std::size_t Count() const { return numbers.size(); }
    const DayValue& Record(std::size_t index) const { return records[index]; }
    std::int32_t Number(std::size_t index) const { return numbers[index]; }
    std::span<const DayValue> Records() const { return {records, numbers.size()}; }

  private:
    const DayValue* records;
    std::vector<std::int32_t> numbers;
};

/// Splits `days` into periods and cycles. Fills `lastValidPeriodStart`, `discardedDays`,
/// `validCycles`, `discardedPeriods` and `invalidCycles` of `state`, all of which must be empty,
/// and `runs` with the first and last day of every period, discarded ones included.
void FindPeriods(const RecordedDays& days, DateKey today, CyclePredictor& state, DayRuns& runs);

/// Averages the periods of the valid cycles (at least one, in date order). Counts every bleeding
/// record on the 7 days from a cycle's start, even one that belongs to a discarded period.
PeriodProfile MeasurePeriodProfile(std::span<const CycleRecord> validCycles,
                                   const RecordedDays& days);

}  // namespace lunara
