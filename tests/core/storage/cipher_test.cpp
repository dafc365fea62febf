#include "storage/cipher/cipher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>

#include "tests/core/storage/file_support.h"
#include "tests/core/storage/reference_cipher.h"

namespace lunara::test {
namespace {

/// A number in [0, 2^32): the whole part in limb 0, then 32 bits of the fraction a limb, the most
/// significant first. Two limbs more than the tables need absorb the rounding errors.
class FixedPoint {
  public:
    explicit FixedPoint(std::uint32_t whole) : limbs(std::size_t{1 + 18 + 4 * 256 + 2}) {
        limbs[0] = whole;
    }

    void Divide(std::uint32_t divisor) {
        std::uint64_t rest = 0;
        for (std::uint32_t& limb : limbs) {
            rest = rest << 32 | limb;
            limb = static_cast<std::uint32_t>(rest / divisor);
            rest %= divisor;
        }
    }

    void Add(const FixedPoint& other) {
        std::uint64_t carry = 0;
        for (std::size_t i = limbs.size(); i-- > 0; carry >>= 32) {
            carry += std::uint64_t{limbs[i]} + other.limbs[i];
            limbs[i] = static_cast<std::uint32_t>(carry);
        }
    }

    void Subtract(const FixedPoint& other) {
        std::uint64_t borrow = 0;
        for (std::size_t i = limbs.size(); i-- > 0;) {
            const std::uint64_t difference = std::uint64_t{limbs[i]} - other.limbs[i] - borrow;
            limbs[i] = static_cast<std::uint32_t>(difference);
            borrow = difference >> 63;
        }
    }

    bool IsZero() const {
        return std::all_of(limbs.begin(), limbs.end(),
                           [](std::uint32_t limb) { return limb == 0; });
    }

    std::uint32_t Limb(std::size_t index) const { return limbs[index]; }

  private:
    std::vector<std::uint32_t> limbs;
};

/// factor * arctan(1 / x), as the sum of factor / (k * x^k) for odd k with alternating signs.
FixedPoint ArctanOfInverse(std::uint32_t factor, std::uint32_t x) {
    FixedPoint term(factor);
    term.Divide(x);
    FixedPoint sum = term;
    for (std::uint32_t k = 3; !term.IsZero(); k += 2) {
        term.Divide(x * x);
        FixedPoint next = term;
        next.Divide(k);
        if (k % 4 == 3) {
            sum.Subtract(next);
        } else {
            sum.Add(next);
        }
    }
    return sum;
}

TEST(CipherTables, AreTheHexadecimalDigitsOfPi) {
    // Machin: pi = 16 arctan(1/5) - 4 arctan(1/239).
    FixedPoint pi = ArctanOfInverse(16, 5);
    pi.Subtract(ArctanOfInverse(4, 239));
    ASSERT_EQ(pi.Limb(0), 3U);
    for (std::size_t i = 0; i < 18; ++i) {
        ASSERT_EQ(PublishedTables.subkeys[i], pi.Limb(1 + i)) << "subkey " << i;
    }
    for (std::size_t i = 0; i < std::size_t{4} * 256; ++i) {
        ASSERT_EQ(PublishedTables.boxes[i / 256][i % 256], pi.Limb(19 + i)) << "box word " << i;
    }
}

Bytes FromHex(const std::string& digits) {
    Bytes bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<unsigned char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

ReferenceCipher::Block BlockFromHex(const std::string& digits) {
    ReferenceCipher::Block block{};
    const Bytes bytes = FromHex(digits);
    std::copy(bytes.begin(), bytes.end(), block.begin());
    return block;
}

// Key, plain text and cipher text as published with the algorithm. They prove the tables and the
// reference, from which the program's cipher differs only by the three deviations.
TEST(ReferenceCipher, GivesThePublishedVectorsWithoutDeviations) {
    const char* const vectors[][3] = {
        {"0000000000000000", "0000000000000000", "4EF997456198DD78"},
        {"FFFFFFFFFFFFFFFF", "FFFFFFFFFFFFFFFF", "51866FD5B85ECB8A"},
        {"3000000000000000", "1000000000000001", "7D856F9A613063F2"},
        {"1111111111111111", "1111111111111111", "2466DD878B963C9D"},
        {"0123456789ABCDEF", "1111111111111111", "61F9C3802281B096"},
        {"1111111111111111", "0123456789ABCDEF", "7D0CC630AFDA1EC7"},
        {"FEDCBA9876543210", "0123456789ABCDEF", "0ACEAB0FC6A0A28D"},
        {"7CA110454A1A6E57", "01A1D6D039776742", "59C68245EB05282B"},
    };
    for (const auto& [key, plain, cipher] : vectors) {
        EXPECT_EQ(ReferenceCipher(FromHex(key), {}).Encipher(BlockFromHex(plain)),
                  BlockFromHex(cipher))
            << key;
    }
}

bool IsSameState(const CipherState& a, const CipherState& b) {
    return std::memcmp(a.subkeys, b.subkeys, sizeof(a.subkeys)) == 0 &&
           std::memcmp(a.boxes, b.boxes, sizeof(a.boxes)) == 0;
}

Bytes KeyBytes(const std::string& key) { return Bytes(key.begin(), key.end()); }

TEST(Cipher, KeyedStateIsThatOfTheReference) {
    for (const std::string& key :
         {std::string("a"), std::string("secret"), std::string("\xFF\x80\x81"),
          std::string(17, 'x'), std::string(55, 'k'), std::string(71, 'l'), std::string(72, 'm'),
          std::string(80, 'n')}) {
        CipherState state{};
        InitCipher(state, key.c_str());
        const ReferenceCipher reference(KeyBytes(key), AllDeviations);
        EXPECT_TRUE(IsSameState(state, reference.State())) << key;
    }
}

TEST(Cipher, BlockIsThatOfTheReferenceAndComesBack) {
    std::minstd_rand random(2006);
    for (const std::string& key : {std::string("a"), std::string("secret"), std::string(72, 'm')}) {
        CipherState state{};
        InitCipher(state, key.c_str());
        const ReferenceCipher reference(KeyBytes(key), AllDeviations);
        for (int i = 0; i < 200; ++i) {
            ReferenceCipher::Block plain{};
            for (unsigned char& byte : plain) {
                byte = static_cast<unsigned char>(random() >> 8);
            }
            ReferenceCipher::Block block = plain;
            EncipherBlock(state, block.data());
            ASSERT_EQ(block, reference.Encipher(plain)) << key << ' ' << i;
            DecipherBlock(state, block.data());
            ASSERT_EQ(block, plain) << key << ' ' << i;
        }
    }
}

TEST(Cipher, BlocksDoNotDependOnEachOther) {
    CipherState state{};
    InitCipher(state, "secret");
    Bytes together(std::size_t{72} * 5, 0x5A);
    EncipherBlocks(state, together.data(), together.size());
    for (std::size_t at = 0; at < together.size(); at += CipherBlockBytes) {
        Bytes alone(CipherBlockBytes, 0x5A);
        EncipherBlocks(state, alone.data(), alone.size());
        ASSERT_EQ(std::memcmp(&together[at], alone.data(), CipherBlockBytes), 0) << at;
    }
}

TEST(Cipher, EachDeviationMatters) {
    const struct {
        const char* label = nullptr;
        Deviations deviations;
    } cases[] = {
        {"key without its zero", {false, true, true}},
        {"big-endian words", {true, false, true}},
        {"S-boxes from the high byte", {true, true, false}},
        {"the published algorithm", {false, false, false}},
    };
    CipherState state{};
    InitCipher(state, "secret");
    ReferenceCipher::Block block{1, 2, 0xD6, 7, 1, 0, 0, 0};  // a day's record
    const ReferenceCipher::Block plain = block;
    EncipherBlocks(state, block.data(), block.size());
    for (const auto& [label, deviations] : cases) {
        EXPECT_NE(ReferenceCipher(KeyBytes("secret"), deviations).Encipher(plain), block) << label;
    }
}

TEST(Cipher, BytesOfTheKeyPastThe72ndHaveNoEffect) {
    CipherState shorter{};
    CipherState longer{};
    InitCipher(shorter, std::string(72, 'm').c_str());
    InitCipher(longer, (std::string(72, 'm') + "more").c_str());
    EXPECT_TRUE(IsSameState(shorter, longer));
}

TEST(Cipher, EmptyKeyLeavesThePublishedTables) {
    for (const char* key : {"", static_cast<const char*>(nullptr)}) {
        CipherState state{};
        std::memset(&state, 0xAB, sizeof(state));
        InitCipher(state, key);
        EXPECT_TRUE(IsSameState(state, PublishedTables));
    }
}

TEST(Cipher, ResetLeavesNothingOfTheKey) {
    CipherState state{};
    InitCipher(state, "secret");
    ASSERT_FALSE(IsSameState(state, PublishedTables));
    ResetCipher(state);
    EXPECT_TRUE(IsSameState(state, PublishedTables));
}

}  // namespace
}  // namespace lunara::test
