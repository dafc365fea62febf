#include "views/color_blend.h"

#include <cmath>

namespace lunara {
namespace {

std::uint32_t BlendChannel(std::uint32_t a, std::uint32_t b, float f) {
    // Deliberately mixed: the first product is single precision, everything after it double. They
    // round differently, and colours are compared exactly (a white cell counts as empty).
    const float first = static_cast<float>(a) * f;
    const double sum =
        static_cast<double>(first) + static_cast<double>(b) * (1.0 - static_cast<double>(f));
    // A weight from a damaged list may be anything, NaN included, and converting a number that does
    // not fit into 32 bits is undefined.
    if (!(std::fabs(sum) < 2147483648.0)) {
        return 0;
    }
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(sum)) & 0xFF;
}

}  // namespace

std::uint32_t BlendColor(std::uint32_t c0, std::uint32_t c1, float f) {
    std::uint32_t result = 0;
    for (unsigned shift = 0; shift < 24; shift += 8) {
        result |= BlendChannel(c0 >> shift & 0xFF, c1 >> shift & 0xFF, f) << shift;
    }
    return result;
}

}  // namespace lunara
