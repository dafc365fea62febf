#include "platform/clock.h"

#include <gtest/gtest.h>

namespace lunara::test {
namespace {

TEST(Clock, StandsWhereItWasSetUntilReleased) {
    SYSTEMTIME noon{};
    noon.wYear = 2006;
    noon.wMonth = 1;
    noon.wDay = 2;
    noon.wHour = 12;
    SetLocalNow(noon);
    SetTickCount(7);
    EXPECT_EQ(LocalNow().wYear, 2006);
    EXPECT_EQ(LocalNow().wDayOfWeek, 1);
    EXPECT_EQ(TickCount(), 7U);
    ReleaseClock();
    EXPECT_NE(LocalNow().wYear, 2006);
}

}  // namespace
}  // namespace lunara::test
