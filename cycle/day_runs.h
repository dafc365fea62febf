#pragma once

// Runs of days: a bleeding, the days of a possible ovulation, the fertile days around it.
// Neighbouring days of a run lie at most a given number of days apart.

#include <vector>

#include "records/collections.h"

namespace lunara {

/// A closed range of days; `first` equals `last` for a run of one day.
struct DayRun {
    DateKey first;
    DateKey last;
};

using DayRuns = std::vector<DayRun>;

/// Runs, in date order, that the prediction collects while it fills the lists of the past.
/// `MarkDays` extends them instead of searching those lists again.
struct PastRuns {
    DayRuns bleeding;
    DayRuns ovulation;
    DayRuns pregnancy;
};

/// Sorts `list` and completes `runs` to all of its runs, in date order. Days at most `largestGap`
/// (1..28) days apart belong to one run, whatever their values.
/// Keeps the runs that end before `known`, which must cover the first days of the list exactly;
/// drops the others and finds them anew. An empty `runs` is always right.
void CompleteRuns(DayValueList& list, DateKey largestGap, DateKey known, DayRuns& runs);

}  // namespace lunara
