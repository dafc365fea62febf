#pragma once

// Steps between near days without converting them to day numbers and back, which would be most of
// what walking over a diary costs.

#include "records/dates.h"

namespace lunara {

/// Days of the month year << 16 | month << 8, whose month is 1..12.
constexpr DateKey DaysOfMonth(DateKey yearAndMonth) {
    return static_cast<DateKey>(CalendarMonthDays(static_cast<int>(yearAndMonth >> 16),
                                                  static_cast<int>(yearAndMonth >> 8 & 0xFF)));
}

/// The month after year << 16 | month << 8.
constexpr DateKey MonthAfter(DateKey yearAndMonth) {
    const bool isDecember = (yearAndMonth >> 8 & 0xFF) == 12;
    return yearAndMonth + (isDecember ? 0x1'0000 - 0xB00 : 0x100);
}

/// The days after a day, up to four weeks of them.
class DaysAfter {
  public:
    /// A key that is no real day counts as day 0, as everywhere.
    explicit DaysAfter(DateKey start) : key(IsRealDay(start) ? start : KeyOfDayNumber(0)) {
        const DateKey month = key & ~DateKey{0xFF};
        left = static_cast<std::int32_t>(DaysOfMonth(month) - (key & 0xFF));
        beforeNextMonth = MonthAfter(month);
    }

    /// `days` in 0..28.
    DateKey operator[](std::int32_t days) const {
        return days <= left ? key + static_cast<DateKey>(days)
                            : beforeNextMonth + static_cast<DateKey>(days - left);
    }

  private:
    DateKey key;
    std::int32_t left;        // days from `key` to the end of its month
    DateKey beforeNextMonth;  // the key one below that of the next month's first day
};

/// DayNumber(later) - DayNumber(earlier) <= days; `later` is the greater key, 1 <= days <= 28.
inline bool AreWithin(DateKey earlier, DateKey later, DateKey days) {
    if (later == earlier + 1 && (later & 0xFF) - 2 < 27) {
        return true;  // neighbours, or days of a month that does not exist: both count as day 0
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

/// Numbers days that come in date order, mostly near each other, as `DayNumber` does.
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
    static constexpr DateKey NoMonth = 0xFFFF'FFFF;  // its low byte is no month's

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
    DateKey days = 0;              // of that month
    std::int32_t beforeMonth = 0;  // number of the day before it
};

}  // namespace lunara
