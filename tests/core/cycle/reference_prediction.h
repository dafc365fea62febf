#pragma once

// The prediction once more, as plainly as it can be written: every step by itself, dates through
// the general date functions, lists as maps. It shares no code with the engine but the dates, and
// the two must agree bit for bit.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "records/collections.h"

namespace lunara::test {

struct ReferenceFlags {
    std::uint32_t flags = 0;
    std::int32_t argIndex = 0;
    bool operator==(const ReferenceFlags&) const = default;
};

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

/// `bleeding` in date order.
ReferencePrediction PredictPlainly(const std::vector<DayValue>& bleeding, const SYSTEMTIME& today);

}  // namespace lunara::test
