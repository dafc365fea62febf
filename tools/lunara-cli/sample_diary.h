#pragma once

#include "diary/user_data.h"

namespace lunara {

/// Fills an empty diary with about two years of records up to and including `today`, which is the
/// twelfth day of an ordinary cycle. The result depends on `today` alone; another day gives the
/// same diary, moved. Returns 0 when memory is short or the diary would begin before 1601; else 1.
///
/// Cycle lengths, ovulation days and bleeding levels are one woman's real ones: Fehring et al.,
/// Menstrual Cycle Data, Marquette University, 2012. Temperatures, marks and notes are invented.
int FillSampleDiary(UserData& data, const SYSTEMTIME& today);

}  // namespace lunara
