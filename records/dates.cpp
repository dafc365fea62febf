#include "records/dates.h"

#include <array>

#include "platform/text.h"

namespace lunara {
namespace {

/// Days from 1 January 1601 to 31 December 30827, the range of the platform's dates.
constexpr std::int64_t DaysOfPlatform = 10'674'942;

constexpr WCHAR Weekdays[] = TEXT("Sun Mon Tue Wed Thu Fri Sat ");
constexpr WCHAR Months[] = TEXT("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec ");
constexpr WCHAR MonthsWithComma[] = TEXT("Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec,");
constexpr std::size_t EntryLength = 4;
constexpr WCHAR BlankEntry[] = TEXT("    ");

constexpr std::int64_t UnitsPerMillisecond = 10'000;

/// Time in 100 ns units since 1 January 1601; 0 for a structure that names no real moment. Computed
/// here and not by the platform, because Wine converts 29 February of a common year to 1 March, and
/// results must be the same everywhere.
std::int64_t UnitsOf(const SYSTEMTIME& date) {
    const DateKey key = ToDateKey(date);
    if (!IsRealDay(key) || date.wHour > 23 || date.wMinute > 59 || date.wSecond > 59 ||
        date.wMilliseconds > 999) {
        return 0;
    }
    const std::int64_t seconds = (std::int64_t{date.wHour} * 60 + date.wMinute) * 60 + date.wSecond;
    return DayNumber(key) * UnitsPerDay +
           (seconds * 1000 + date.wMilliseconds) * UnitsPerMillisecond;
}

/// Fills `date` with the day `days` after 1 January 1601 and the time of day `units` * 100 ns, less
/// than a day. Returns 0, with `date` all zero, when the day lies outside 1601..30827.
int FromDaysAndUnits(std::int64_t days, std::int64_t units, SYSTEMTIME& date) {
    date = SYSTEMTIME{};
    if (days < 0 || days >= DaysOfPlatform) {
        return 0;
    }
    const DateKey key = KeyOfDayNumber(static_cast<std::int32_t>(days));
    date.wYear = static_cast<WORD>(key >> 16);
    date.wMonth = static_cast<WORD>(key >> 8 & 0xFF);
    date.wDay = static_cast<WORD>(key & 0xFF);
    date.wDayOfWeek = static_cast<WORD>((days + 1) % 7);  // 1 January 1601 was a Monday
    auto rest = static_cast<std::int32_t>(units / UnitsPerMillisecond);
    date.wMilliseconds = static_cast<WORD>(rest % 1000);
    rest /= 1000;  // seconds, [0, 86399]
    date.wSecond = static_cast<WORD>(rest % 60);
    date.wMinute = static_cast<WORD>(rest / 60 % 60);
    date.wHour = static_cast<WORD>(rest / 3600);
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
    if (!IsRealDay(key)) {
        return 0;
    }
    date.wDayOfWeek = static_cast<WORD>((DayNumber(key) + 1) % 7);
    return 1;
}

int AddDays(const SYSTEMTIME& date, std::int32_t count, SYSTEMTIME& result) {
    // Days and time of day are kept apart: `count` days in units could overflow 64 bits.
    const std::int64_t units = UnitsOf(date);
    return FromDaysAndUnits(units / UnitsPerDay + count, units % UnitsPerDay, result);
}

std::int32_t DaysBetween(SYSTEMTIME a, SYSTEMTIME b) {
    for (SYSTEMTIME* date : {&a, &b}) {
        date->wHour = 0;
        date->wMinute = 0;
        date->wSecond = 0;
        date->wMilliseconds = 0;
    }
    return static_cast<std::int32_t>((UnitsOf(a) - UnitsOf(b)) / UnitsPerDay);
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
    if (!IsRealDay(key)) {
        return 0;
    }
    return DaysSince1601(static_cast<int>(key >> 16), static_cast<int>(key >> 8 & 0xFF),
                         static_cast<int>(key & 0xFF));
}

DateKey KeyOfDayNumber(std::int32_t number) {
    const CalendarDay day = CalendarDayAfter1601(number);
    return MakeDateKey(static_cast<unsigned>(day.year), static_cast<unsigned>(day.month),
                       static_cast<unsigned>(day.day));
}

void FormatDateTime(const SYSTEMTIME& date, WCHAR* text, int length) {
    std::array<WCHAR, 64> rest{};
    FormatText(rest.data(), rest.size(), TEXT("%02d %02d:%02d:%02d %04d"), int{date.wDay},
               int{date.wHour}, int{date.wMinute}, int{date.wSecond}, int{date.wYear});
    WideString formatted(WeekdayNameWithBlank(date.wDayOfWeek), EntryLength);
    formatted.append(MonthEntry(date.wMonth), EntryLength);
    formatted.append(rest.data());
    CopyFormatted(text, length, formatted);
}

void FormatMonthDay(const SYSTEMTIME& date, WCHAR* text, int length) {
    std::array<WCHAR, 16> day{};
    FormatText(day.data(), day.size(), TEXT(" %02d"), int{date.wDay});
    WideString formatted(MonthNameWithComma(date.wMonth), EntryLength);
    formatted.append(day.data());
    CopyFormatted(text, length, formatted);
}

void FormatDateStamp(const SYSTEMTIME& date, WCHAR* text) {
    WCHAR month[EntryLength] = {};
    CopyText(month, EntryLength, WideView(MonthEntry(date.wMonth), EntryLength - 1));
    FormatText(text, DateStampCapacity, TEXT("%02d-%s-%02d %02d-%02d"), int{date.wDay}, month,
               int{date.wYear}, int{date.wHour}, int{date.wMinute});
}

const WCHAR* WeekdayNameWithBlank(WORD dayOfWeek) {
    return dayOfWeek <= 6 ? Weekdays + EntryLength * dayOfWeek : BlankEntry;
}

const WCHAR* MonthNameWithComma(WORD month) {
    return month >= 1 && month <= 12 ? MonthsWithComma + EntryLength * (month - 1U) : BlankEntry;
}

}  // namespace lunara
