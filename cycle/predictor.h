#pragma once

// The prediction: from the recorded bleeding days to past periods and cycles, their statistics, and
// the day-by-day probabilities for up to 365 days after the last valid period start.
//
// docs/predictions.md explains every step. All arithmetic is single precision in the stated order
// and must stay so: results are compared bit for bit between targets.

#include "diary/user_data.h"

namespace lunara {

/// Recomputes everything when records changed since the last call or another day has begun; returns
/// 1. With `showMessages` the composed warning, if any, goes to the data set's warning sink.
int UpdatePrediction(UserData& data, int showMessages);

/// The value stored for the day, 0 when it has none: the expected or recorded bleeding level
/// (0..3), and probabilities in 0..1 (the pregnancy weight may exceed 1).
float GetBleedingLevel(UserData& data, const SYSTEMTIME& date);
float GetPeriodProbability(UserData& data, const SYSTEMTIME& date);
float GetOvulationProbability(UserData& data, const SYSTEMTIME& date);
float GetPregnancyProbability(UserData& data, const SYSTEMTIME& date);

/// 0 when the day belongs to a discarded period, else 1.
int IsBleedingDayCounted(UserData& data, const SYSTEMTIME& date);

/// The earliest (latest) day with a bleeding or temperature record; 0 when there is none, with
/// `date` left alone.
int GetFirstRecordDate(UserData& data, SYSTEMTIME& date);
int GetLastRecordDate(UserData& data, SYSTEMTIME& date);

/// The earliest day of the calendar with a bleeding or temperature record; 0 when there is none,
/// with `date` left alone. A stored 31 February, which counts as day 0 in all arithmetic, would
/// reach back to 1601.
int GetFirstRealRecordDate(UserData& data, SYSTEMTIME& date);

/// Whether a warning may be shown at this tick: more than an hour after the last one. When it may,
/// the tick is remembered. The difference is unsigned, so the tick count's wrap does no harm.
bool TakeWarningTurn(CyclePredictor& state, DWORD tick);

}  // namespace lunara
