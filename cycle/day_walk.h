#pragma once

#include "records/dates.h"

namespace lunara {

/// A day that moves on one by one, known by its key. Most steps cost an addition, where converting
/// each day's number would cost a dozen operations.
class DayWalk {
  public:
    /// Starts on the day `dayNumber` days after 1 January 1601 (>= 0).
    explicit DayWalk(std::int32_t dayNumber) : number(dayNumber), key(KeyOfDayNumber(dayNumber)) {}

    DateKey Key() const { return key; }

    void Next() {
        constexpr DateKey LastDayOfEveryMonth = 28;
        ++number;
        key = (key & 0xFF) < LastDayOfEveryMonth ? key + 1 : KeyOfDayNumber(number);
    }

  private:
    std::int32_t number;
    DateKey key;
};

}  // namespace lunara
