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
float GetBleedingLevel(const UserData& data, const SYSTEMTIME& date);
float GetPeriodProbability(const UserData& data, const SYSTEMTIME& date);
float GetOvulationProbability(const UserData& data, const SYSTEMTIME& date);
float GetPregnancyProbability(const UserData& data, const SYSTEMTIME& date);

/// 0 when the day belongs to a discarded period, else 1.
int IsBleedingDayCounted(const UserData& data, const SYSTEMTIME& date);

/// The earliest (latest) day with a bleeding or temperature record; 0 when there is none, with
/// `date` left alone. Part of the engine's public operations; the program itself does not call
/// them, because its views start at the first day that the calendar has.
int GetFirstRecordDate(const UserData& data, SYSTEMTIME& date);
int GetLastRecordDate(const UserData& data, SYSTEMTIME& date);

/// The earliest day of the calendar with a bleeding or temperature record; 0 when there is none,
/// with `date` left alone. A stored 31 February, which counts as day 0 in all arithmetic, would
/// reach back to 1601.
int GetFirstRealRecordDate(const UserData& data, SYSTEMTIME& date);

}  // namespace lunara
