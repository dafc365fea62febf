#include <gtest/gtest.h>

#include <cstdio>

#include "tests/e2e/machine.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Without control over the date every expectation would be about some other day.
    if (!lunara::e2e::SetToday({2006, 3, 5})) {
        std::fputs("lunara_e2e: the date cannot be set; run it with scripts/e2e.sh\n", stderr);
        return 2;
    }
    return RUN_ALL_TESTS();
}
