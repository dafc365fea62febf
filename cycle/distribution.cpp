#include "cycle/distribution.h"

#include <algorithm>

namespace lunara {
namespace {

// The day limits as std::size_t, the index type of the arrays below.
constexpr std::size_t Shortest = ShortestCycle;
constexpr std::size_t Longest = LongestCycle;
constexpr std::size_t Horizon = HorizonDays;
constexpr std::size_t FirstOvulation = FirstOvulationDay;

/// Sum of the entries [first, past), added in ascending order.
float SumOf(const HorizonValues& values, std::size_t first, std::size_t past) {
    float sum = 0;
    for (std::size_t k = first; k < past; ++k) {
        sum += values[k];
    }
    return sum;
}

/// Moves the chances of the days [21, today), which passed without a start, to the days [today,
/// 36], in proportion to what each of those has. False when those have no chance to scale.
bool DropPassedDays(std::size_t today, HorizonValues& starts) {
    if (today <= Shortest) {
        return true;
    }
    const float passed = SumOf(starts, Shortest, today);
    const float remaining = SumOf(starts, today, Longest + 1);
    if (!(passed > 0)) {
        return true;
    }
    if (!(remaining > 0)) {
        return false;
    }
    const float ratio = passed / remaining;
    std::fill(starts.begin() + Shortest, starts.begin() + static_cast<std::ptrdiff_t>(today), 0.0F);
    for (std::size_t k = today; k <= Longest; ++k) {
        starts[k] = starts[k] * ratio + starts[k];
    }
    return true;
}

}  // namespace

LengthShares MeasureLengthShares(std::span<const CycleRecord> validCycles) {
    LengthShares shares{};
    for (const CycleRecord& cycle : validCycles) {
        shares[static_cast<std::size_t>(cycle.cycleLength - ShortestCycle)] += 1.0F;
    }
    // Multiplying by the reciprocal rounds twice. A division would round once and change result
    // bits.
    const float reciprocal = 1.0F / static_cast<float>(validCycles.size());
    for (float& share : shares) {
        share = reciprocal * share;
    }
    return shares;
}

bool PredictStarts(const LengthShares& shares, std::int32_t daysPassed, HorizonValues& starts) {
    starts.fill(0);
    std::copy(shares.begin(), shares.end(), starts.begin() + Shortest);
    if (!DropPassedDays(static_cast<std::size_t>(daysPassed), starts)) {
        return false;
    }
    for (std::size_t k = 2 * Shortest; k < Horizon; ++k) {
        float sum = 0;
        for (std::size_t j = 0; j < shares.size(); ++j) {
            sum += starts[k - Shortest - j] * shares[j];
        }
        starts[k] += sum;
    }
    return true;
}

void SpreadOverPeriod(const PeriodDays& profile, const HorizonValues& starts, std::int32_t firstDay,
                      HorizonValues& values) {
    values.fill(0);
    for (auto k = static_cast<std::size_t>(firstDay); k < Horizon; ++k) {
        float sum = 0;
        for (std::size_t t = 0; t < profile.size() && t <= k; ++t) {
            sum += profile[t] * starts[k - t];
        }
        values[k] = sum;
    }
}

OvulationOffsets MeasureOvulationOffsets(const LengthShares& shares) {
    OvulationOffsets offsets{};
    for (std::size_t j = 0; j < shares.size(); ++j) {
        const std::int32_t length = ShortestCycle + static_cast<std::int32_t>(j);
        const OvulationKernel& kernel = OvulationKernelOf(length);
        const auto base =
            static_cast<std::size_t>(OvulationKernelDay(length) - FirstOvulationDay);  // [0, 8]
        for (std::size_t m = 0; m < kernel.size(); ++m) {
            offsets[base + m] = kernel[m] * shares[j] + offsets[base + m];
        }
    }
    return offsets;
}

void PredictOvulation(const OvulationOffsets& offsets, const HorizonValues& starts,
                      HorizonValues& ovulation) {
    HorizonValues certain = starts;
    certain[0] = 1.0F;
    ovulation.fill(0);
    for (std::size_t k = FirstOvulation; k < Horizon; ++k) {
        float sum = 0;
        for (std::size_t i = 0; i < offsets.size() && FirstOvulation + i <= k; ++i) {
            sum += offsets[i] * certain[k - FirstOvulation - i];
        }
        ovulation[k] = sum;
    }
}

void PredictPregnancy(const HorizonValues& ovulation, HorizonValues& pregnancy) {
    constexpr std::size_t Reach = 3;  // days that the kernel covers on either side
    pregnancy.fill(0);
    for (std::size_t k = Reach; k < Horizon; ++k) {
        float sum = 0;
        for (std::size_t j = 0; j < PregnancyKernel.size(); ++j) {
            const std::size_t day = k + Reach - j;
            sum += (day < Horizon ? ovulation[day] : 0) * PregnancyKernel[j];
        }
        pregnancy[k] = sum;
    }
}

}  // namespace lunara
