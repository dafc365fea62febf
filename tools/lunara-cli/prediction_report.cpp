#include "tools/lunara-cli/prediction_report.h"

#include <bit>
#include <map>

#include "cycle/day_status.h"
#include "cycle/predictor.h"
#include "platform/clock.h"
#include "platform/text.h"

namespace lunara {
namespace {

// Units, terminator included. All 25 status texts joined, with the two numbers of one of them, are
// shorter.
constexpr int StatusCapacity = 1024;
constexpr std::uint32_t AllStatusBits = 0xFFFFFFFF;

class WarningCollector : public WarningSink {
  public:
    void PostPredictionWarning(const WCHAR* text) override { warning += ToUtf8(text); }

    std::string warning;
};

using DaysByDate = std::map<DateKey, DayReport>;

void CollectWeights(const DayValueList& list, std::optional<float> DayReport::*weight,
                    DaysByDate& days) {
    for (const DayValue& record : list) {
        days[record.date].*weight = std::bit_cast<float>(record.value);
    }
}

std::string StatusText(const UserData& data, DateKey key) {
    SYSTEMTIME date{};
    FromDateKey(key, date);
    WCHAR text[StatusCapacity] = {};
    GetDayStatusText(data, date, text, StatusCapacity, AllStatusBits);
    return ToUtf8(text);
}

std::vector<DayReport> CollectDays(const UserData& data) {
    const CyclePredictor& state = data.Prediction();
    DaysByDate days;
    CollectWeights(state.bleedingLevels, &DayReport::bleedingLevel, days);
    CollectWeights(state.periodProbabilities, &DayReport::periodProbability, days);
    CollectWeights(state.ovulationProbabilities, &DayReport::ovulationProbability, days);
    CollectWeights(state.pregnancyProbabilities, &DayReport::pregnancyWeight, days);
    for (const DayValue& record : state.discardedDays) {
        days[record.date].discarded = true;
    }
    for (const DayFlagsEntry& entry : state.dayFlags) {
        days[entry.date].flags = entry.flags;
    }
    std::vector<DayReport> ascending;
    for (auto& [date, day] : days) {
        day.date = date;
        if (day.flags) {
            day.status = StatusText(data, date);
        }
        ascending.push_back(std::move(day));
    }
    return ascending;
}

}  // namespace

PredictionReport MakePredictionReport(UserData& data) {
    PredictionReport report;
    report.today = ToDateKey(LocalNow());
    WarningCollector collector;
    WarningSink* const before = data.Prediction().warningSink;
    data.SetWarningSink(&collector);
    UpdatePrediction(data, 1);
    data.SetWarningSink(before);

    const CyclePredictor& state = data.Prediction();
    report.warning = collector.warning;
    const DateKey lastStart = ToDateKey(state.lastValidPeriodStart);
    if (lastStart != 0) {
        report.lastValidPeriodStart = lastStart;
    }
    report.todayIsBleeding = state.todayIsBleeding;
    report.cycles.assign(state.validCycles.begin(), state.validCycles.end());
    report.discardedPeriods = state.discardedPeriods;
    report.invalidCycles = state.invalidCycles;
    report.days = CollectDays(data);
    return report;
}

}  // namespace lunara
