#pragma once

// Days. A day is a `DateKey` in records and files and a SYSTEMTIME between views, dialogs and the
// data set; a span of days is a signed 32-bit count. All functions are free of state.
//
// Day arithmetic counts days from 1 January 1601 in the proleptic Gregorian calendar. A SYSTEMTIME
// or key that names no real day (31 February, the all-zero structure) counts as day 0.

#include <cstdint>

#include "platform/calendar.h"
#include "platform/win32.h"

namespace lunara {

/// year << 16 | month << 8 | day of month. Integer order is date order.
using DateKey = std::uint32_t;

/// 100 ns units of one day.
inline constexpr std::int64_t UnitsPerDay = 864'000'000'000;

constexpr DateKey MakeDateKey(unsigned year, unsigned month, unsigned day) {
    return year << 16 | month << 8 | day;
}

/// Whether the calendar has that day and day numbers know it: 31 February is a key like any other,
/// but no day.
constexpr bool IsRealDay(DateKey key) {
    return IsCalendarDay(static_cast<int>(key >> 16), static_cast<int>(key >> 8 & 0xFF),
                         static_cast<int>(key & 0xFF));
}

/// Years of the days that data files and texts may name, both ends included.
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

/// The fields other than year, month and day are ignored; nothing is checked.
void ToDateKey(const SYSTEMTIME& date, DateKey& key);
DateKey ToDateKey(const SYSTEMTIME& date);

/// Fills the whole structure, day of week included, with a time of day of zero. Returns 0 for a key
/// that names no real day of 1601 or later; the fields then hold the key's parts and day of week 0.
int FromDateKey(DateKey key, SYSTEMTIME& date);

/// `result` = `date` + `count` days with the time of day of `date`; they may be the same object.
/// Returns 0 when the sum lies before 1601 or after 30827; `result` is then all zero.
int AddDays(const SYSTEMTIME& date, std::int32_t count, SYSTEMTIME& result);

/// Whole days from b to a, negative when a lies before b; the time of day does not count.
std::int32_t DaysBetween(SYSTEMTIME a, SYSTEMTIME b);

/// Day, day of week, month and year are all equal. The day of week is compared on purpose: pass
/// dates that came through `FromDateKey` or `AddDays`, not ones filled by hand.
int IsSameDay(const SYSTEMTIME& a, const SYSTEMTIME& b);

/// a is later (earlier) than b on year, month, day.
int IsDateAfter(const SYSTEMTIME& a, const SYSTEMTIME& b);
int IsDateBefore(const SYSTEMTIME& a, const SYSTEMTIME& b);

/// Days from 1 January 1601 to the key's day; 0 for a key that names no real day. For keys that do,
/// DayNumber(a) - DayNumber(b) is `DaysBetween` of the two days, without the conversions.
std::int32_t DayNumber(DateKey key);

/// The key of the day that many days after 1 January 1601 (number >= 0).
DateKey KeyOfDayNumber(std::int32_t number);

/// "Mon Jan 02 09:05:07 2006", cut at `length` characters, of which the last is always the
/// terminator (length >= 1). Abbreviations are English, whatever the locale. A month outside 1..12
/// or a day of week outside 0..6 prints blanks in its place. One of the three texts that a day has;
/// the program itself does not call it.
void FormatDateTime(const SYSTEMTIME& date, WCHAR* text, int length);

/// "Jan, 02": the comma is part of the month's entry. Cut like `FormatDateTime`.
void FormatMonthDay(const SYSTEMTIME& date, WCHAR* text, int length);

/// Longest result of `FormatDateStamp` with its terminator, for any field values.
inline constexpr int DateStampCapacity = 34;

/// "02-Jan-2006 09-05", which can be part of a file name. `text` must hold `DateStampCapacity`.
void FormatDateStamp(const SYSTEMTIME& date, WCHAR* text);

/// The three-letter weekday with its blank ("Mon ") and the month's four characters with its comma
/// ("Jan,"), or blanks when the number is out of range. Not terminated: four characters each.
const WCHAR* WeekdayEntry(WORD dayOfWeek);
const WCHAR* MonthCommaEntry(WORD month);

}  // namespace lunara
