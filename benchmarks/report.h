#pragma once

// How every benchmark program reports: what it was built with and what it worked on, then one line
// a case with its spread and, within a group of cases, the ratio to the group's first one.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

namespace lunara::bench {

inline constexpr int Repetitions = 9;

/// Collects the medians and spreads of all cases and prints them at the end. A case is called
/// "group/case"; the first of its group is what the others are compared with.
class RatioReporter : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) {
                std::printf("%s: %s\n", run.run_name.function_name.c_str(),
                            run.error_message.c_str());
                failed = true;
            } else if (run.aggregate_name == "median") {
                Case& entry = EntryOf(run);
                entry.median = TimeOf(run);
                const auto rate = run.counters.find("bytes_per_second");
                entry.bytesPerSecond = rate != run.counters.end() ? double{rate->second} : 0;
            } else if (run.aggregate_name == "stddev") {
                EntryOf(run).deviation = TimeOf(run);
            }
        }
    }

    void Finalize() override {
        // Cases may have been run in any order; they are printed as they were registered, group by
        // group.
        std::sort(cases.begin(), cases.end(),
                  [](const Case& a, const Case& b) { return a.family < b.family; });
        for (auto next = cases.begin(); next != cases.end();) {
            next = std::stable_partition(
                next, cases.end(),
                [group = Group(*next)](const Case& entry) { return Group(entry) == group; });
        }
        std::printf("%-52s %12s %8s %10s %8s\n", "case", "median", "stddev", "MB/s", "ratio");
        const Case* first = nullptr;
        for (const Case& entry : cases) {
            if (first == nullptr || Group(*first) != Group(entry)) {
                first = &entry;
            }
            Print(entry, *first);
        }
    }

    bool HasFailed() const { return failed; }

  private:
    struct Case {
        std::string name;
        std::int64_t family = 0;
        double median = 0;     // microseconds
        double deviation = 0;  // microseconds
        double bytesPerSecond = 0;
    };

    static double TimeOf(const Run& run) {
        return run.run_name.time_type.empty() ? run.GetAdjustedCPUTime()
                                              : run.GetAdjustedRealTime();
    }

    static std::string Group(const Case& entry) {
        return entry.name.substr(0, entry.name.find('/'));
    }

    Case& EntryOf(const Run& run) {
        const std::string& name = run.run_name.function_name;
        const auto match = std::find_if(cases.begin(), cases.end(),
                                        [&](const Case& entry) { return entry.name == name; });
        if (match != cases.end()) {
            return *match;
        }
        cases.push_back({name, run.family_index});
        return cases.back();
    }

    static void Print(const Case& entry, const Case& first) {
        std::string rate(1, '-');
        if (entry.bytesPerSecond > 0) {
            rate = std::to_string(static_cast<long>(entry.bytesPerSecond / 1e6));
        }
        std::printf("%-52s %9.2f us %6.1f %% %10s", entry.name.c_str(), entry.median,
                    100 * entry.deviation / entry.median, rate.c_str());
        if (&entry == &first) {
            std::printf(" %8s\n", "1");
        } else {
            std::printf(" %8.2f\n", entry.median / first.median);
        }
    }

    std::vector<Case> cases;
    bool failed = false;
};

/// What a case's time is: the processor's, for what never waits, so that other programs on the
/// machine do not count; or the clock's.
enum class Time { Processor, Clock };

/// Registers a case. `seconds` is how long a repetition lasts at least.
template <typename Body>
void AddCase(const std::string& name, Time time, Body body, double seconds = 0.05) {
    auto* added = benchmark::RegisterBenchmark(name.c_str(), body);
    added->Unit(benchmark::kMicrosecond)
        ->MinTime(seconds)
        ->Repetitions(Repetitions)
        ->ReportAggregatesOnly(true);
    if (time == Time::Clock) {
        added->UseRealTime();
    }
}

/// Runs the registered cases; `data` says what they work on. The result is main's.
inline int RunAll(int argc, char** argv, const char* data) {
    // Repetitions of all cases take turns, so that none has the machine's quiet minute to itself.
    std::string turns = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(std::next(arguments.begin()), turns.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
#ifdef __clang__
    const char* compiler = "clang++ " __clang_version__;
#else
    const char* compiler = "g++ " __VERSION__;
#endif
    std::printf("compiler: %s, build type: %s\ndata: %s; median of %d repetitions\n", compiler,
                LUNARA_BUILD_TYPE, data, Repetitions);
    std::printf("ratio: a case's time divided by that of the first case of its group\n");
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.HasFailed() ? 1 : 0;
}

}  // namespace lunara::bench
