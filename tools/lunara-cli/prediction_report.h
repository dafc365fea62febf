#pragma once

// Collects everything that the prediction says about a diary, and prints it as JSON or as a table.

#include <optional>
#include <string>
#include <vector>

#include "diary/user_data.h"

namespace lunara {

/// One day with an entry in at least one computed list; values without an entry are empty.
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

/// The prediction of one diary for one day.
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

/// Computes the prediction of `data` for today, as platform/clock.h tells it. Replaces the data
/// set's warning sink during the call. The prediction must be out of date, as after loading: one
/// that is up to date brings no warning.
PredictionReport MakePredictionReport(UserData& data);

/// Returns one indented JSON object that ends with a line end. Every number reads back as exactly
/// the 32-bit float that was computed.
std::string ReportAsJson(const PredictionReport& report);

/// Returns a summary and a table of the `ReportTableDays` days from today on, for people to read.
std::string ReportAsTable(const PredictionReport& report);

inline constexpr int ReportTableDays = 60;

}  // namespace lunara
