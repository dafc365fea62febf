#pragma once

// Where windows stand on the screen, for the tests of the shell.

#include <gtest/gtest.h>

#include "platform/win32.h"

namespace lunara::test {

inline RECT ScreenRect(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

inline RECT ClientOnScreen(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    return client;
}

inline testing::AssertionResult SameRect(const RECT& a, const RECT& b) {
    if (::EqualRect(&a, &b) != FALSE) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << a.left << "," << a.top << "-" << a.right << "," << a.bottom << " is not " << b.left
           << "," << b.top << "-" << b.right << "," << b.bottom;
}

}  // namespace lunara::test
