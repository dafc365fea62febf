#pragma once

#include "diary/user_data.h"

namespace lunara {

/// Makes the whole diary about two years of records, up to and including `today`, which is the
/// twelfth day of an ordinary cycle. The same today gives the same diary, and another day the same
/// diary moved. 0 without memory, or when the diary would begin before 1601.
///
/// Cycle lengths, ovulation days and bleeding levels are one woman's real ones: Fehring et al.,
/// Menstrual Cycle Data, Marquette University, 2012. Temperatures, marks and notes are invented.
int FillSampleDiary(UserData& data, const SYSTEMTIME& today);

}  // namespace lunara
