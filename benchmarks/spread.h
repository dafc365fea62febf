#pragma once

// How the programs that measure under Windows time their cases: with the system's performance
// counter, a fixed number of rounds a case.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace lunara::bench {

inline double NowMs() {
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    ::QueryPerformanceCounter(&count);
    ::QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

/// What a case took, in milliseconds.
struct Spread {
    double median;
    double low;   // tenth percentile
    double high;  // ninetieth percentile
    double worst;
};

/// `times` must not be empty.
inline Spread SpreadOf(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    const std::size_t count = times.size();
    return {times[count / 2], times[count / 10], times[count * 9 / 10], times.back()};
}

template <typename Work>
double TimeOf(Work work) {
    const double start = NowMs();
    work();
    return NowMs() - start;
}

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
