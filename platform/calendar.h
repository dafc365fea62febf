#pragma once

// The proleptic Gregorian calendar from 1 January 1601, the first day of a 400-year cycle, to 31
// December 30827: the range in which the platform counts days.

#include <cstdint>

namespace lunara {

inline constexpr int FirstCalendarYear = 1601;
inline constexpr int LastCalendarYear = 30'827;

struct CalendarDay {
    int year;
    int month;
    int day;
};

constexpr bool IsLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// Number of days of the month (1..12).
constexpr int CalendarMonthDays(int year, int month) {
    if (month == 2) {
        return IsLeapYear(year) ? 29 : 28;
    }
    return 30 + ((month + (month >> 3)) & 1);
}

/// Days of the year before the first day of `month`, 1..13; 13 gives the length of the year.
constexpr int DaysBeforeMonth(int month, bool leap) {
    constexpr int Days[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
    return Days[month - 1] + (leap && month > 2 ? 1 : 0);
}

/// Whether the calendar has that day, and it lies in the years 1601..30827.
constexpr bool IsCalendarDay(int year, int month, int day) {
    return year >= FirstCalendarYear && year <= LastCalendarYear && month >= 1 && month <= 12 &&
           day >= 1 && (day <= 28 || day <= CalendarMonthDays(year, month));
}

/// Days from 1 January 1601 to a day for which `IsCalendarDay` is true.
constexpr std::int32_t DaysSince1601(int year, int month, int day) {
    const int years = year - FirstCalendarYear;
    return 365 * years + years / 4 - years / 100 + years / 400 +
           DaysBeforeMonth(month, IsLeapYear(year)) + day - 1;
}

/// The calendar day `days` (>= 0) days after 1 January 1601.
constexpr CalendarDay CalendarDayAfter1601(std::int32_t days) {
    constexpr int DaysPer400Years = 146'097;
    constexpr int DaysPerCentury = 36'524;
    constexpr int DaysPer4Years = 1'461;
    // The quotients for centuries and years are clamped to 3: the last day of a 400-year or 4-year
    // cycle would give 4, but belongs to the cycle's last century or year.
    const int cycles = days / DaysPer400Years;
    int rest = days % DaysPer400Years;  // [0, 146096]
    const int centuries = rest / DaysPerCentury < 3 ? rest / DaysPerCentury : 3;
    rest -= centuries * DaysPerCentury;      // [0, 36524]
    const int fours = rest / DaysPer4Years;  // [0, 24]
    rest -= fours * DaysPer4Years;           // [0, 1460]
    const int singles = rest / 365 < 3 ? rest / 365 : 3;
    rest -= singles * 365;  // [0, 365]
    const int year = FirstCalendarYear + cycles * 400 + centuries * 100 + fours * 4 + singles;
    const bool leap = IsLeapYear(year);
    int month = rest / 32 + 1;  // [1, 12]: the right month, or the one before it
    if (rest >= DaysBeforeMonth(month + 1, leap)) {
        ++month;
    }
    return {year, month, rest - DaysBeforeMonth(month, leap) + 1};
}

}  // namespace lunara
