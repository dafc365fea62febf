#pragma once

// Day status flags: what is special about a day (first bleeding day, cycle start, ...), and the
// text that says so. Bit i has the text of string 5 + i.

#include <initializer_list>

#include "cycle/day_runs.h"
#include "cycle/predictor.h"

namespace lunara {

enum DayStatusFlags : std::uint32_t {
    DAY_CYCLE_START = 0x1,
    DAY_CYCLE_LENGTHS = 0x2,  // two arguments: period length, cycle length
    DAY_PERIOD_END = 0x4,
    DAY_BLEEDING = 0x8,
    DAY_BLEEDING_FIRST = 0x10,
    DAY_BLEEDING_END = 0x20,
    DAY_BLEEDING_POSSIBLE = 0x40,
    DAY_BLEEDING_POSSIBLE_FIRST = 0x80,
    DAY_BLEEDING_POSSIBLE_LAST = 0x100,
    DAY_OVULATION = 0x200,
    DAY_OVULATION_FIRST = 0x400,
    DAY_OVULATION_END = 0x800,
    DAY_OVULATION_POSSIBLE = 0x1000,
    DAY_OVULATION_POSSIBLE_FIRST = 0x2000,
    DAY_OVULATION_POSSIBLE_LAST = 0x4000,
    DAY_PREGNANCY = 0x8000,         // never set
    DAY_PREGNANCY_FIRST = 0x10000,  // never set
    DAY_PREGNANCY_END = 0x20000,    // never set
    DAY_PREGNANCY_POSSIBLE = 0x40000,
    DAY_PREGNANCY_POSSIBLE_FIRST = 0x80000,
    DAY_PREGNANCY_POSSIBLE_LAST = 0x100000,
    DAY_PREGNANCY_HIGHLY_PROBABLE = 0x200000,
    DAY_MAY_BE_PREGNANT = 0x400000,
    DAY_SEE_DOCTOR = 0x800000,
    DAY_PREDICTION_IMPOSSIBLE = 0x1000000,  // never set, but part of the views' masks
};

/// All bleeding bits.
inline constexpr std::uint32_t BleedingStatusBits = 0x1F8;

/// Marks one day: flags = (flags without clearBits) | setBits; for a day without an entry just
/// setBits. Arguments, when there are any, become the arguments of the day's text.
void SetDayFlags(CyclePredictor& state, std::uint32_t setBits, std::uint32_t clearBits,
                 DateKey date, std::initializer_list<std::int32_t> arguments = {});

/// Marks all days from the computed lists and the valid cycles of `state`. `runs` may hold what is
/// known of the lists' runs before the last valid period start.
void MarkDays(CyclePredictor& state, const SYSTEMTIME& today, PastRuns runs = {});

/// The texts of the day's bits inside `mask`, in bit order, with their arguments filled in. Returns
/// 0 with an empty text when there are none or they do not fit into `textSize` characters (>= 1).
int GetDayStatusText(const UserData& data, const SYSTEMTIME& date, WCHAR* text, int textSize,
                     std::uint32_t mask);

/// Rewrites printf placeholders as the numbered inserts of FormatMessage: the n-th "%d" becomes
/// "%n!d!"; "%%" stays. At most `capacity` units with the terminator; false, with `target` a copy
/// of `source`, when the text ends inside a placeholder.
bool NumberPlaceholders(const WCHAR* source, WCHAR* target, int capacity);

}  // namespace lunara
