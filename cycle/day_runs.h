#pragma once

// Stretches of days that belong together: a bleeding, the days of a possible ovulation.

#include <vector>

#include "records/collections.h"

namespace lunara {

/// The first and the last day of a stretch; the same for one day.
struct DayRun {
    DateKey first;
    DateKey last;
};

using DayRuns = std::vector<DayRun>;

/// The runs of the past as they were found on the way, so that marking need not look for them
/// again.
struct PastRuns {
    DayRuns bleeding;
    DayRuns ovulation;
    DayRuns pregnancy;
};

/// Makes `runs` those of all days of `list`, whatever their values: days at most `largestGap`
/// (1..28) apart belong to one run. Of the runs that are there already, those that end before
/// `known` must be the first ones of the list; the others are found anew.
void CompleteRuns(DayValueList& list, DateKey largestGap, DateKey known, DayRuns& runs);

}  // namespace lunara
