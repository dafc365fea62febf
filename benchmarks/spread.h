#pragma once

// Timing for the benchmark programs that run under Windows: the system's performance counter, and a
// fixed number of rounds per case.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace lunara::bench {

/// The performance counter in ms; only differences mean anything.
inline double NowMs() {
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    ::QueryPerformanceCounter(&count);
    ::QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

/// Distribution of a case's times, in ms.
struct Spread {
    double median;
    double low;   // tenth percentile
    double high;  // ninetieth percentile
    double worst;
};

/// The distribution of `times` (ms, any order), which must not be empty.
inline Spread SpreadOf(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    const std::size_t count = times.size();
    return {times[count / 2], times[count / 10], times[count * 9 / 10], times.back()};
}

/// ms that one call of `work` takes.
template <typename Work>
double TimeOf(Work work) {
    const double start = NowMs();
    work();
    return NowMs() - start;
}

/// Calls `work` `rounds` (>= 1) times and times each call.
template <typename Work>
Spread Measure(int rounds, Work work) {
    std::vector<double> times;
    times.reserve(static_cast<std::size_t>(rounds));
    for (int i = 0; i < rounds; ++i) {
        times.push_back(TimeOf(work));
    }
    return SpreadOf(std::move(times));
}

inline void Print(const char* name, const Spread& spread) {
    std::printf("%-32s median %7.3f ms   10%% %7.3f   90%% %7.3f   worst %7.3f\n", name,
                spread.median, spread.low, spread.high, spread.worst);
}

}  // namespace lunara::bench
