#include "views/color_blend.h"

#include <gtest/gtest.h>

#include <limits>

namespace lunara::test {
namespace {

constexpr std::uint32_t White = 0xFFFFFF;
constexpr std::uint32_t Blue = 0xFF0000;  // blue in bits 16..23

struct BlendCase {
    const char* label;
    std::uint32_t c0;
    std::uint32_t c1;
    float f;
    std::uint32_t expected;
};

TEST(BlendColor, MixesEachChannelToTheBit) {
    constexpr BlendCase Cases[] = {
        {"nothing of the first", Blue, White, 0.0F, White},
        {"all of the first", Blue, White, 1.0F, Blue},
        {"level 3 of 3 is a whole", Blue, White, 3 * 0.33333334F, Blue},
        // Red and green: 255 * (1 - f) lies just below 170 (level 1) and 85 (level 2) and is
        // truncated to A9 and 54. Blue, 255 in both colours, comes out as FE: 255 * f is rounded to
        // single precision, 255 * (1 - f) to double, and their sum lies just below 255.
        {"level 1 is truncated", Blue, White, 1 * 0.33333334F, 0xFEA9A9},
        {"level 2 is truncated", Blue, White, 2 * 0.33333334F, 0xFE5454},
        {"halves", 0x000000, White, 0.5F, 0x7F7F7F},
        {"channels stay apart", 0x102030, 0x405060, 0.25F, 0x344454},
        {"smallest stored probability", Blue, White, 0.01F, 0xFFFCFC},
        {"top bytes are dropped", 0xAB0000FF, 0xCD0000FF, 0.5F, 0x0000FF},
        // All in double precision the sum would be 255.
        {"first product is single precision", White, White, 0.1F, 0xFEFEFE},
        // All in single precision the sum would be 254.
        {"the rest is double precision", White, White, 0.008F, White},
    };
    for (const BlendCase& blend : Cases) {
        EXPECT_EQ(BlendColor(blend.c0, blend.c1, blend.f), blend.expected) << blend.label;
    }
}

// A weight outside [0, 1] leaves the low eight bits of each channel's truncated sum.
TEST(BlendColor, KeepsTheLowByteBeyondTheRange) {
    EXPECT_EQ(BlendColor(0x00FF00, White, 1.2F), 0xCDFECDU);
    EXPECT_EQ(BlendColor(0x00FF00, White, 2.0F), 0x01FF01U);
}

TEST(BlendColor, SurvivesWeightsThatAreNoNumbers) {
    EXPECT_EQ(BlendColor(White, White, std::numeric_limits<float>::quiet_NaN()), 0U);
    EXPECT_EQ(BlendColor(White, 0, std::numeric_limits<float>::infinity()), 0U);
    EXPECT_EQ(BlendColor(White, 0, std::numeric_limits<float>::max()), 0U);
}

}  // namespace
}  // namespace lunara::test
