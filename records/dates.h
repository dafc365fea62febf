#pragma once

// Days. Records and files hold a day as a `DateKey`; views, dialogs and the data set exchange it as
// a SYSTEMTIME; a span of days is a signed 32-bit count. All functions are stateless.
//
// Day arithmetic counts days from 1 January 1601 in the proleptic Gregorian calendar. A SYSTEMTIME
// or key that names no real day (31 February, the all-zero structure) counts as day 0.

#include <cstdint>

#include "platform/calendar.h"
#include "platform/win32.h"

namespace lunara {

/// year << 16 | month << 8 | day of month. Integer order is date order.
using DateKey = std::uint32_t;

/// 100 ns units in one day.
inline constexpr std::int64_t UnitsPerDay = 864'000'000'000;

constexpr DateKey MakeDateKey(unsigned year, unsigned month, unsigned day) {
    return year << 16 | month << 8 | day;
}

/// Whether the key names a calendar day of the years 1601..30827. 31 February is a key like any
/// other, but no real day.
constexpr bool IsRealDay(DateKey key) {
    return IsCalendarDay(static_cast<int>(key >> 16), static_cast<int>(key >> 8 & 0xFF),
                         static_cast<int>(key & 0xFF));
}

/// First and last year, both valid, of a day in a data file or in an imported text.
inline constexpr unsigned FirstRecordYear = FirstCalendarYear;
inline constexpr unsigned LastRecordYear = 2500;

/// Whether a data file may hold the day: any day 1 to 31 of any month of those years. Ranges only:
/// a 31 February is stored and read like any other day.
constexpr bool IsRecordDate(DateKey key) {
    const unsigned year = key >> 16;
    const unsigned month = key >> 8 & 0xFF;
    const unsigned day = key & 0xFF;
    return day >= 1 && day <= 31 && month >= 1 && month <= 12 && year >= FirstRecordYear &&
           year <= LastRecordYear;
}

/// Builds the key from year, month and day. Ignores all other fields and checks nothing.
void ToDateKey(const SYSTEMTIME& date, DateKey& key);
DateKey ToDateKey(const SYSTEMTIME& date);

/// Fills all of `date`, day of week included, with a time of day of zero. Returns 0 for a key that
/// names no real day of 1601..30827; year, month and day then hold the key's parts and the day of
/// week is 0.
int FromDateKey(DateKey key, SYSTEMTIME& date);

/// Sets `result` to `date` + `count` days with the time of day of `date`; both may be the same
/// object. Returns 0, with `result` all zero, when the sum lies before 1601 or after 30827.
int AddDays(const SYSTEMTIME& date, std::int32_t count, SYSTEMTIME& result);

/// Whole days from `b` to `a`, negative when `a` is earlier. Ignores the time of day.
std::int32_t DaysBetween(SYSTEMTIME a, SYSTEMTIME b);

/// Returns 1 when day, day of week, month and year are equal. The day of week is compared on
/// purpose: pass dates that came through `FromDateKey` or `AddDays`, not ones filled by hand.
int IsSameDay(const SYSTEMTIME& a, const SYSTEMTIME& b);

/// Returns 1 when `a` is later (earlier) than `b`, by year, month and day only.
int IsDateAfter(const SYSTEMTIME& a, const SYSTEMTIME& b);
int IsDateBefore(const SYSTEMTIME& a, const SYSTEMTIME& b);

/// Days from 1 January 1601 to the key's day; 0 for a key that names no real day. For real days
/// DayNumber(a) - DayNumber(b) equals `DaysBetween` and is cheaper.
std::int32_t DayNumber(DateKey key);

/// The key of the day `number` (>= 0) days after 1 January 1601.
DateKey KeyOfDayNumber(std::int32_t number);

/// Writes "Mon Jan 02 09:05:07 2006", cut to `length` (>= 1) units, terminator included. Names are
/// English in every locale. A month outside 1..12 or a day of week outside 0..6 prints as blanks.
void FormatDateTime(const SYSTEMTIME& date, WCHAR* text, int length);

/// Writes "Jan, 02", cut to `length` (>= 1) units, terminator included. A month outside 1..12
/// prints as blanks in place of its name and the comma.
void FormatMonthDay(const SYSTEMTIME& date, WCHAR* text, int length);

/// Units that `FormatDateStamp` needs at most, terminator included, for any field values.
inline constexpr int DateStampCapacity = 34;

/// Writes "02-Jan-2006 09-05", which is valid in a file name. `text` must hold `DateStampCapacity`
/// units.
void FormatDateStamp(const SYSTEMTIME& date, WCHAR* text);

/// Four characters without a terminator: the weekday 0..6, from Sunday, and a blank ("Mon "). All
/// blanks for other numbers.
const WCHAR* WeekdayNameWithBlank(WORD dayOfWeek);
/// Four characters without a terminator: the month 1..12 and a comma ("Jan,"). All blanks for other
/// numbers.
const WCHAR* MonthNameWithComma(WORD month);

}  // namespace lunara
