#pragma once

// Everything the prediction says about a diary, in the form in which it is printed.

#include <optional>
#include <string>
#include <vector>

#include "diary/user_data.h"

namespace lunara {

/// One day with an entry in at least one computed list; only what it has is there.
struct DayReport {
    DateKey date = 0;
    std::optional<float> bleedingLevel;
    std::optional<float> periodProbability;
    std::optional<float> ovulationProbability;
    std::optional<float> pregnancyWeight;
    bool discarded = false;
    std::optional<std::uint32_t> flags;
    std::string status;  // the text of all its flags, UTF-8
};

struct PredictionReport {
    DateKey today = 0;
    std::string warning;  // UTF-8 as composed, "" for none
    std::optional<DateKey> lastValidPeriodStart;
    bool todayIsBleeding = false;
    std::vector<CycleRecord> cycles;  // the valid ones, in date order
    std::int32_t discardedPeriods = 0;
    std::int32_t invalidCycles = 0;
    std::vector<DayReport> days;  // ascending
};

/// Computes the prediction of `data` for today as the clock has it. The data set's warning sink is
/// replaced for the call.
PredictionReport MakePredictionReport(UserData& data);

/// One JSON object, indented, with a line end. Reading a number back as a 32-bit float gives
/// exactly the float that was computed.
std::string ReportAsJson(const PredictionReport& report);

/// For people: the summary, and a table of the next `ReportTableDays` days, today first.
std::string ReportAsTable(const PredictionReport& report);

inline constexpr int ReportTableDays = 60;

}  // namespace lunara
