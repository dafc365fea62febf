#pragma once

// The prediction: turns the recorded bleeding days into periods and cycles, their statistics, and
// day-by-day probabilities for the 365 days from the last valid period start on.
//
// docs/predictions.md explains every step. All arithmetic is single precision in a fixed order and
// must stay so: results are compared bit for bit between targets.

#include "diary/user_data.h"

namespace lunara {

/// Recomputes the prediction when records changed since the last call or another day has begun;
/// returns 1. With `showMessages` a recomputation sends its warning, if there is one, to the data
/// set's warning sink.
int UpdatePrediction(UserData& data, int showMessages);

/// The value computed for the day by the last `UpdatePrediction`, 0 when it has none: the expected
/// or recorded bleeding level (0..3), or a probability in 0..1. The pregnancy weight may exceed 1.
float GetBleedingLevel(const UserData& data, const SYSTEMTIME& date);
float GetPeriodProbability(const UserData& data, const SYSTEMTIME& date);
float GetOvulationProbability(const UserData& data, const SYSTEMTIME& date);
float GetPregnancyProbability(const UserData& data, const SYSTEMTIME& date);

/// 0 when the day belongs to a discarded period, else 1; a day without a record counts as 1.
int IsBleedingDayCounted(const UserData& data, const SYSTEMTIME& date);

/// Writes the earliest (latest) date with a bleeding or temperature record and returns 1. Returns
/// 0, with `date` left alone, when there is no record. The program itself does not call these: its
/// scroll ranges begin at a real day.
int GetFirstRecordDate(const UserData& data, SYSTEMTIME& date);
int GetLastRecordDate(const UserData& data, SYSTEMTIME& date);

/// Writes the earliest real calendar day with a bleeding or temperature record and returns 1; 0,
/// with `date` left alone, when there is none. Scroll ranges begin here: a stored 31 February,
/// which counts as day 0 in day arithmetic, would make them reach back to 1601.
int GetFirstRealRecordDate(const UserData& data, SYSTEMTIME& date);

}  // namespace lunara
