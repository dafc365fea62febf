#pragma once

// Waiting for a condition instead of for a fixed time.

#include <windows.h>

namespace lunara::test {

/// The default limit of a wait: long enough for a busy machine, reached only when something is
/// wrong.
inline constexpr DWORD PatienceMs = 30000;

/// Polls the condition until it holds; false when it still does not after `patienceMs`. Measures
/// with the tick count, which runs in real time whatever date the programs under test are given.
template <typename Condition>
bool WaitFor(Condition&& holds, DWORD patienceMs = PatienceMs) {
    const ULONGLONG end = ::GetTickCount64() + patienceMs;
    // Most waits end within a millisecond. A long one backs off, to leave the processor to the
    // program that it waits for.
    constexpr DWORD LongestPauseMs = 5;
    DWORD pause = 0;  // ms, [0, LongestPauseMs]
    while (!holds()) {
        if (::GetTickCount64() >= end) {
            return false;
        }
        ::Sleep(pause);
        pause = pause < LongestPauseMs ? pause + 1 : pause;
    }
    return true;
}

}  // namespace lunara::test
