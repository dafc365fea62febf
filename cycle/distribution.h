#pragma once

// The arithmetic of the prediction: from the lengths of the user's valid cycles to the chance of a
// period start on each coming day, and from there to bleeding, ovulation and fertile days.
//
// Pure functions over small arrays of 32-bit floats. Every sum starts at 0 and runs in ascending
// index order; each product is rounded, then added, and the sum rounded. Do not fuse, widen or
// reorder: results are compared bit for bit between targets. docs/predictions.md explains each step
// and works one example by hand.

#include <array>
#include <cfloat>
#include <cstdint>
#include <span>

#include "records/collections.h"

namespace lunara {

static_assert(FLT_EVAL_METHOD == 0, "predictions need 32-bit intermediates");

/// Shortest and longest length of a valid cycle, in days, inclusive.
inline constexpr std::int32_t ShortestCycle = 21;
inline constexpr std::int32_t LongestCycle = 36;

/// Days in a period's profile: the length of the longest valid period.
inline constexpr std::int32_t ProfileDays = LongestPeriod;

/// Days that a prediction covers; day 0 is the last valid period start.
inline constexpr std::int32_t HorizonDays = 365;

/// The days after a period start that ovulation kernels cover: 8..20, from the first kernel entry
/// of the shortest cycle to the last kernel entry of the longest.
inline constexpr std::int32_t FirstOvulationDay = 8;
inline constexpr std::int32_t OvulationDays = 13;

/// [j]: share of the valid cycles that are 21 + j days long.
using LengthShares = std::array<float, LongestCycle - ShortestCycle + 1>;
/// [t]: a value of day t of a period.
using PeriodDays = std::array<float, ProfileDays>;
/// [k]: a value of the day k days after the last valid period start.
using HorizonValues = std::array<float, HorizonDays>;
/// [i]: chance that ovulation lies 8 + i days after a period start.
using OvulationOffsets = std::array<float, OvulationDays>;

/// Chance of a cycle's ovulation by day: entry m belongs to day (length div 2) - 2 + m after the
/// cycle's start. Half a cycle's length is a convention of the calendar method, not a measurement:
/// a cycle of even length ovulates on day length / 2, one of odd length on either of its two middle
/// days.
using OvulationKernel = std::array<float, 5>;
inline constexpr OvulationKernel EvenOvulationKernel = {0, 0, 1.0F, 0, 0};
inline constexpr OvulationKernel OddOvulationKernel = {0, 0, 0.5F, 0.5F, 0};

constexpr const OvulationKernel& OvulationKernelOf(std::int32_t cycleLength) {
    return cycleLength % 2 == 0 ? EvenOvulationKernel : OddOvulationKernel;
}

/// Days from the cycle's start to the day of the kernel's first entry.
constexpr std::int32_t OvulationKernelDay(std::int32_t cycleLength) { return cycleLength / 2 - 2; }

/// Conception weights of the days around an ovulation, a convention of this program: entry j
/// belongs to the day 3 - j days before the ovulation. The day before it counts half; the day
/// itself and the two days after it count in full.
inline constexpr std::array<float, 7> PregnancyKernel = {0, 0, 0.5F, 1.0F, 1.0F, 1.0F, 0};

/// The user's average period over the valid cycles, by day of the period, from 0.
struct PeriodProfile {
    PeriodDays meanLevel{};   // bleeding level of the day
    PeriodDays bleedShare{};  // share of the periods that bleed on the day
};

/// Measures how large a share of the cycles each length has. Takes at least one cycle, with all
/// lengths in 21..36.
LengthShares MeasureLengthShares(std::span<const CycleRecord> validCycles);

/// Fills `starts` with the chance that a period starts on each day, given that none has started in
/// the `daysPassed` (0..36) days since the last one; entry 0 stays 0. False, with `starts`
/// unfinished, when every valid cycle was shorter than `daysPassed`.
bool PredictStarts(const LengthShares& shares, std::int32_t daysPassed, HorizonValues& starts);

/// Spreads `profile` over every possible period start: values[k] is the sum over t of profile[t] *
/// starts[k - t]. Entries before `firstDay` (0..364) are 0.
void SpreadOverPeriod(const PeriodDays& profile, const HorizonValues& starts, std::int32_t firstDay,
                      HorizonValues& values);

/// Averages the ovulation kernels of all cycle lengths, weighted by the lengths' shares.
OvulationOffsets MeasureOvulationOffsets(const LengthShares& shares);

/// Fills `ovulation` with the chance of an ovulation on each day; days 0..7 are 0. Entry 0 of
/// `starts` counts as 1 here, because the last period did start.
void PredictOvulation(const OvulationOffsets& offsets, const HorizonValues& starts,
                      HorizonValues& ovulation);

/// Fills `pregnancy` with the conception weight of each day: the ovulation chances around it,
/// weighted by `PregnancyKernel`. A weight may exceed 1; the first three days are 0.
void PredictPregnancy(const HorizonValues& ovulation, HorizonValues& pregnancy);

}  // namespace lunara
