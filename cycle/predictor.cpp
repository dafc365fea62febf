#include "cycle/predictor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <span>
#include <utility>

#include "cycle/day_status.h"
#include "cycle/day_step.h"
#include "cycle/distribution.h"
#include "cycle/periods.h"
#include "platform/clock.h"
#include "platform/message_text.h"

namespace lunara {
namespace {

constexpr int WarningCapacity = 1024;

/// String resources of the warnings.
enum WarningText : UINT {
    InsufficientData = 50001,
    NoData = 50002,
    TooFewCycles = 50003,
    TooFarFromStart = 50004,
    AfterExpectedLength = 50005,
    DiscardedCounts = 50006,
    PredictionNotAvailable = 50029,
    PredictionNotMeaningful = 50030,
};

/// With this many valid cycles or fewer the warning says that the prediction is not stable.
constexpr std::int32_t FewCycles = 3;

/// How a recomputation ended; selects the warnings.
enum class Outcome { NoRecords, NoValidCycle, TooFar, AfterExpected, Predicted };

std::span<const CycleRecord> CyclesOf(const CyclePredictor& state) {
    return {state.validCycles.begin(), static_cast<std::size_t>(state.validCycles.Count())};
}

/// Clears all computed results. Keeps the memory of the lists that are refilled, the tick of the
/// last warning and the warning sink.
void ForgetResults(CyclePredictor& state) {
    state.lastValidPeriodStart = SYSTEMTIME{};
    state.todayIsBleeding = false;
    for (DayValueList* list :
         {&state.bleedingLevels, &state.periodProbabilities, &state.ovulationProbabilities,
          &state.pregnancyProbabilities, &state.discardedDays}) {
        list->EndFill(0);
    }
    state.dayFlags.EndFill(0);
    state.dayFlagArgs.Clear();
    state.validCycles.Clear();
    state.discardedPeriods = 0;
    state.invalidCycles = 0;
}

// ---- The past ----

/// Conception weights of a past cycle's days; entry 0 is the day of the ovulation kernel's first
/// entry.
using PregnancyAroundOvulation = std::array<float, 6>;

/// Spreads an ovulation kernel over the fertile days around it. Adds in the order of
/// `PredictPregnancy`, so that the result has the bits of a sum over the whole cycle, whose other
/// days only add zeros.
constexpr PregnancyAroundOvulation SpreadKernel(const OvulationKernel& kernel) {
    PregnancyAroundOvulation weights{};
    for (std::size_t i = 0; i < weights.size(); ++i) {
        for (std::size_t j = 0; j < PregnancyKernel.size(); ++j) {
            const std::size_t ahead = i + 3;
            if (ahead >= j && ahead - j < kernel.size()) {
                weights[i] += kernel[ahead - j] * PregnancyKernel[j];
            }
        }
    }
    return weights;
}

/// The non-zero entries of a row of weights, which are adjacent, and the index of the first one.
template <std::size_t Most>
struct Stretch {
    std::int32_t first = 0;
    std::int32_t count = 0;
    std::array<float, Most> weights{};
};

template <std::size_t Most, std::size_t Size>
constexpr Stretch<Most> TakeStretch(const std::array<float, Size>& row) {
    Stretch<Most> stretch;
    for (std::size_t i = 0; i < Size; ++i) {
        if (row[i] > 0) {
            stretch.first = stretch.count == 0 ? static_cast<std::int32_t>(i) : stretch.first;
            stretch.weights[static_cast<std::size_t>(stretch.count++)] = row[i];
        }
    }
    return stretch;
}

constexpr std::size_t MostOvulationDays = 2;
constexpr std::size_t MostPregnancyDays = 5;

/// Weights of a past cycle's days, indexed by cycle length % 2.
constexpr std::array<Stretch<MostOvulationDays>, 2> PastOvulation = {
    TakeStretch<MostOvulationDays>(EvenOvulationKernel),
    TakeStretch<MostOvulationDays>(OddOvulationKernel)};
constexpr std::array<Stretch<MostPregnancyDays>, 2> PastPregnancy = {
    TakeStretch<MostPregnancyDays>(SpreadKernel(EvenOvulationKernel)),
    TakeStretch<MostPregnancyDays>(SpreadKernel(OddOvulationKernel))};

DayValue DayWeight(DateKey date, float weight) {
    return {date, std::bit_cast<std::int32_t>(weight)};
}

/// Stores the recorded levels and their period probabilities: 1, or 0 for a record of level 0.
/// Gives both lists room for the predicted days as well, so that adding those does not reallocate.
void StoreRecordedDays(const RecordedDays& days, CyclePredictor& state) {
    const auto count = static_cast<std::int32_t>(days.Count());
    DayValue* levels = state.bleedingLevels.BeginFill(count + HorizonDays);
    DayValue* probabilities = state.periodProbabilities.BeginFill(count + HorizonDays);
    if (levels == nullptr || probabilities == nullptr) {
        return;
    }
    const std::span<const DayValue> records = days.Records();
    for (std::size_t i = 0; i < records.size(); ++i) {
        levels[i] = DayWeight(records[i].date, static_cast<float>(records[i].value));
    }
    for (std::size_t i = 0; i < records.size(); ++i) {
        probabilities[i] = DayWeight(records[i].date, records[i].value != 0 ? 1.0F : 0.0F);
    }
    state.bleedingLevels.EndFill(count);
    state.periodProbabilities.EndFill(count);
}

/// Writes the weights of a stretch, in which entry 0 of the row belongs to the day `offset` days
/// after the start, to `next` and moves `next` behind them. Returns the first and the last day.
template <std::size_t Most>
DayRun WriteStretch(const Stretch<Most>& stretch, const DaysAfter& days, std::int32_t offset,
                    DayValue*& next) {
    DayValue* const first = next;
    for (std::int32_t i = 0; i < stretch.count; ++i) {
        *next++ = DayWeight(days[offset + stretch.first + i],
                            stretch.weights[static_cast<std::size_t>(i)]);
    }
    return {first->date, next[-1].date};
}

/// Stores the ovulation days of the valid cycles, all of which have ended, and the fertile days
/// around them, and fills `runs` with the runs that they form.
void StorePastOvulations(CyclePredictor& state, PastRuns& runs) {
    const std::int32_t cycles = state.validCycles.Count();
    DayValue* const ovulations = state.ovulationProbabilities.BeginFill(
        cycles * static_cast<std::int32_t>(MostOvulationDays) + HorizonDays);
    DayValue* const pregnancies = state.pregnancyProbabilities.BeginFill(
        cycles * static_cast<std::int32_t>(MostPregnancyDays) + HorizonDays);
    if (ovulations == nullptr || pregnancies == nullptr) {
        return;
    }
    runs.ovulation.reserve(static_cast<std::size_t>(cycles));
    runs.pregnancy.reserve(static_cast<std::size_t>(cycles));
    DayValue* nextOvulation = ovulations;
    DayValue* nextPregnancy = pregnancies;
    for (const CycleRecord& cycle : state.validCycles) {
        const auto odd = static_cast<std::size_t>(cycle.cycleLength % 2);
        const DaysAfter days(cycle.start);
        const std::int32_t offset = OvulationKernelDay(cycle.cycleLength);
        runs.ovulation.push_back(WriteStretch(PastOvulation[odd], days, offset, nextOvulation));
        runs.pregnancy.push_back(WriteStretch(PastPregnancy[odd], days, offset, nextPregnancy));
    }
    state.ovulationProbabilities.EndFill(static_cast<std::int32_t>(nextOvulation - ovulations));
    state.pregnancyProbabilities.EndFill(static_cast<std::int32_t>(nextPregnancy - pregnancies));
}

// ---- The prediction ----

/// Stores `values`, the weights of the 365 days that begin with `start` (the last valid period
/// start), in `list`; weights below 0.01 are dropped. A day that already has an entry in `list`
/// keeps it, because records take precedence over predictions; its weight in `values` is set to 0.
void StorePredicted(const SYSTEMTIME& start, HorizonValues& values, DayValueList& list) {
    const std::int32_t startNumber = DayNumber(ToDateKey(start));
    for (std::int32_t i = list.Count(); i-- > 0;) {
        const std::int32_t day = DayNumber(list.At(i).date) - startNumber;
        if (day < 0) {
            break;
        }
        if (day < HorizonDays) {
            values[static_cast<std::size_t>(day)] = 0;
        }
    }
    UserData::StoreDayWeights(values.data(), HorizonDays, start, list);
}

Outcome Predict(CyclePredictor& state, const RecordedDays& days, std::int32_t daysPassed) {
    if (daysPassed > LongestCycle) {
        return Outcome::TooFar;
    }
    const LengthShares shares = MeasureLengthShares(CyclesOf(state));
    const PeriodProfile profile = MeasurePeriodProfile(CyclesOf(state), days);
    HorizonValues starts;
    if (!PredictStarts(shares, daysPassed, starts)) {
        return Outcome::AfterExpected;
    }
    const SYSTEMTIME& start = state.lastValidPeriodStart;
    HorizonValues values;
    SpreadOverPeriod(profile.meanLevel, starts, daysPassed, values);
    StorePredicted(start, values, state.bleedingLevels);
    SpreadOverPeriod(profile.bleedShare, starts, daysPassed, values);
    StorePredicted(start, values, state.periodProbabilities);
    HorizonValues ovulation;
    PredictOvulation(MeasureOvulationOffsets(shares), starts, ovulation);
    PredictPregnancy(ovulation, values);
    StorePredicted(start, ovulation, state.ovulationProbabilities);
    StorePredicted(start, values, state.pregnancyProbabilities);
    return Outcome::Predicted;
}

Outcome Recompute(const DayValueList& bleeding, CyclePredictor& state, const SYSTEMTIME& today) {
    ForgetResults(state);
    if (bleeding.Count() == 0) {
        return Outcome::NoRecords;
    }
    const DateKey todayKey = ToDateKey(today);
    state.todayIsBleeding = bleeding.Find(todayKey) >= 0;
    const RecordedDays days(bleeding, todayKey);
    PastRuns runs;
    FindPeriods(days, todayKey, state, runs.bleeding);
    StoreRecordedDays(days, state);
    StorePastOvulations(state, runs);
    Outcome outcome = Outcome::NoValidCycle;
    if (state.validCycles.Count() > 0) {
        outcome = Predict(state, days, DaysBetween(today, state.lastValidPeriodStart));
    }
    MarkDays(state, today, std::move(runs));
    return outcome;
}

// ---- The warning ----

void ComposeWarning(const CyclePredictor& state, Outcome outcome, MessageText& text) {
    const auto append = [&text](UINT id) { text.FormatResource(&MessageText::Append, id); };
    if (outcome == Outcome::NoRecords) {
        append(NoData);
        return;
    }
    if (outcome == Outcome::NoValidCycle) {
        append(InsufficientData);
    } else if (state.validCycles.Count() <= FewCycles) {
        append(TooFewCycles);
    }
    if (state.discardedPeriods > 0) {
        text.FormatResource(&MessageText::Append, DiscardedCounts, state.discardedPeriods,
                            state.invalidCycles);
    }
    if (outcome == Outcome::TooFar) {
        append(TooFarFromStart);
        append(PredictionNotMeaningful);
    } else if (outcome == Outcome::AfterExpected) {
        append(AfterExpectedLength);
    }
    if (outcome == Outcome::NoValidCycle || outcome == Outcome::AfterExpected) {
        append(PredictionNotAvailable);
    }
}

void PostWarning(const CyclePredictor& state, Outcome outcome) {
    if (state.warningSink == nullptr) {
        return;
    }
    MessageText text(WarningCapacity);
    ComposeWarning(state, outcome, text);
    if (!text.IsEmpty()) {
        state.warningSink->PostPredictionWarning(text.Text());
    }
}

/// The float stored for the date; 0 when there is none.
float WeightOf(const DayValueList& list, const SYSTEMTIME& date) {
    const std::int32_t index = list.Find(ToDateKey(date));
    return index < 0 ? 0 : std::bit_cast<float>(list.At(index).value);
}

/// Applies `edge` to the bleeding and the temperature list, sorted and not empty, and writes the
/// date that `goesBefore` prefers. Returns 0, with `date` left alone, when both lists are empty.
template <typename Edge, typename Preference>
int EdgeRecordDate(const UserData& data, Edge edge, Preference goesBefore, SYSTEMTIME& date) {
    std::optional<DateKey> best;
    for (const DayValueList* list : {&data.Bleeding(), &data.Temperature()}) {
        if (list->Count() == 0) {
            continue;
        }
        list->Sort();
        const DateKey candidate = edge(*list);
        if (!best || goesBefore(candidate, *best)) {
            best = candidate;
        }
    }
    if (!best) {
        return 0;
    }
    FromDateKey(*best, date);
    return 1;
}

}  // namespace

int UpdatePrediction(UserData& data, int showMessages) {
    CyclePredictor& state = data.predictor;
    const SYSTEMTIME today = LocalNow();
    if (state.predictionUpToDate && state.computedFor == ToDateKey(today)) {
        return 1;
    }
    const Outcome outcome = Recompute(data.bleeding, state, today);
    if (showMessages != 0) {
        PostWarning(state, outcome);
    }
    state.computedFor = ToDateKey(today);
    state.predictionUpToDate = true;
    return 1;
}

float GetBleedingLevel(const UserData& data, const SYSTEMTIME& date) {
    return WeightOf(data.Prediction().bleedingLevels, date);
}

float GetPeriodProbability(const UserData& data, const SYSTEMTIME& date) {
    return WeightOf(data.Prediction().periodProbabilities, date);
}

float GetOvulationProbability(const UserData& data, const SYSTEMTIME& date) {
    return WeightOf(data.Prediction().ovulationProbabilities, date);
}

float GetPregnancyProbability(const UserData& data, const SYSTEMTIME& date) {
    return WeightOf(data.Prediction().pregnancyProbabilities, date);
}

int IsBleedingDayCounted(const UserData& data, const SYSTEMTIME& date) {
    const DayValueList& discarded = data.Prediction().discardedDays;
    const std::int32_t index = discarded.Find(ToDateKey(date));
    return index < 0 || (discarded.At(index).value & 1) == 0 ? 1 : 0;
}

int GetFirstRecordDate(const UserData& data, SYSTEMTIME& date) {
    return EdgeRecordDate(
        data, [](const DayValueList& list) { return list.At(0).date; },
        [](DateKey a, DateKey b) { return a < b; }, date);
}

int GetLastRecordDate(const UserData& data, SYSTEMTIME& date) {
    return EdgeRecordDate(
        data, [](const DayValueList& list) { return list.At(list.Count() - 1).date; },
        [](DateKey a, DateKey b) { return a > b; }, date);
}

int GetFirstRealRecordDate(const UserData& data, SYSTEMTIME& date) {
    std::optional<DateKey> best;
    for (const DayValueList* list : {&data.Bleeding(), &data.Temperature()}) {
        list->Sort();
        const auto* first = std::find_if(list->begin(), list->end(), [](const DayValue& record) {
            return IsRealDay(record.date);
        });
        if (first != list->end() && (!best || first->date < *best)) {
            best = first->date;
        }
    }
    if (!best) {
        return 0;
    }
    FromDateKey(*best, date);
    return 1;
}

}  // namespace lunara
