#pragma once

// Steps between near days on date keys alone. Walks over a diary use it because converting every
// key to a day number and back would be most of their cost.

#include "records/dates.h"

namespace lunara {

/// Number of days of a month, given as year << 16 | month << 8 with month in 1..12.
constexpr DateKey DaysOfMonth(DateKey yearAndMonth) {
    return static_cast<DateKey>(CalendarMonthDays(static_cast<int>(yearAndMonth >> 16),
                                                  static_cast<int>(yearAndMonth >> 8 & 0xFF)));
}

/// The month that follows `yearAndMonth`; both are year << 16 | month << 8 with month in 1..12.
constexpr DateKey MonthAfter(DateKey yearAndMonth) {
    const bool isDecember = (yearAndMonth >> 8 & 0xFF) == 12;
    return yearAndMonth + (isDecember ? 0x1'0000 - 0xB00 : 0x100);
}

/// Keys of the days up to 28 days after a start day. A range that short crosses at most one end of
/// a month.
class DaysAfter {
  public:
    /// A key that names no real day counts as day 0 (1 January 1601), as in all day arithmetic.
    explicit DaysAfter(DateKey start) : key(IsRealDay(start) ? start : KeyOfDayNumber(0)) {
        const DateKey month = key & ~DateKey{0xFF};
        left = static_cast<std::int32_t>(DaysOfMonth(month) - (key & 0xFF));
        beforeNextMonth = MonthAfter(month);
    }

    /// The key of the day `days` (0..28) days after the start.
    DateKey operator[](std::int32_t days) const {
        return days <= left ? key + static_cast<DateKey>(days)
                            : beforeNextMonth + static_cast<DateKey>(days - left);
    }

  private:
    DateKey key;
    std::int32_t left;        // days from `key` to the end of its month
    DateKey beforeNextMonth;  // key of the next month's first day, less 1
};

/// Whether `later` comes at most `days` (1..28) days after `earlier`, exactly as the difference of
/// their day numbers says. `later` must be the greater key.
inline bool AreWithin(DateKey earlier, DateKey later, DateKey days) {
    if (later == earlier + 1 && (later & 0xFF) - 2 < 27) {
        return true;  // adjacent days, or both in a month that does not exist and so both day 0
    }
    if (!IsRealDay(earlier) || !IsRealDay(later)) {
        return DayNumber(later) - DayNumber(earlier) <= static_cast<std::int32_t>(days);
    }
    const DateKey month = earlier & ~DateKey{0xFF};
    const DateKey laterMonth = later & ~DateKey{0xFF};
    if (laterMonth == month) {
        return later - earlier <= days;
    }
    return laterMonth == MonthAfter(month) &&
           DaysOfMonth(month) - (earlier & 0xFF) + (later & 0xFF) <= days;
}

/// Converts keys to day numbers as `DayNumber` does. Fast when each key lies in the month of the
/// one before it or in the next month; right in any order.
class DayNumbering {
  public:
    std::int32_t Next(DateKey key) {
        const DateKey day = key & 0xFF;
        const DateKey monthOfKey = key - day;
        if (monthOfKey != month) {
            if (monthOfKey != MonthAfter(month) || day - 1 >= 28 || month == NoMonth) {
                return Convert(key);
            }
            beforeMonth += static_cast<std::int32_t>(days);
            EnterMonth(monthOfKey);
        }
        return day - 1 < days ? beforeMonth + static_cast<std::int32_t>(day) : 0;
    }

  private:
    static constexpr DateKey NoMonth = 0xFFFF'FFFF;  // sentinel: a month's low byte is 0

    std::int32_t Convert(DateKey key) {
        const std::int32_t number = DayNumber(key);
        if (number > 0) {
            beforeMonth = number - static_cast<std::int32_t>(key & 0xFF);
            EnterMonth(key & ~DateKey{0xFF});
        }
        return number;
    }

    void EnterMonth(DateKey yearAndMonth) {
        month = yearAndMonth;
        days = DaysOfMonth(month);
    }

    DateKey month = NoMonth;       // year << 16 | month << 8 of the last real day
    DateKey days = 0;              // in `month`; 0 before the first real day
    std::int32_t beforeMonth = 0;  // day number of the last day before `month`
};

}  // namespace lunara
