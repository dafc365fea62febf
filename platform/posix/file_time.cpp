#include <array>

#include "platform/posix/win32_posix.h"

// Proleptic Gregorian days from 1 January 1601, the first day of a 400-year cycle.

namespace {

constexpr LONGLONG UnitsPerMillisecond = 10'000;
constexpr LONGLONG UnitsPerDay = 864'000'000'000;
constexpr int DaysPer400Years = 146'097;
constexpr int DaysPer100Years = 36'524;
constexpr int DaysPer4Years = 1'461;
constexpr int FirstYear = 1601;
constexpr int LastYear = 30827;

constexpr std::array<int, 13> DaysBeforeMonth = {0,   31,  59,  90,  120, 151, 181,
                                                 212, 243, 273, 304, 334, 365};

bool IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int DaysBefore(int month, bool leap) {
    return DaysBeforeMonth[static_cast<std::size_t>(month) - 1] + (leap && month > 2 ? 1 : 0);
}

int DaysIn(int month, bool leap) { return DaysBefore(month + 1, leap) - DaysBefore(month, leap); }

}  // namespace

BOOL SystemTimeToFileTime(const SYSTEMTIME* systemTime, FILETIME* fileTime) {
    const int year = systemTime->wYear;
    const int month = systemTime->wMonth;
    const int day = systemTime->wDay;
    if (year < FirstYear || year > LastYear || month < 1 || month > 12 || day < 1 ||
        day > DaysIn(month, IsLeapYear(year)) || systemTime->wHour > 23 ||
        systemTime->wMinute > 59 || systemTime->wSecond > 59 || systemTime->wMilliseconds > 999) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const int years = year - FirstYear;
    const LONGLONG days = LONGLONG{365} * years + years / 4 - years / 100 + years / 400 +
                          DaysBefore(month, IsLeapYear(year)) + day - 1;
    const LONGLONG milliseconds =
        ((LONGLONG{systemTime->wHour} * 60 + systemTime->wMinute) * 60 + systemTime->wSecond) *
            1000 +
        systemTime->wMilliseconds;
    const auto units =
        static_cast<ULONGLONG>(days * UnitsPerDay + milliseconds * UnitsPerMillisecond);
    fileTime->dwLowDateTime = static_cast<DWORD>(units);
    fileTime->dwHighDateTime = static_cast<DWORD>(units >> 32);
    return TRUE;
}

BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime) {
    if ((fileTime->dwHighDateTime & 0x80000000) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const auto units =
        static_cast<LONGLONG>(ULONGLONG{fileTime->dwHighDateTime} << 32 | fileTime->dwLowDateTime);
    const LONGLONG days = units / UnitsPerDay;
    auto milliseconds = static_cast<int>(units % UnitsPerDay / UnitsPerMillisecond);

    // The last day of a 400-year or 4-year cycle belongs to its last year, hence the minimum.
    const auto smaller = [](int a, int b) { return a < b ? a : b; };
    const LONGLONG cycles = days / DaysPer400Years;
    auto rest = static_cast<int>(days % DaysPer400Years);  // [0, 146096]
    const int centuries = smaller(rest / DaysPer100Years, 3);
    rest -= centuries * DaysPer100Years;
    const int fours = rest / DaysPer4Years;  // [0, 24]
    rest -= fours * DaysPer4Years;
    const int single = smaller(rest / 365, 3);
    rest -= single * 365;                                          // [0, 365]
    const int yearOfCycle = centuries * 100 + fours * 4 + single;  // [0, 399]
    const LONGLONG year = FirstYear + cycles * 400 + yearOfCycle;
    const bool leap = IsLeapYear(static_cast<int>(year));
    int month = 1;
    while (month < 12 && rest >= DaysBefore(month + 1, leap)) {
        ++month;
    }

    systemTime->wYear = static_cast<WORD>(year);
    systemTime->wMonth = static_cast<WORD>(month);
    systemTime->wDay = static_cast<WORD>(rest - DaysBefore(month, leap) + 1);
    systemTime->wDayOfWeek = static_cast<WORD>((days + 1) % 7);  // 1 January 1601: a Monday
    systemTime->wMilliseconds = static_cast<WORD>(milliseconds % 1000);
    milliseconds /= 1000;
    systemTime->wSecond = static_cast<WORD>(milliseconds % 60);
    milliseconds /= 60;
    systemTime->wMinute = static_cast<WORD>(milliseconds % 60);
    systemTime->wHour = static_cast<WORD>(milliseconds / 60);
    return TRUE;
}
