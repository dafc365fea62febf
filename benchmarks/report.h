#pragma once

// Report of the native benchmark programs: compiler, build type and data, then one line per case
// with median, spread and, within a group of cases, the ratio to the group's first case.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

namespace lunara::bench {

inline constexpr int Repetitions = 9;

/// Collects the medians and spreads of all cases and prints them at the end. Cases are named
/// "group/case"; each is compared with the first one registered in its group.
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
        // Random interleaving may report cases in any order. Sort them by registration, then bring
        // each group together.
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

/// Which time of a case counts. Processor time leaves out other programs on the machine, and suits
/// cases that never wait; clock time includes waiting, for the disk above all.
enum class Time { Processor, Clock };

/// Registers a case. `seconds` is the shortest duration of one repetition.
template <typename Body>
void AddCase([[maybe_unused]] const std::string& name, [[maybe_unused]] Time time,
             [[maybe_unused]] Body body, [[maybe_unused]] double seconds = 0.05) {
#ifndef __clang_analyzer__  // it reports the registered case, which the library owns, as a leak
    auto* added = benchmark::RegisterBenchmark(name.c_str(), body);
    added->Unit(benchmark::kMicrosecond)
        ->MinTime(seconds)
        ->Repetitions(Repetitions)
        ->ReportAggregatesOnly(true);
    if (time == Time::Clock) {
        added->UseRealTime();
    }
#endif
}

/// Runs the registered cases and prints the report; `data` describes what they work on. Returns the
/// program's exit code.
inline int RunAll(int argc, char** argv, const char* data) {
    // Interleaves the repetitions of all cases, so that a change of the machine's load hits them
    // all alike.
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
