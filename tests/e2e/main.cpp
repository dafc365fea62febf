#include <gtest/gtest.h>

#include <cstdio>

#include "tests/driver/failure.h"
#include "tests/driver/machine.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    lunara::test::SetFailureHandler([](const std::string& what) { ADD_FAILURE() << what; });
    // Without control over the date every expectation would be about another day.
    if (!lunara::test::SetToday(lunara::test::Today)) {
        std::fputs("lunara_e2e: the date cannot be set; run it with scripts/e2e.sh\n", stderr);
        return 2;
    }
    return RUN_ALL_TESTS();
}
