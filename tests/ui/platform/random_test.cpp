#include "platform/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace lunara::test {
namespace {

TEST(Random, EightWordsOfTheSystemsGeneratorDiffer) {
    std::uint32_t words[8];
    std::generate(std::begin(words), std::end(words), &RandomWord);
    std::sort(std::begin(words), std::end(words));
    EXPECT_EQ(std::unique(std::begin(words), std::end(words)), std::end(words));
}

}  // namespace
}  // namespace lunara::test
