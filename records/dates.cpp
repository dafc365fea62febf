#include "records/dates.h"

#include <array>

#include "platform/text.h"

namespace lunara {
namespace {

constexpr std::array<int, 13> DaysBeforeMonth = {0,   31,  59,  90,  120, 151, 181,
                                                 212, 243, 273, 304, 334, 365};
constexpr int DaysPer400Years = 146'097;
constexpr int DaysPerCentury = 36'524;
constexpr int DaysPer4Years = 1'461;
constexpr int FirstYear = 1601;
constexpr int LastYear = 30'827;  // the platform's conversions end here

constexpr WCHAR Weekdays[] = TEXT("Sun Mon Tue Wed Thu Fri Sat ");
constexpr WCHAR Months[] = TEXT("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec ");
constexpr WCHAR MonthsWithComma[] = TEXT("Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec,");
constexpr std::size_t EntryLength = 4;
constexpr WCHAR BlankEntry[] = TEXT("    ");

constexpr bool IsLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr int DaysBefore(int month, bool leap) {
    return DaysBeforeMonth[static_cast<std::size_t>(month) - 1] + (leap && month > 2 ? 1 : 0);
}

/// Asked before every conversion: Wine takes 30 February for 1 March, where the platform refuses
/// it.
bool IsRealDate(int year, int month, int day) {
    if (year < FirstYear || year > LastYear || month < 1 || month > 12 || day < 1) {
        return false;
    }
    const bool leap = IsLeapYear(year);
    return day <= DaysBefore(month + 1, leap) - DaysBefore(month, leap);
}

/// Both halves together; a structure that does not convert counts as 0.
std::int64_t FileTimeUnits(const SYSTEMTIME& date) {
    FILETIME fileTime{};
    if (!IsRealDate(date.wYear, date.wMonth, date.wDay) ||
        ::SystemTimeToFileTime(&date, &fileTime) == 0) {
        return 0;
    }
    return static_cast<std::int64_t>(std::uint64_t{fileTime.dwHighDateTime} << 32 |
                                     fileTime.dwLowDateTime);
}

int FromUnits(std::int64_t units, SYSTEMTIME& date) {
    FILETIME fileTime{};
    fileTime.dwLowDateTime = static_cast<DWORD>(units);
    fileTime.dwHighDateTime = static_cast<DWORD>(units >> 32);
    SYSTEMTIME converted{};
    if (units < 0 || ::FileTimeToSystemTime(&fileTime, &converted) == 0) {
        date = SYSTEMTIME{};
        return 0;
    }
    date = converted;
    return 1;
}

const WCHAR* MonthEntry(WORD month) {
    return month >= 1 && month <= 12 ? Months + EntryLength * (month - 1U) : BlankEntry;
}

void CopyFormatted(WCHAR* text, int length, const WideString& formatted) {
    CopyText(text, static_cast<std::size_t>(length), formatted);
}

}  // namespace

void ToDateKey(const SYSTEMTIME& date, DateKey& key) {
    key = MakeDateKey(date.wYear, date.wMonth, date.wDay);
}

DateKey ToDateKey(const SYSTEMTIME& date) {
    DateKey key = 0;
    ToDateKey(date, key);
    return key;
}

int FromDateKey(DateKey key, SYSTEMTIME& date) {
    date = SYSTEMTIME{};
    date.wYear = static_cast<WORD>(key >> 16);
    date.wMonth = static_cast<WORD>(key >> 8 & 0xFF);
    date.wDay = static_cast<WORD>(key & 0xFF);
    FILETIME fileTime{};
    if (!IsRealDate(date.wYear, date.wMonth, date.wDay) ||
        ::SystemTimeToFileTime(&date, &fileTime) == 0) {
        return 0;
    }
    return ::FileTimeToSystemTime(&fileTime, &date) != 0 ? 1 : 0;
}

int AddDays(const SYSTEMTIME& date, std::int32_t count, SYSTEMTIME& result) {
    return FromUnits(FileTimeUnits(date) + count * UnitsPerDay, result);
}

std::int32_t DaysBetween(SYSTEMTIME a, SYSTEMTIME b) {
    for (SYSTEMTIME* date : {&a, &b}) {
        date->wHour = 0;
        date->wMinute = 0;
        date->wSecond = 0;
        date->wMilliseconds = 0;
    }
    return static_cast<std::int32_t>((FileTimeUnits(a) - FileTimeUnits(b)) / UnitsPerDay);
}

int IsSameDay(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return a.wDay == b.wDay && a.wDayOfWeek == b.wDayOfWeek && a.wMonth == b.wMonth &&
                   a.wYear == b.wYear
               ? 1
               : 0;
}

int IsDateAfter(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    if (a.wYear != b.wYear) {
        return a.wYear > b.wYear ? 1 : 0;
    }
    if (a.wMonth != b.wMonth) {
        return a.wMonth > b.wMonth ? 1 : 0;
    }
    return a.wDay > b.wDay ? 1 : 0;
}

int IsDateBefore(const SYSTEMTIME& a, const SYSTEMTIME& b) { return IsDateAfter(b, a); }

std::int32_t DayNumber(DateKey key) {
    const auto year = static_cast<int>(key >> 16);
    const auto month = static_cast<int>(key >> 8 & 0xFF);
    const auto day = static_cast<int>(key & 0xFF);
    if (!IsRealDate(year, month, day)) {
        return 0;
    }
    const bool leap = IsLeapYear(year);
    const int years = year - FirstYear;
    return 365 * years + years / 4 - years / 100 + years / 400 + DaysBefore(month, leap) + day - 1;
}

DateKey KeyOfDayNumber(std::int32_t number) {
    // The last day of a 400-year or 4-year cycle belongs to its last year, hence the limits of 3.
    const int cycles = number / DaysPer400Years;
    int rest = number % DaysPer400Years;  // [0, 146096]
    const int centuries = rest / DaysPerCentury < 3 ? rest / DaysPerCentury : 3;
    rest -= centuries * DaysPerCentury;
    const int fours = rest / DaysPer4Years;  // [0, 24]
    rest -= fours * DaysPer4Years;
    const int singles = rest / 365 < 3 ? rest / 365 : 3;
    rest -= singles * 365;  // [0, 365]
    const int year = FirstYear + cycles * 400 + centuries * 100 + fours * 4 + singles;
    const bool leap = IsLeapYear(year);
    int month = rest / 32 + 1;  // the month or the one before it
    if (rest >= DaysBefore(month + 1, leap)) {
        ++month;
    }
    return MakeDateKey(static_cast<unsigned>(year), static_cast<unsigned>(month),
                       static_cast<unsigned>(rest - DaysBefore(month, leap) + 1));
}

void FormatDateTime(const SYSTEMTIME& date, WCHAR* text, int length) {
    std::array<WCHAR, 64> rest{};
    FormatText(rest.data(), rest.size(), TEXT("%02d %02d:%02d:%02d %04d"), int{date.wDay},
               int{date.wHour}, int{date.wMinute}, int{date.wSecond}, int{date.wYear});
    WideString formatted(WeekdayEntry(date.wDayOfWeek), EntryLength);
    formatted.append(MonthEntry(date.wMonth), EntryLength);
    formatted.append(rest.data());
    CopyFormatted(text, length, formatted);
}

void FormatMonthDay(const SYSTEMTIME& date, WCHAR* text, int length) {
    std::array<WCHAR, 16> day{};
    FormatText(day.data(), day.size(), TEXT(" %02d"), int{date.wDay});
    WideString formatted(MonthCommaEntry(date.wMonth), EntryLength);
    formatted.append(day.data());
    CopyFormatted(text, length, formatted);
}

void FormatDateStamp(const SYSTEMTIME& date, WCHAR* text) {
    WCHAR month[EntryLength] = {};
    CopyText(month, EntryLength, WideView(MonthEntry(date.wMonth), EntryLength - 1));
    FormatText(text, DateStampCapacity, TEXT("%02d-%s-%02d %02d-%02d"), int{date.wDay}, month,
               int{date.wYear}, int{date.wHour}, int{date.wMinute});
}

const WCHAR* WeekdayEntry(WORD dayOfWeek) {
    return dayOfWeek <= 6 ? Weekdays + EntryLength * dayOfWeek : BlankEntry;
}

const WCHAR* MonthCommaEntry(WORD month) {
    return month >= 1 && month <= 12 ? MonthsWithComma + EntryLength * (month - 1U) : BlankEntry;
}

}  // namespace lunara
