#pragma once

// The state and results of the prediction, as the data set keeps them. Plain data without
// behaviour: `UpdatePrediction` (cycle/predictor.h) writes it, the data set clears its up-to-date
// mark on every change of records, everything else reads it through `UserData::Prediction`.

#include "records/collections.h"

namespace lunara {

/// Where the composed warning goes. The main window implements it by posting itself a message, so
/// that the engine neither knows windows nor ever waits for a message box.
class WarningSink {
  public:
    WarningSink() = default;
    WarningSink(const WarningSink&) = delete;
    WarningSink& operator=(const WarningSink&) = delete;
    virtual ~WarningSink() = default;

    /// `text` is not empty and is valid until the call returns.
    virtual void PostPredictionWarning(const WCHAR* text) = 0;
};

struct CyclePredictor {
    /// `TickCount` at the last warning box. The initial value is an hour before tick 0, so that the
    /// first warning is shown at once.
    DWORD lastWarningTick = static_cast<DWORD>(-3'600'000);
    /// Cleared by every change of records; `UpdatePrediction` recomputes when it is clear.
    bool predictionUpToDate = false;
    /// The day the lists were computed for. On any other day `UpdatePrediction` recomputes, too.
    DateKey computedFor = 0;

    /// Start of the latest period of valid length; all zero when there is none.
    SYSTEMTIME lastValidPeriodStart{};
    /// The bleeding list has a record of `computedFor`, whatever its level.
    bool todayIsBleeding = false;

    // A day's value holds the bits of a 32-bit float. Never saved.
    DayValueList bleedingLevels;
    DayValueList periodProbabilities;
    DayValueList ovulationProbabilities;
    DayValueList pregnancyProbabilities;

    /// Status flags by day, and the arguments of their texts (cycle/day_status.h).
    DayTripleList dayFlags;
    IndexList dayFlagArgs{10};

    /// The bleeding days of discarded periods, value 1.
    DayValueList discardedDays;

    /// What the period search found: the cycles used for the statistics, in date order, and how
    /// many periods were discarded and how many cycles were invalid.
    CycleRecordList validCycles{10};
    std::int32_t discardedPeriods = 0;
    std::int32_t invalidCycles = 0;

    /// Receives the warnings; null drops them.
    WarningSink* warningSink = nullptr;
};

}  // namespace lunara
