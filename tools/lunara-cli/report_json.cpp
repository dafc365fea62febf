#include <array>
#include <charconv>
#include <nlohmann/json.hpp>

#include "exchange/iso_date.h"
#include "tools/lunara-cli/prediction_report.h"

namespace lunara {
namespace {

// ordered_json prints keys in the order in which they are set.
using Json = nlohmann::ordered_json;

/// The double of the float's own shortest decimal text, so that 0.1F prints as 0.1 and not as
/// 0.10000000149011612.
double Shortest(float value) {
    std::array<char, 32> text{};
    const auto printed = std::to_chars(text.data(), text.data() + text.size(), value);
    double number = 0;
    std::from_chars(text.data(), printed.ptr, number);
    return number;
}

void PutWeight(Json& json, const char* name, const std::optional<float>& weight) {
    if (weight) {
        json[name] = Shortest(*weight);
    }
}

Json DayAsJson(const DayReport& day) {
    Json json;
    json["date"] = IsoDate(day.date);
    PutWeight(json, "bleedingLevel", day.bleedingLevel);
    PutWeight(json, "periodProbability", day.periodProbability);
    PutWeight(json, "ovulationProbability", day.ovulationProbability);
    PutWeight(json, "pregnancyWeight", day.pregnancyWeight);
    if (day.discarded) {
        json["discarded"] = true;
    }
    if (day.flags) {
        json["flags"] = *day.flags;
        json["status"] = day.status;
    }
    return json;
}

}  // namespace

std::string ReportAsJson(const PredictionReport& report) {
    Json json;
    json["today"] = IsoDate(report.today);
    json["warning"] = report.warning;
    json["lastValidPeriodStart"] = nullptr;
    if (report.lastValidPeriodStart) {
        json["lastValidPeriodStart"] = IsoDate(*report.lastValidPeriodStart);
    }
    json["todayIsBleeding"] = report.todayIsBleeding;
    json["cycles"] = Json::array();
    for (const CycleRecord& cycle : report.cycles) {
        Json entry;
        entry["start"] = IsoDate(cycle.start);
        entry["periodLength"] = cycle.periodLength;
        entry["cycleLength"] = cycle.cycleLength;
        json["cycles"].push_back(std::move(entry));
    }
    json["discardedPeriods"] = report.discardedPeriods;
    json["invalidCycles"] = report.invalidCycles;
    json["days"] = Json::array();
    for (const DayReport& day : report.days) {
        json["days"].push_back(DayAsJson(day));
    }
    return json.dump(2) + "\n";
}

}  // namespace lunara
