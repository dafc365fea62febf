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
    while (!holds()) {
        if (::GetTickCount64() >= end) {
            return false;
        }
        ::Sleep(5);  // leaves the processor to the program that is waited for
    }
    return true;
}

}  // namespace lunara::e2e
