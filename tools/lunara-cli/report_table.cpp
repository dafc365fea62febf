#include <algorithm>
#include <array>
#include <charconv>

#include "exchange/iso_date.h"
#include "platform/text.h"
#include "tools/lunara-cli/prediction_report.h"

namespace lunara {
namespace {

constexpr int DecimalsShown = 2;

/// Pads the text with blanks on the left to `width` characters.
std::string Padded(std::string text, std::size_t width) {
    return text.size() < width ? text.insert(0, width - text.size(), ' ') : text;
}

/// Right-aligned number with two decimals, with a point in every locale; "-" for no value.
std::string WeightText(const std::optional<float>& weight, std::size_t width) {
    if (!weight) {
        return Padded("-", width);
    }
    std::array<char, 64> text{};  // [0, 3.4e38] has at most 39 digits before the point
    const auto printed = std::to_chars(text.data(), text.data() + text.size(), *weight,
                                       std::chars_format::fixed, DecimalsShown);
    return Padded(std::string(text.data(), printed.ptr), width);
}

std::string WithoutTrailingBlanks(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string CycleSummary(const PredictionReport& report) {
    std::string text = "Valid cycles:      " + std::to_string(report.cycles.size());
    if (!report.cycles.empty()) {
        const auto [shortest, longest] =
            std::minmax_element(report.cycles.begin(), report.cycles.end(),
                                [](const CycleRecord& a, const CycleRecord& b) {
                                    return a.cycleLength < b.cycleLength;
                                });
        text += ", of " + std::to_string(shortest->cycleLength) + " to " +
                std::to_string(longest->cycleLength) + " days";
    }
    return text + "\nLeft out:          " + std::to_string(report.discardedPeriods) +
           " discarded period(s), " + std::to_string(report.invalidCycles) + " invalid cycle(s)\n";
}

std::string DayLine(const SYSTEMTIME& date, const DayReport& day) {
    std::string line;
    for (int i = 0; i < 4; ++i) {  // "Mon "
        line.push_back(static_cast<char>(WeekdayNameWithBlank(date.wDayOfWeek)[i]));
    }
    line += IsoDate(ToDateKey(date)) + WeightText(day.bleedingLevel, 10) +
            WeightText(day.periodProbability, 8) + WeightText(day.ovulationProbability, 11) +
            WeightText(day.pregnancyWeight, 11) + "  " + day.status;
    return WithoutTrailingBlanks(line) + "\n";
}

}  // namespace

std::string ReportAsTable(const PredictionReport& report) {
    std::string text = "Today:             " + IsoDate(report.today);
    text += report.todayIsBleeding ? ", a recorded bleeding day\n" : "\n";
    text += "Last period start: " +
            (report.lastValidPeriodStart ? IsoDate(*report.lastValidPeriodStart) : "none") + "\n";
    text += CycleSummary(report);
    if (!report.warning.empty()) {
        text += "Warning:           " + WithoutTrailingBlanks(report.warning) + "\n";
    }
    text += "\nDay             Bleeding  Period  Ovulation  Pregnancy  Status\n";

    SYSTEMTIME date{};
    FromDateKey(report.today, date);
    auto day =
        std::lower_bound(report.days.begin(), report.days.end(), report.today,
                         [](const DayReport& entry, DateKey key) { return entry.date < key; });
    for (int i = 0; i < ReportTableDays; ++i, AddDays(date, 1, date)) {
        const DateKey key = ToDateKey(date);
        // Also skips entries of impossible dates (31 February), which the steps of one day never
        // reach.
        while (day != report.days.end() && day->date < key) {
            ++day;
        }
        const bool hasEntry = day != report.days.end() && day->date == key;
        text += DayLine(date, hasEntry ? *day : DayReport{});
    }
    return text;
}

}  // namespace lunara
