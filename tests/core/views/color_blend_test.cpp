#include "views/color_blend.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

namespace lunara {
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

void PrintTo(const BlendCase& blend, std::ostream* out) { *out << blend.label; }

class BlendColorTest : public ::testing::TestWithParam<BlendCase> {};

TEST_P(BlendColorTest, GivesExactlyThisColor) {
    const BlendCase& blend = GetParam();
    EXPECT_EQ(BlendColor(blend.c0, blend.c1, blend.f), blend.expected) << blend.label;
}

INSTANTIATE_TEST_SUITE_P(
    Colors, BlendColorTest,
    ::testing::Values(BlendCase{"nothing of the first", Blue, White, 0.0F, White},
                      BlendCase{"all of the first", Blue, White, 1.0F, Blue},
                      BlendCase{"level 3 of 3 is a whole", Blue, White, 3 * 0.33333334F, Blue},
                      // 255 x (1 - f) is a little less than 170 and 85: cut, not rounded. The full
                      // channel loses one, too, because its two parts round differently.
                      BlendCase{"level 1 is cut", Blue, White, 1 * 0.33333334F, 0xFEA9A9},
                      BlendCase{"level 2 is cut", Blue, White, 2 * 0.33333334F, 0xFE5454},
                      BlendCase{"halves", 0x000000, White, 0.5F, 0x7F7F7F},
                      BlendCase{"channels stay apart", 0x102030, 0x405060, 0.25F, 0x344454},
                      BlendCase{"smallest stored probability", Blue, White, 0.01F, 0xFFFCFC},
                      BlendCase{"top bytes are dropped", 0xAB0000FF, 0xCD0000FF, 0.5F, 0x0000FF},
                      // Formed in double all through this would be 255.
                      BlendCase{"first product is single precision", White, White, 0.1F, 0xFEFEFE},
                      // Formed in single precision all through this would be 254.
                      BlendCase{"the rest is double", White, White, 0.008F, White}));

// f is meant to be 0..1; beyond it the channels keep the low eight bits of their whole numbers.
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
}  // namespace lunara
