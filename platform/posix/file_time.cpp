#include "platform/calendar.h"
#include "platform/posix/win32_posix.h"

namespace {

constexpr LONGLONG UnitsPerMillisecond = 10'000;  // a unit is 100 ns
constexpr LONGLONG UnitsPerDay = 864'000'000'000;

}  // namespace

BOOL SystemTimeToFileTime(const SYSTEMTIME* systemTime, FILETIME* fileTime) {
    if (!lunara::IsCalendarDay(systemTime->wYear, systemTime->wMonth, systemTime->wDay) ||
        systemTime->wHour > 23 || systemTime->wMinute > 59 || systemTime->wSecond > 59 ||
        systemTime->wMilliseconds > 999) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const LONGLONG days =
        lunara::DaysSince1601(systemTime->wYear, systemTime->wMonth, systemTime->wDay);
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
    auto milliseconds =
        static_cast<int>(units % UnitsPerDay / UnitsPerMillisecond);  // [0, 86'399'999]

    const lunara::CalendarDay day = lunara::CalendarDayAfter1601(static_cast<std::int32_t>(days));
    systemTime->wYear = static_cast<WORD>(day.year);
    systemTime->wMonth = static_cast<WORD>(day.month);
    systemTime->wDay = static_cast<WORD>(day.day);
    systemTime->wDayOfWeek = static_cast<WORD>((days + 1) % 7);  // 1 January 1601 was a Monday
    systemTime->wMilliseconds = static_cast<WORD>(milliseconds % 1000);
    milliseconds /= 1000;
    systemTime->wSecond = static_cast<WORD>(milliseconds % 60);
    milliseconds /= 60;
    systemTime->wMinute = static_cast<WORD>(milliseconds % 60);
    systemTime->wHour = static_cast<WORD>(milliseconds / 60);
    return TRUE;
}
