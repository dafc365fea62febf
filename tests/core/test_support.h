#pragma once

// What the core's tests share: texts, dates, and a clock that is set for one test.

#include <gtest/gtest.h>

#include <string>

#include "platform/clock.h"
#include "platform/text.h"
#include "records/dates.h"

namespace lunara::test {

/// A date whose fields are normalised, day of week included.
inline SYSTEMTIME Day(unsigned year, unsigned month, unsigned day) {
    SYSTEMTIME date{};
    EXPECT_EQ(FromDateKey(MakeDateKey(year, month, day), date), 1);
    return date;
}

/// Fields as given, nothing filled in.
inline SYSTEMTIME RawDate(WORD year, WORD month, WORD dayOfWeek, WORD day) {
    SYSTEMTIME date{};
    date.wYear = year;
    date.wMonth = month;
    date.wDayOfWeek = dayOfWeek;
    date.wDay = day;
    return date;
}

inline std::string Utf8(const WCHAR* text) { return ToUtf8(text); }

/// The clock stands at noon of a day until the end of the scope.
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
