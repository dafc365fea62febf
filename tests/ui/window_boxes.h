#pragma once

// Where windows are, as boxes that compare and print. All in physical pixels.

#include "tests/box.h"

namespace lunara::test {

/// The whole window, frame included, in screen coordinates.
inline Box ScreenBox(HWND window) {
    RECT rect{};
    ::GetWindowRect(window, &rect);
    return BoxOf(rect);
}

/// The client area in screen coordinates.
inline Box ClientScreenBox(HWND window) {
    RECT rect{};
    ::GetClientRect(window, &rect);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return BoxOf(rect);
}

/// The client area in the window's own coordinates: left and top are 0.
inline Box ClientBox(HWND window) {
    RECT rect{};
    ::GetClientRect(window, &rect);
    return BoxOf(rect);
}

/// A child window in its parent's client coordinates.
inline Box BoxOf(HWND child) {
    RECT rect{};
    ::GetWindowRect(child, &rect);
    ::MapWindowPoints(nullptr, ::GetParent(child), reinterpret_cast<POINT*>(&rect), 2);
    return BoxOf(rect);
}

}  // namespace lunara::test
