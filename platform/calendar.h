#pragma once

// The proleptic Gregorian calendar, in which the platform counts days from 1 January 1601, the
// first day of a 400-year cycle, to the end of 30827.

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

/// `month` in 1..12.
constexpr int CalendarMonthDays(int year, int month) {
    if (month == 2) {
        return IsLeapYear(year) ? 29 : 28;
    }
    return 30 + ((month + (month >> 3)) & 1);
}

/// Days of the year before its `month`, 1..13.
constexpr int DaysBeforeMonth(int month, bool leap) {
    constexpr int Days[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
    return Days[month - 1] + (leap && month > 2 ? 1 : 0);
}

/// Whether the calendar has that day, and the platform's dates reach it.
constexpr bool IsCalendarDay(int year, int month, int day) {
    return year >= FirstCalendarYear && year <= LastCalendarYear && month >= 1 && month <= 12 &&
           day >= 1 && (day <= 28 || day <= CalendarMonthDays(year, month));
}

/// Days from 1 January 1601 to a day of the calendar.
constexpr std::int32_t DaysSince1601(int year, int month, int day) {
    const int years = year - FirstCalendarYear;
    return 365 * years + years / 4 - years / 100 + years / 400 +
           DaysBeforeMonth(month, IsLeapYear(year)) + day - 1;
}

/// The day that many days after 1 January 1601 (days >= 0).
constexpr CalendarDay CalendarDayAfter1601(std::int32_t days) {
    constexpr int DaysPer400Years = 146'097;
    constexpr int DaysPerCentury = 36'524;
    constexpr int DaysPer4Years = 1'461;
    // The last day of a 400-year or 4-year cycle belongs to its last year, hence the limits of 3.
    const int cycles = days / DaysPer400Years;
    int rest = days % DaysPer400Years;  // [0, 146096]
    const int centuries = rest / DaysPerCentury < 3 ? rest / DaysPerCentury : 3;
    rest -= centuries * DaysPerCentury;
    const int fours = rest / DaysPer4Years;  // [0, 24]
    rest -= fours * DaysPer4Years;
    const int singles = rest / 365 < 3 ? rest / 365 : 3;
    rest -= singles * 365;  // [0, 365]
    const int year = FirstCalendarYear + cycles * 400 + centuries * 100 + fours * 4 + singles;
    const bool leap = IsLeapYear(year);
    int month = rest / 32 + 1;  // the month or the one before it
    if (rest >= DaysBeforeMonth(month + 1, leap)) {
        ++month;
    }
    return {year, month, rest - DaysBeforeMonth(month, leap) + 1};
}

}  // namespace lunara
