#pragma once

// Day status flags: what is special about a day (first bleeding day, cycle start, ...), and the
// text that says so. The text of bit i is string resource 5 + i.

#include <initializer_list>

#include "cycle/day_runs.h"
#include "cycle/predictor.h"

namespace lunara {

enum DayStatusFlags : std::uint32_t {
    DAY_CYCLE_START = 0x1,
    DAY_CYCLE_LENGTHS = 0x2,  // text takes period length and cycle length, days
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

/// All bleeding bits, recorded and possible.
inline constexpr std::uint32_t BleedingStatusBits = 0x1F8;

/// Sets the flags of one day to (flags & ~clearBits) | setBits; a day without an entry starts with
/// no flags. `arguments`, unless empty, replace the stored printf arguments of the day's status
/// text. When memory is short, the flags do not change.
void SetDayFlags(CyclePredictor& state, std::uint32_t setBits, std::uint32_t clearBits,
                 DateKey date, std::initializer_list<std::int32_t> arguments = {});

/// Fills `state.dayFlags` and the arguments of its texts from the computed lists and the valid
/// cycles. `runs` may hold the lists' runs before the last valid period start, to save searching
/// for them (see `CompleteRuns`).
void MarkDays(CyclePredictor& state, const SYSTEMTIME& today, PastRuns runs = {});

/// Writes the texts of the day's bits inside `mask`, lowest bit first, with their arguments filled
/// in. Returns 0 with an empty text when the day has no such bit, or when the result does not fit
/// into `textSize` (>= 1) units, terminator included; else 1.
int GetDayStatusText(const UserData& data, const SYSTEMTIME& date, WCHAR* text, int textSize,
                     std::uint32_t mask);

/// Rewrites printf placeholders as the numbered inserts of FormatMessage: the n-th "%d" becomes
/// "%n!d!"; "%%" stays. Cuts the result at `capacity` units, terminator included. Returns false
/// when the text ends inside a placeholder; `target` is then a copy of `source`.
bool NumberPlaceholders(const WCHAR* source, WCHAR* target, int capacity);

}  // namespace lunara
