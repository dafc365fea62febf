// The fast ways through the cipher against the plain one, one block after the other.

#include "storage/cipher/cipher_fast.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "storage/cipher/cipher_gather.h"
#include "storage/cipher/cipher_lanes.h"
#include "tests/core/storage/file_support.h"

namespace lunara::test {
namespace {

class CipherFastTest : public ::testing::Test {
  protected:
    /// A key of 1 to 72 bytes, none of them zero.
    void SetRandomKey() {
        std::string key(1 + random() % 72, ' ');
        for (char& byte : key) {
            byte = static_cast<char>(1 + (random() >> 8) % 255);
        }
        InitCipher(state, key.c_str());
        std::reverse_copy(std::begin(state.subkeys), std::end(state.subkeys), reversed);
    }

    Bytes RandomBytes(std::size_t count) {
        Bytes bytes(count);
        for (unsigned char& byte : bytes) {
            byte = static_cast<unsigned char>(random() >> 8);
        }
        return bytes;
    }

    /// The first `length` bytes at `first` block by block; what is behind the last block stays.
    template <typename RunBlock>
    void RunPlainly(RunBlock runBlock, Bytes& bytes, std::size_t first, std::size_t length) {
        for (std::size_t at = 0; at + CipherBlockBytes <= length; at += CipherBlockBytes) {
            runBlock(state, bytes.data() + first + at);
        }
    }

    /// Runs `fast` over every number of blocks up to `most`; it must do exactly the whole groups.
    template <typename Fast, typename RunBlock>
    void ExpectWholeGroupsAsPlainly(Fast fast, const std::uint32_t* subkeys, RunBlock runBlock,
                                    std::size_t blocksOfGroup, std::size_t most) {
        for (std::size_t blocks = 0; blocks <= most; ++blocks) {
            Bytes bytes = RandomBytes(blocks * CipherBlockBytes + 5);
            Bytes expected = bytes;
            const std::size_t done = fast(subkeys, state.boxes, bytes.data(), bytes.size());
            const std::size_t groups = blocksOfGroup == 0 ? 0 : blocks / blocksOfGroup;
            ASSERT_EQ(done, groups * blocksOfGroup * CipherBlockBytes) << blocks;
            RunPlainly(runBlock, expected, 0, done);
            ASSERT_EQ(bytes, expected) << blocks << " blocks";
        }
    }

    std::minstd_rand random{2006};
    CipherState state{};
    std::uint32_t reversed[CipherSubkeys] = {};
};

TEST_F(CipherFastTest, EveryLengthIsAsPlainlyWithItsRemainder) {
    for (int i = 0; i < 3; ++i) {
        SetRandomKey();
        // Past twice the most blocks that are taken together, with every remainder, and unaligned.
        for (std::size_t length = 0; length <= 600; ++length) {
            const std::size_t first = random() % 8;
            Bytes bytes = RandomBytes(first + length);
            Bytes expected = bytes;
            EncipherBlocks(state, bytes.data() + first, length);
            RunPlainly(EncipherBlock, expected, first, length);
            ASSERT_EQ(bytes, expected) << length;
            DecipherBlocks(state, bytes.data() + first, length);
            RunPlainly(DecipherBlock, expected, first, length);
            ASSERT_EQ(bytes, expected) << length;
        }
    }
}

TEST_F(CipherFastTest, RandomKeysAndLengthsAreAsPlainly) {
    for (int i = 0; i < 100; ++i) {
        SetRandomKey();
        const std::size_t length = random() % 10'000;
        Bytes bytes = RandomBytes(length);
        Bytes expected = bytes;
        DecipherBlocks(state, bytes.data(), length);
        RunPlainly(DecipherBlock, expected, 0, length);
        ASSERT_EQ(bytes, expected) << length;
        EncipherBlocks(state, bytes.data(), length);
        RunPlainly(EncipherBlock, expected, 0, length);
        ASSERT_EQ(bytes, expected) << length;
    }
}

TEST_F(CipherFastTest, ManyBlocksLeaveLessThanOneGroup) {
    SetRandomKey();
    for (std::size_t length = 0; length <= 600; ++length) {
        Bytes bytes = RandomBytes(length);
        const std::size_t done = EncipherManyBlocks(state, bytes.data(), length);
        EXPECT_EQ(done % CipherBlockBytes, 0U) << length;
        EXPECT_LE(done, length);
        EXPECT_LT(length - done, LaneBlocks * CipherBlockBytes) << length;
        EXPECT_EQ(DecipherManyBlocks(state, bytes.data(), length), done) << length;
    }
}

// The program uses the faster of two routines; both must be right on every processor.

TEST_F(CipherFastTest, BlocksInLanesAreAsPlainly) {
    for (int i = 0; i < 20; ++i) {
        SetRandomKey();
        ExpectWholeGroupsAsPlainly(RunBlocksInLanes, state.subkeys, EncipherBlock, LaneBlocks, 40);
        ExpectWholeGroupsAsPlainly(RunBlocksInLanes, reversed, DecipherBlock, LaneBlocks, 40);
    }
}

TEST_F(CipherFastTest, GatheredBlocksAreAsPlainly) {
    // On a processor without gathers, RunBlocksGathered must return 0 and change no byte.
    const std::size_t blocksOfGroup = HasGathers() ? GatherBlocks : 0;
    for (int i = 0; i < 20; ++i) {
        SetRandomKey();
        ExpectWholeGroupsAsPlainly(RunBlocksGathered, state.subkeys, EncipherBlock, blocksOfGroup,
                                   3 * GatherBlocks);
        ExpectWholeGroupsAsPlainly(RunBlocksGathered, reversed, DecipherBlock, blocksOfGroup,
                                   3 * GatherBlocks);
    }
}

}  // namespace
}  // namespace lunara::test
