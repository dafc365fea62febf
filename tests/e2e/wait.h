#pragma once

// Waiting for something to become so, instead of for a time to pass.

#include <windows.h>

namespace lunara::e2e {

/// Long enough for a busy machine; reached only when something is wrong.
inline constexpr DWORD PatienceMs = 30000;

/// Asks until it holds; false when it still does not after `patienceMs`. The tick count is the real
/// one, whatever date the programs are told.
template <typename Condition>
bool WaitFor(Condition&& holds, DWORD patienceMs = PatienceMs) {
    const ULONGLONG end = ::GetTickCount64() + patienceMs;
    // Most waits are over in a moment; a long one leaves the processor to what is waited for.
    constexpr DWORD LongestPauseMs = 5;
    DWORD pause = 0;
    while (!holds()) {
        if (::GetTickCount64() >= end) {
            return false;
        }
        ::Sleep(pause);
        pause = pause < LongestPauseMs ? pause + 1 : pause;
    }
    return true;
}

}  // namespace lunara::e2e
