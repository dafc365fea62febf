#pragma once

// The arithmetic of the prediction: from the lengths of the user's own valid cycles to the chance
// that a period starts on a coming day, and from there to bleeding, ovulation and fertile days.
//
// Pure functions over small arrays of 32-bit floats. Every sum starts at 0 and runs through its
// index upwards, each product rounded, then added and rounded; nothing may be fused, widened or
// reordered, because results are compared bit for bit between targets. docs/predictions.md
// explains each step and repeats one by hand.

#include <array>
#include <cfloat>
#include <cstdint>
#include <span>

#include "records/collections.h"

namespace lunara {

static_assert(FLT_EVAL_METHOD == 0, "predictions need 32-bit intermediates");

/// Lengths of a valid cycle, in days, both included.
inline constexpr std::int32_t ShortestCycle = 21;
inline constexpr std::int32_t LongestCycle = 36;

/// Days that a period's profile covers.
inline constexpr std::int32_t ProfileDays = LongestPeriod;

/// Days that a prediction covers, from the last valid period start on.
inline constexpr std::int32_t HorizonDays = 365;

/// Days after a period start on which ovulation can lie: from the kernel of the shortest cycle's
/// first entry to the kernel of the longest cycle's last.
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

/// Where a cycle's ovulation lies: entry m belongs to day (length div 2) - 2 + m after its start.
/// Half a cycle's length is a convention of the calendar method, not a measurement: a cycle of even
/// length ovulates on day length / 2, one of odd length on either of its two middle days.
using OvulationKernel = std::array<float, 5>;
inline constexpr OvulationKernel EvenOvulationKernel = {0, 0, 1.0F, 0, 0};
inline constexpr OvulationKernel OddOvulationKernel = {0, 0, 0.5F, 0.5F, 0};

constexpr const OvulationKernel& OvulationKernelOf(std::int32_t cycleLength) {
    return cycleLength % 2 == 0 ? EvenOvulationKernel : OddOvulationKernel;
}

/// Day of the kernel's first entry after a period start.
constexpr std::int32_t OvulationKernelDay(std::int32_t cycleLength) { return cycleLength / 2 - 2; }

/// The weights of the days around an ovulation for conception: entry j belongs to the day 3 - j
/// days before it, so that the day before counts half and the day itself and the two days after it
/// in full.
inline constexpr std::array<float, 7> PregnancyKernel = {0, 0, 0.5F, 1.0F, 1.0F, 1.0F, 0};

/// What a period of this user looks like on average over her valid cycles.
struct PeriodProfile {
    PeriodDays meanLevel{};   // bleeding level of the day
    PeriodDays bleedShare{};  // share of the periods that bleed on the day
};

/// The shares of the lengths, all within 21..36. At least one cycle.
LengthShares MeasureLengthShares(std::span<const CycleRecord> validCycles);

/// Chance that a period starts on a day, given that none has started for `daysPassed` days (0..36)
/// since the last one; entry 0 stays 0. False, with `starts` unfinished, when no cycle was ever as
/// long as the days that have passed.
bool PredictStarts(const LengthShares& shares, std::int32_t daysPassed, HorizonValues& starts);

/// The value of each day from `firstDay` (0..364) on, when every period brings `profile`; earlier
/// days are 0.
void SpreadOverPeriod(const PeriodDays& profile, const HorizonValues& starts, std::int32_t firstDay,
                      HorizonValues& values);

OvulationOffsets MeasureOvulationOffsets(const LengthShares& shares);

/// Chance of ovulation on each day. Here entry 0 of `starts` counts as 1: the last period did
/// start.
void PredictOvulation(const OvulationOffsets& offsets, const HorizonValues& starts,
                      HorizonValues& ovulation);

/// Weight of each day for conception; it may exceed 1, and the first three days are 0.
void PredictPregnancy(const HorizonValues& ovulation, HorizonValues& pregnancy);

}  // namespace lunara
