#include "exchange/iso_date.h"

#include <gtest/gtest.h>

namespace lunara::test {
namespace {

TEST(IsoDate, EveryDateOfADataFileIsReadBack) {
    for (unsigned year : {1601U, 2006U, 2500U}) {
        for (unsigned month = 1; month <= 12; ++month) {
            for (unsigned day = 1; day <= 31; ++day) {
                const DateKey key = MakeDateKey(year, month, day);
                EXPECT_EQ(ParseIsoDate(IsoDate(key)), key) << IsoDate(key);
            }
        }
    }
}

}  // namespace
}  // namespace lunara::test
