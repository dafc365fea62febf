#pragma once

// Rectangles that compare and print, for the tests of layouts and of windows.

#include <ostream>

#include "platform/win32.h"

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

}  // namespace lunara::test
