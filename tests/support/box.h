#pragma once

// Rectangles and points that compare and print, for the tests of layouts and of windows.

#include <ostream>

#include "platform/win32.h"

namespace lunara::test {

/// A RECT as a value.
struct Box {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
    bool operator==(const Box&) const = default;
};

inline Box BoxOf(const RECT& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

inline void PrintTo(const Box& box, std::ostream* out) {
    *out << "(" << box.left << ", " << box.top << ", " << box.right << ", " << box.bottom << ")";
}

/// A POINT as a value.
struct Spot {
    LONG x;
    LONG y;
    bool operator==(const Spot&) const = default;
};

inline Spot SpotOf(POINT point) { return {point.x, point.y}; }

inline void PrintTo(const Spot& spot, std::ostream* out) {
    *out << "(" << spot.x << ", " << spot.y << ")";
}

}  // namespace lunara::test
