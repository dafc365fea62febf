#pragma once

// What the tests of the views' geometry share: rectangles and points that compare and print.

#include <ostream>

#include "platform/win32.h"
#include "tests/box.h"
#include "tests/core/test_support.h"

namespace lunara::test {

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
