#include "views/month_colors.h"

#include <gtest/gtest.h>

namespace lunara::test {
namespace {

TEST(MonthColor, RunsFromJanuaryToDecember) {
    EXPECT_EQ(MonthColor(1), RGB(128, 128, 255));
    EXPECT_EQ(MonthColor(2), RGB(190, 190, 255));
    EXPECT_EQ(MonthColor(3), RGB(190, 255, 190));
    EXPECT_EQ(MonthColor(4), RGB(128, 255, 128));
    EXPECT_EQ(MonthColor(5), RGB(255, 255, 128));
    EXPECT_EQ(MonthColor(6), RGB(255, 255, 0));
    EXPECT_EQ(MonthColor(7), RGB(237, 192, 88));
    EXPECT_EQ(MonthColor(8), RGB(231, 169, 24));
    EXPECT_EQ(MonthColor(9), RGB(187, 141, 96));
    EXPECT_EQ(MonthColor(10), RGB(170, 126, 94));
    EXPECT_EQ(MonthColor(11), RGB(146, 146, 163));
    EXPECT_EQ(MonthColor(12), RGB(0, 128, 192));
}

TEST(MonthColor, IsWhiteForNoMonth) {
    EXPECT_EQ(MonthColor(0), RGB(255, 255, 255));
    EXPECT_EQ(MonthColor(13), RGB(255, 255, 255));
    EXPECT_EQ(MonthColor(0xFFFF), RGB(255, 255, 255));
}

}  // namespace
}  // namespace lunara::test
