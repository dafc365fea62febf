#pragma once

// Dates for tests, and a clock that stands still for one test.

#include <gtest/gtest.h>

#include "platform/clock.h"
#include "records/dates.h"

namespace lunara::test {

/// Midnight of a day that the calendar has, with its day of the week.
inline SYSTEMTIME Day(unsigned year, unsigned month, unsigned day) {
    SYSTEMTIME date{};
    EXPECT_EQ(FromDateKey(MakeDateKey(year, month, day), date), 1);
    return date;
}

/// A date with exactly these fields, be there such a day or not; the time of day is 0:00.
inline SYSTEMTIME RawDate(WORD year, WORD month, WORD dayOfWeek, WORD day) {
    SYSTEMTIME date{};
    date.wYear = year;
    date.wMonth = month;
    date.wDayOfWeek = dayOfWeek;
    date.wDay = day;
    return date;
}

/// Stops the program's clock at noon of a day; the system's time runs again at the end of the
/// scope.
class ClockScope {
  public:
    explicit ClockScope(SYSTEMTIME today) {
        today.wHour = 12;
        SetLocalNow(today);
    }
    ClockScope(const ClockScope&) = delete;
    ClockScope& operator=(const ClockScope&) = delete;
    ~ClockScope() { ReleaseClock(); }
};

}  // namespace lunara::test
