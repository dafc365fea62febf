#pragma once

// A second implementation of the prediction, for comparison: every step by itself, dates through
// the general date functions, lists as maps. It shares no code with the engine except the date
// functions, and both must give the same bits.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "records/collections.h"

namespace lunara::test {

/// The status flags of one day, as DayFlagsEntry without its date.
struct ReferenceFlags {
    std::uint32_t flags = 0;
    std::int32_t argIndex = 0;
    bool operator==(const ReferenceFlags&) const = default;
};

/// What CyclePredictor holds after a prediction, with the warning that goes with it.
struct ReferencePrediction {
    SYSTEMTIME lastValidPeriodStart{};
    bool todayIsBleeding = false;
    std::vector<CycleRecord> validCycles;
    std::int32_t discardedPeriods = 0;
    std::int32_t invalidCycles = 0;
    std::string warning;

    std::map<DateKey, float> bleedingLevels;
    std::map<DateKey, float> periodProbabilities;
    std::map<DateKey, float> ovulationProbabilities;
    std::map<DateKey, float> pregnancyProbabilities;
    std::map<DateKey, std::int32_t> discardedDays;
    std::map<DateKey, ReferenceFlags> dayFlags;
    std::vector<std::int32_t> dayFlagArgs;
};

/// Predicts for `today` from all bleeding records, in ascending date order. Records after today are
/// left out.
ReferencePrediction PredictPlainly(const std::vector<DayValue>& bleeding, const SYSTEMTIME& today);

}  // namespace lunara::test
