#include "tests/core/cycle/reference_prediction.h"

#include <algorithm>

namespace lunara::test {
namespace {

constexpr float EvenKernel[5] = {0, 0, 1.0F, 0, 0};
constexpr float OddKernel[5] = {0, 0, 0.5F, 0.5F, 0};
constexpr float PregnancyWeights[7] = {0, 0, 0.5F, 1.0F, 1.0F, 1.0F, 0};

const float* KernelOf(int length) { return length % 2 == 0 ? EvenKernel : OddKernel; }

SYSTEMTIME DateOf(DateKey key) {
    SYSTEMTIME date{};
    FromDateKey(key, date);
    return date;
}

DateKey Shift(const SYSTEMTIME& date, int days) {
    SYSTEMTIME shifted{};
    AddDays(date, days, shifted);
    return ToDateKey(shifted);
}

/// One prediction and its working arrays. `shares` is indexed by cycle length less 21, the profiles
/// by day of the period, the others by days since the last valid period start, [0, 364].
class Computation {
  public:
    Computation(const std::vector<DayValue>& records, const SYSTEMTIME& now)
        : bleeding(records), today(now) {}

    ReferencePrediction Run() {
        if (bleeding.empty()) {
            result.warning = "No statistical data. ";
            return result;
        }
        for (const DayValue& record : bleeding) {
            result.todayIsBleeding = result.todayIsBleeding || record.date == ToDateKey(today);
        }
        if (!FindCycles()) {
            Warn("Insufficient statistical data. ");
            WarnOfCounts();
            Warn("Prediction not available! ");
        } else {
            if (result.validCycles.size() <= 3) {
                Warn("Too few valid cycles for stable prediction. ");
            }
            WarnOfCounts();
            daysPassed = DaysBetween(today, result.lastValidPeriodStart);
            if (daysPassed > 36) {
                Warn("Too far from the last valid period start. ");
                Warn("Prediction not meaningfull! ");
            } else if (!ComputeStarts()) {
                Warn("Today after statistically expected cycle length. ");
                Warn("Prediction not available! ");
            } else {
                ComputeDays();
            }
        }
        StorePastBleeding();
        StorePastOvulation();
        MarkAllRuns();
        MarkToday();
        MarkCycles();
        return result;
    }

  private:
    void Warn(const char* text) { result.warning += text; }

    void WarnOfCounts() {
        if (result.discardedPeriods > 0) {
            result.warning += std::to_string(result.discardedPeriods) + " discarded period(s). " +
                              std::to_string(result.invalidCycles) + " invalid cycle(s). ";
        }
    }

    bool IsFuture(DateKey date) const { return IsDateAfter(DateOf(date), today) != 0; }

    bool FindCycles() {
        if (IsFuture(bleeding[0].date)) {
            return false;
        }
        std::vector<CycleRecord> cycles;
        DateKey start = bleeding[0].date;
        int run = 1;
        DateKey previous = start;
        for (std::size_t i = 1; i < bleeding.size() && !IsFuture(bleeding[i].date); ++i) {
            const int gap = DaysBetween(DateOf(bleeding[i].date), DateOf(previous));
            previous = bleeding[i].date;
            if (gap > 2) {
                cycles.push_back({run, gap + run - 1, start});
                NoteStart(start, run);
                start = previous;
                run = 1;
            } else {
                run = run + gap;
            }
        }
        cycles.push_back({run, 37, start});
        NoteStart(start, run);
        return KeepCycles(cycles);
    }

    void NoteStart(DateKey start, int run) {
        if (run >= 2 && run <= 7) {
            result.lastValidPeriodStart = DateOf(start);
        }
    }

    bool KeepCycles(const std::vector<CycleRecord>& cycles) {
        std::vector<CycleRecord> kept;
        for (const CycleRecord& cycle : cycles) {
            const int age = DaysBetween(today, DateOf(cycle.start));
            const bool isKept =
                cycle.periodLength <= 7 &&
                (cycle.periodLength >= 2 || (0 <= age && age < cycle.periodLength + 1));
            if (isKept) {
                kept.push_back(cycle);
                continue;
            }
            if (!kept.empty()) {
                kept.back().cycleLength += cycle.cycleLength;
            }
            for (int i = 0; i < cycle.periodLength; ++i) {
                result.discardedDays[Shift(DateOf(cycle.start), i)] = 1;
            }
            ++result.discardedPeriods;
        }
        for (const CycleRecord& cycle : kept) {
            if (cycle.cycleLength >= 21 && cycle.cycleLength <= 36) {
                result.validCycles.push_back(cycle);
            } else {
                ++result.invalidCycles;
            }
        }
        return !result.validCycles.empty();
    }

    void ComputeShares() {
        const auto n = static_cast<float>(result.validCycles.size());
        for (const CycleRecord& cycle : result.validCycles) {
            shares[cycle.cycleLength - 21] += 1.0F;
        }
        const float r = 1.0F / n;
        for (float& share : shares) {
            share = r * share;
        }
    }

    void ComputeProfile() {
        const auto n = static_cast<float>(result.validCycles.size());
        int levelSum[7] = {};
        int dayCount[7] = {};
        for (const CycleRecord& cycle : result.validCycles) {
            std::size_t i = 0;
            while (bleeding[i].date != cycle.start) {
                ++i;
            }
            for (; i < bleeding.size(); ++i) {
                const int t = DaysBetween(DateOf(bleeding[i].date), DateOf(cycle.start));
                if (t >= 7) {
                    break;
                }
                if (t >= 0) {
                    levelSum[t] += bleeding[i].value;
                    dayCount[t] += 1;
                }
            }
        }
        for (int t = 0; t < 7; ++t) {
            meanLevel[t] = static_cast<float>(levelSum[t]) / n;
            bleedShare[t] = static_cast<float>(dayCount[t]) / n;
        }
    }

    bool ComputeStarts() {
        ComputeShares();
        for (int j = 0; j < 16; ++j) {
            starts[21 + j] = shares[j];
        }
        if (daysPassed > 21) {
            float passed = 0;
            float remaining = 0;
            for (int k = 21; k < daysPassed; ++k) {
                passed = passed + starts[k];
            }
            for (int k = daysPassed; k <= 36; ++k) {
                remaining = remaining + starts[k];
            }
            if (passed > 0) {
                if (!(remaining > 0)) {
                    return false;
                }
                const float ratio = passed / remaining;
                for (int k = 21; k < daysPassed; ++k) {
                    starts[k] = 0;
                }
                for (int k = daysPassed; k <= 36; ++k) {
                    starts[k] = starts[k] * ratio + starts[k];
                }
            }
        }
        for (int k = 42; k <= 364; ++k) {
            float sum = 0;
            for (int j = 0; j <= 15; ++j) {
                const float product = starts[k - 21 - j] * shares[j];
                sum = sum + product;
            }
            starts[k] = starts[k] + sum;
        }
        return true;
    }

    void ComputeDays() {
        ComputeProfile();
        for (int k = daysPassed; k <= 364; ++k) {
            for (int t = 0; t < 7; ++t) {
                const float start = k - t < 0 ? 0.0F : starts[k - t];
                levels[k] = levels[k] + meanLevel[t] * start;
                bleedingChance[k] = bleedingChance[k] + bleedShare[t] * start;
            }
        }
        float offsets[13] = {};
        for (int j = 0; j <= 15; ++j) {
            const int length = 21 + j;
            for (int m = 0; m < 5; ++m) {
                const int i = length / 2 - 10 + m;
                offsets[i] = KernelOf(length)[m] * shares[j] + offsets[i];
            }
        }
        starts[0] = 1.0F;
        for (int k = 0; k <= 364; ++k) {
            for (int i = 0; i <= 12; ++i) {
                ovulation[k] =
                    ovulation[k] + offsets[i] * (k - 8 - i < 0 ? 0.0F : starts[k - 8 - i]);
            }
        }
        starts[0] = 0;
        for (int k = 3; k <= 364; ++k) {
            for (int j = 0; j <= 6; ++j) {
                pregnancy[k] = pregnancy[k] + (k + 3 - j > 364 ? 0.0F : ovulation[k + 3 - j]) *
                                                  PregnancyWeights[j];
            }
        }
        StoreWeights(levels, result.bleedingLevels);
        StoreWeights(bleedingChance, result.periodProbabilities);
        StoreWeights(ovulation, result.ovulationProbabilities);
        StoreWeights(pregnancy, result.pregnancyProbabilities);
    }

    void StoreWeights(const float (&values)[365], std::map<DateKey, float>& target) const {
        for (int k = 0; k <= 364; ++k) {
            if (values[k] >= 0.01F) {
                target[Shift(result.lastValidPeriodStart, k)] = values[k];
            }
        }
    }

    void StorePastBleeding() {
        for (const DayValue& record : bleeding) {
            if (IsFuture(record.date)) {
                break;
            }
            result.bleedingLevels[record.date] = static_cast<float>(record.value);
        }
        for (const DayValue& record : bleeding) {
            if (IsFuture(record.date)) {
                break;
            }
            result.periodProbabilities[record.date] = record.value != 0 ? 1.0F : 0.0F;
        }
    }

    void StorePastOvulation() {
        for (const CycleRecord& cycle : result.validCycles) {
            const float* kernel = KernelOf(cycle.cycleLength);
            const int base = cycle.cycleLength / 2 - 2;
            const SYSTEMTIME start = DateOf(cycle.start);
            float kernelDays[36] = {};
            for (int m = 0; m < 5; ++m) {
                if (kernel[m] > 0.0) {
                    result.ovulationProbabilities[Shift(start, base + m)] = kernel[m];
                }
                kernelDays[base + m] = kernel[m];
            }
            for (int t = 3; t <= 32; ++t) {
                float w = 0;
                for (int j = 0; j <= 6; ++j) {
                    w = w + kernelDays[t + 3 - j] * PregnancyWeights[j];
                }
                if (w > 0.0) {
                    result.pregnancyProbabilities[Shift(start, t)] = w;
                }
            }
        }
    }

    void Set(std::uint32_t setBits, std::uint32_t clearBits, DateKey date,
             const std::vector<std::int32_t>& arguments = {}) {
        const auto [entry, isNew] = result.dayFlags.try_emplace(date);
        if (!arguments.empty()) {
            entry->second.argIndex = static_cast<std::int32_t>(result.dayFlagArgs.size());
            result.dayFlagArgs.insert(result.dayFlagArgs.end(), arguments.begin(), arguments.end());
        }
        entry->second.flags = isNew ? setBits : (entry->second.flags & ~clearBits) | setBits;
    }

    /// Marks the first and last day of each run of days in `list`, joining gaps of up to
    /// `largestGap` days. `bits` are the flags of a run's only, first and last day, in pairs:
    /// before today, and from today on.
    void MarkRuns(const std::map<DateKey, float>& list, int largestGap,
                  const std::uint32_t (&bits)[6]) {
        if (list.empty()) {
            return;
        }
        DateKey first = list.begin()->first;
        DateKey last = first;
        const auto close = [&] {
            const auto choose = [&](int which, DateKey date) {
                return bits[2 * which + (IsDateBefore(DateOf(date), today) != 0 ? 0 : 1)];
            };
            if (IsSameDay(DateOf(first), DateOf(last)) != 0) {
                Set(choose(0, first), 0, first);
            } else {
                Set(choose(1, first), 0, first);
                Set(choose(2, last), 0, last);
            }
        };
        for (auto day = std::next(list.begin()); day != list.end(); ++day) {
            if (DaysBetween(DateOf(day->first), DateOf(last)) > largestGap) {
                close();
                first = day->first;
            }
            last = day->first;
        }
        close();
    }

    void MarkAllRuns() {
        MarkRuns(result.periodProbabilities, 2, {0x8, 0x40, 0x10, 0x80, 0x20, 0x100});
        MarkRuns(result.ovulationProbabilities, 1, {0x200, 0x1000, 0x400, 0x2000, 0x800, 0x4000});
        MarkRuns(result.pregnancyProbabilities, 1,
                 {0x40000, 0x40000, 0x80000, 0x80000, 0x100000, 0x100000});
    }

    void MarkToday() {
        const auto entry = result.dayFlags.find(ToDateKey(today));
        if (entry != result.dayFlags.end()) {
            std::uint32_t& flags = entry->second.flags;
            for (int bit = 3; bit <= 5; ++bit) {
                const std::uint32_t recorded = 1U << bit;
                const std::uint32_t possible = 1U << (bit + 3);
                if (result.todayIsBleeding) {
                    flags |= (flags & possible) != 0 ? recorded : 0;
                    flags &= ~possible;
                } else {
                    flags |= (flags & recorded) != 0 ? possible : 0;
                    flags &= ~recorded;
                }
            }
        }
        if (result.validCycles.empty()) {
            return;
        }
        int maxCycle = 0;
        for (const CycleRecord& cycle : result.validCycles) {
            maxCycle = std::max(maxCycle, cycle.cycleLength);
        }
        const int d = DaysBetween(today, result.lastValidPeriodStart);
        if (d >= 37 && d <= 72) {
            Set(0x400000 | 0x800000, 0, ToDateKey(today));
        } else if (d <= 36 && d > maxCycle) {
            Set(0x200000, 0, ToDateKey(today));
        }
    }

    void MarkCycles() {
        for (const CycleRecord& cycle : result.validCycles) {
            Set(0x1 | 0x2, 0x1F8, cycle.start, {cycle.periodLength, cycle.cycleLength});
            Set(0x4, 0x1F8, Shift(DateOf(cycle.start), cycle.periodLength - 1));
        }
    }

    const std::vector<DayValue>& bleeding;
    SYSTEMTIME today;
    int daysPassed = 0;
    ReferencePrediction result;

    float shares[16] = {};
    float meanLevel[7] = {};
    float bleedShare[7] = {};
    float starts[365] = {};
    float levels[365] = {};
    float bleedingChance[365] = {};
    float ovulation[365] = {};
    float pregnancy[365] = {};
};

}  // namespace

ReferencePrediction PredictPlainly(const std::vector<DayValue>& bleeding, const SYSTEMTIME& today) {
    return Computation(bleeding, today).Run();
}

}  // namespace lunara::test
