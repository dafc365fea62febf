#include "cycle/day_runs.h"

#include <algorithm>

#include "cycle/day_step.h"

namespace lunara {

void CompleteRuns(DayValueList& list, DateKey largestGap, DateKey known, DayRuns& runs) {
    list.Sort();
    while (!runs.empty() && runs.back().last >= known) {
        runs.pop_back();
    }
    const DayValue* next = list.begin();
    if (!runs.empty()) {
        const auto isEarlier = [](DateKey date, const DayValue& day) { return date < day.date; };
        next = std::upper_bound(list.begin(), list.end(), runs.back().last, isEarlier);
    }
    for (; next != list.end(); ++next) {
        if (!runs.empty() && AreWithin(runs.back().last, next->date, largestGap)) {
            runs.back().last = next->date;
        } else {
            runs.push_back({next->date, next->date});
        }
    }
}

}  // namespace lunara
