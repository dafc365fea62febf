#pragma once

// A second implementation of the cipher, written apart from the program's own, with each of the
// three deviations from the published Blowfish as a switch. With all of them off the published test
// vectors check it; with all of them on it checks the program's plain cipher (cipher.h).

#include <array>
#include <cstdint>
#include <vector>

#include "storage/cipher/cipher.h"

namespace lunara::test {

struct Deviations {
    bool keyWithItsZero = false;  // the terminating zero takes part in the key expansion
    bool littleEndian = false;    // bytes become words, least significant byte first
    bool lowByteFirst = false;    // S-box 0 is indexed by the least significant byte
};

inline constexpr Deviations AllDeviations{true, true, true};

class ReferenceCipher {
  public:
    using Block = std::array<unsigned char, 8>;

    ReferenceCipher(const std::vector<unsigned char>& key, Deviations chosen)
        : state(PublishedTables), deviations(chosen) {
        std::vector<unsigned char> ring = key;
        if (deviations.keyWithItsZero) {
            ring.push_back(0);
        }
        std::size_t position = 0;
        for (std::uint32_t& subkey : state.subkeys) {
            unsigned char four[4];
            for (unsigned char& byte : four) {
                byte = ring[position++ % ring.size()];
            }
            subkey ^= Word(four);
        }
        std::uint32_t left = 0;
        std::uint32_t right = 0;
        const auto fill = [&](std::uint32_t* words, std::size_t count) {
            for (std::size_t i = 0; i < count; i += 2) {
                Rounds(left, right);
                words[i] = left;
                words[i + 1] = right;
            }
        };
        fill(state.subkeys, 18);
        for (auto& box : state.boxes) {
            fill(box, 256);
        }
    }

    Block Encipher(const Block& block) const {
        std::uint32_t left = Word(block.data());
        std::uint32_t right = Word(block.data() + 4);
        Rounds(left, right);
        Block result{};
        PutWord(left, result.data());
        PutWord(right, result.data() + 4);
        return result;
    }

    const CipherState& State() const { return state; }

  private:
    std::uint32_t Word(const unsigned char* bytes) const {
        std::uint32_t word = 0;
        for (int i = 0; i < 4; ++i) {
            const int shift = deviations.littleEndian ? 8 * i : 24 - 8 * i;
            word |= std::uint32_t{bytes[i]} << shift;
        }
        return word;
    }

    void PutWord(std::uint32_t word, unsigned char* bytes) const {
        for (int i = 0; i < 4; ++i) {
            const int shift = deviations.littleEndian ? 8 * i : 24 - 8 * i;
            bytes[i] = static_cast<unsigned char>(word >> shift);
        }
    }

    std::uint32_t Mix(std::uint32_t x) const {
        const auto byte = [&](int box) {
            return (x >> (deviations.lowByteFirst ? 8 * box : 24 - 8 * box)) & 0xFF;
        };
        const std::uint32_t sum = state.boxes[0][byte(0)] + state.boxes[1][byte(1)];
        return (sum ^ state.boxes[2][byte(2)]) + state.boxes[3][byte(3)];
    }

    void Rounds(std::uint32_t& left, std::uint32_t& right) const {
        for (int round = 0; round < 16; ++round) {
            left ^= state.subkeys[round];
            right ^= Mix(left);
            std::swap(left, right);
        }
        std::swap(left, right);
        right ^= state.subkeys[16];
        left ^= state.subkeys[17];
    }

    CipherState state;
    Deviations deviations;
};

}  // namespace lunara::test
