// Times the prediction for diaries of 40 and of 4 years. The peers are the bare sums over the
// forecast, which every prediction computes whatever the length of the diary.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cycle/distribution.h"
#include "cycle/periods.h"
#include "cycle/predictor.h"
#include "diary/diary_edit.h"
#include "platform/clock.h"

namespace lunara {
namespace {

constexpr double MostFor40Years = 3;  // limit, as a multiple of the time for 4 years
constexpr double MostFor4Years = 5;   // limit, as a multiple of the time for the sums

constexpr char Name40Years[] = "UpdatePrediction/40_years";
constexpr char Name4Years[] = "UpdatePrediction/4_years";
constexpr char NameSums[] = "sums_of_one_prediction";
constexpr char NameStarts[] = "sums_of_the_starts_alone";

/// Twenty equally likely period lengths in days, one digit each; 5.2 on average.
constexpr std::string_view BleedingDays = "44444555555556666677";

/// Fills the diary with 13 cycles of 25 to 31 days for each year, and sets the clock to the 13th
/// day of the open cycle that follows. Deterministic: the same `years` give the same diary.
void FillDiary(UserData& data, int years) {
    std::uint32_t state = 1;
    const auto next = [&state](std::uint32_t below) {
        state = state * 1'664'525 + 1'013'904'223;
        return static_cast<std::int32_t>((state >> 16) % below);
    };
    DiaryEdit edit(data);
    std::int32_t start = DayNumber(MakeDateKey(1985, 1, 7));
    for (int cycle = 0; cycle < 13 * years; ++cycle) {
        const std::int32_t length = 25 + next(4) + next(4);
        const std::int32_t bleeding = BleedingDays[static_cast<std::size_t>(next(20))] - '0';
        for (std::int32_t day = 0; day < bleeding; ++day) {
            edit.SetBleeding(KeyOfDayNumber(start + day), day < 2 ? 3 : 1 + (bleeding > day + 2));
        }
        start += length;
    }
    for (std::int32_t day = 0; day < 5; ++day) {
        edit.SetBleeding(KeyOfDayNumber(start + day), 2);
    }
    if (!edit.Store()) {
        std::abort();
    }
    SYSTEMTIME today{};
    FromDateKey(KeyOfDayNumber(start + 12), today);
    SetLocalNow(today);
}

void BenchUpdate(benchmark::State& state, int years) {
    UserData data;
    FillDiary(data, years);
    std::int32_t flags = NoteFlagCramps;
    while (state.KeepRunning()) {
        // Any change of records makes the prediction out of date; this one costs next to nothing.
        flags ^= NoteFlagCramps | NoteFlagPms;
        data.SetNoteFlags(flags);
        UpdatePrediction(data, 1);
        benchmark::ClobberMemory();
    }
    state.counters["records"] = data.Bleeding().Count();
    state.counters["cycles"] = data.Prediction().validCycles.Count();
}

struct Sums {
    LengthShares shares{};
    PeriodProfile profile;
};

Sums SumsOf4Years() {
    UserData data;
    FillDiary(data, 4);
    UpdatePrediction(data, 0);
    const std::span cycles(data.Prediction().validCycles.begin(),
                           static_cast<std::size_t>(data.Prediction().validCycles.Count()));
    const RecordedDays days(data.Bleeding(), data.Prediction().computedFor);
    return {MeasureLengthShares(cycles), MeasurePeriodProfile(cycles, days)};
}

void BenchSums(benchmark::State& state) {
    const Sums sums = SumsOf4Years();
    HorizonValues starts;
    HorizonValues levels;
    HorizonValues bleeding;
    HorizonValues ovulation;
    HorizonValues pregnancy;
    while (state.KeepRunning()) {
        PredictStarts(sums.shares, 12, starts);
        SpreadOverPeriod(sums.profile.meanLevel, starts, 12, levels);
        SpreadOverPeriod(sums.profile.bleedShare, starts, 12, bleeding);
        PredictOvulation(MeasureOvulationOffsets(sums.shares), starts, ovulation);
        PredictPregnancy(ovulation, pregnancy);
        benchmark::DoNotOptimize(levels.data());
        benchmark::DoNotOptimize(bleeding.data());
        benchmark::DoNotOptimize(pregnancy.data());
        benchmark::ClobberMemory();
    }
}

void BenchStarts(benchmark::State& state) {
    const Sums sums = SumsOf4Years();
    HorizonValues starts;
    while (state.KeepRunning()) {
        PredictStarts(sums.shares, 12, starts);
        benchmark::DoNotOptimize(starts.data());
        benchmark::ClobberMemory();
    }
}

BENCHMARK_CAPTURE(BenchUpdate, 40, 40)->Name(Name40Years)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BenchUpdate, 4, 4)->Name(Name4Years)->Unit(benchmark::kMicrosecond);
BENCHMARK(BenchSums)->Name(NameSums)->Unit(benchmark::kMicrosecond);
BENCHMARK(BenchStarts)->Name(NameStarts)->Unit(benchmark::kMicrosecond);

/// The library's console output; also keeps the median CPU time of each case.
class MedianReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.aggregate_name == "median") {
                medians[run.run_name.function_name] = run.GetAdjustedCPUTime();
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    double Ratio(const char* name, const char* peer) const {
        return medians.at(name) / medians.at(peer);
    }

  private:
    std::map<std::string, double> medians;
};

bool PrintRatio(const char* text, double ratio, double most) {
    const bool good = ratio <= most;
    std::printf("%-58s %5.2f  (at most %.0f)  %s\n", text, ratio, most, good ? "ok" : "TOO SLOW");
    return good;
}

int Run(int argc, char** argv) {
    // Interleaves the repetitions of the cases, so that other load on the machine hits them all
    // alike; the medians are compared.
    std::array<char, 40> repetitions = {"--benchmark_repetitions=15"};
    std::array<char, 56> interleaving = {"--benchmark_enable_random_interleaving=true"};
    std::array<char, 32> duration = {"--benchmark_min_time=0.05"};
    std::array<char, 56> aggregates = {"--benchmark_report_aggregates_only=true"};
    std::vector<char*> arguments = {argv[0], repetitions.data(), interleaving.data(),
                                    duration.data(), aggregates.data()};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
#ifdef NDEBUG
    constexpr const char* BuildType = "release";
#else
    constexpr const char* BuildType = "debug";
#endif
    std::printf("compiler %s, %s build; diaries of 13 cycles a year\n", __VERSION__, BuildType);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    bool good =
        PrintRatio("40 years / 4 years", reporter.Ratio(Name40Years, Name4Years), MostFor40Years);
    good = PrintRatio("4 years / sums of one prediction", reporter.Ratio(Name4Years, NameSums),
                      MostFor4Years) &&
           good;
    std::printf("%-58s %5.2f\n", "4 years / sums of the starts alone",
                reporter.Ratio(Name4Years, NameStarts));
    return good ? 0 : 1;
}

}  // namespace
}  // namespace lunara

int main(int argc, char** argv) { return lunara::Run(argc, argv); }
