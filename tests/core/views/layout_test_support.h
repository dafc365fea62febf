#pragma once

// What the tests of the views' geometry share: rectangles and points that compare and print.

#include <ostream>

#include "platform/win32.h"
#include "tests/core/records/test_support.h"

namespace lunara::test {

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
