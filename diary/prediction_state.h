#pragma once

// The state of the prediction inside the data set. It is plain data: cycle/predictor.h computes it,
// the data set only clears its up-to-date mark.

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

    /// `text` is not empty and is the receiver's only until the call returns.
    virtual void PostPredictionWarning(const WCHAR* text) = 0;
};

struct CyclePredictor {
    /// `TickCount` at the last warning box. The initial value lies an hour back, so that the first
    /// warning is shown at once.
    DWORD lastWarningTick = static_cast<DWORD>(-3'600'000);
    /// Cleared by every change of records; `UpdatePrediction` recomputes when it is clear.
    bool predictionUpToDate = false;
    /// The day the lists were computed for; another one makes `UpdatePrediction` recompute, too.
    DateKey computedFor = 0;

    SYSTEMTIME lastValidPeriodStart{};
    bool todayIsBleeding = false;

    // Values are the bits of a 32-bit float. Not saved.
    DayValueList bleedingLevels;
    DayValueList periodProbabilities;
    DayValueList ovulationProbabilities;
    DayValueList pregnancyProbabilities;

    /// Status flags by day, and the arguments of their texts (cycle/day_status.h).
    DayTripleList dayFlags;
    IndexList dayFlagArgs{10};

    /// The bleeding days of discarded periods, value 1.
    DayValueList discardedDays;

    /// What the period search found, for those who report it: the cycles used for the statistics in
    /// date order, how many periods were discarded and how many cycles were invalid.
    CycleRecordList validCycles{10};
    std::int32_t discardedPeriods = 0;
    std::int32_t invalidCycles = 0;

    /// Receives the warnings; null drops them.
    WarningSink* warningSink = nullptr;
};

}  // namespace lunara
