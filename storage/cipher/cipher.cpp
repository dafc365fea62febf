#include "storage/cipher/cipher.h"

#include <bit>
#include <cstring>
#include <iterator>
#include <utility>

#include "platform/win32.h"
#include "storage/cipher/cipher_fast.h"

namespace lunara {
namespace {

struct Halves {
    std::uint32_t left;
    std::uint32_t right;
};
static_assert(sizeof(Halves) == CipherBlockBytes);
static_assert(std::endian::native == std::endian::little, "a block is copied into its halves");

enum class Direction { Encipher, Decipher };

std::uint32_t RoundFunction(const CipherBoxes& boxes, std::uint32_t x) {
    return ((boxes[0][x & 0xFF] + boxes[1][x >> 8 & 0xFF]) ^ boxes[2][x >> 16 & 0xFF]) +
           boxes[3][x >> 24];
}

/// The subkey of a step in [0, 17]. Deciphering takes the subkeys from the last to the first and
/// does everything else as enciphering does.
std::uint32_t Subkey(const CipherState& state, Direction way, std::size_t step) {
    return state.subkeys[way == Direction::Encipher ? step : CipherSubkeys - 1 - step];
}

void RunRounds(const CipherState& state, Direction way, Halves& halves) {
    auto& [left, right] = halves;
    for (std::size_t round = 0; round < CipherRounds; ++round) {
        left ^= Subkey(state, way, round);
        right ^= RoundFunction(state.boxes, left);
        std::swap(left, right);
    }
    std::swap(left, right);  // the last round does not exchange the halves
    right ^= Subkey(state, way, CipherRounds);
    left ^= Subkey(state, way, CipherRounds + 1);
}

void RunBlock(const CipherState& state, Direction way, void* block) {
    Halves halves{};
    std::memcpy(&halves, block, sizeof(halves));
    RunRounds(state, way, halves);
    std::memcpy(block, &halves, sizeof(halves));
}

/// XORs the key, repeated with its terminating zero byte, into the subkeys.
void MixInKey(CipherState& state, const char* key) {
    const std::size_t period = std::strlen(key) + 1;
    std::size_t position = 0;
    for (std::uint32_t& subkey : state.subkeys) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            subkey ^= std::uint32_t{static_cast<unsigned char>(key[position])} << shift;
            position = (position + 1) % period;
        }
    }
}

}  // namespace

void InitCipher(CipherState& state, const char* key) {
    state = PublishedTables;
    if (key == nullptr || *key == 0) {
        return;
    }
    MixInKey(state, key);
    // The state replaces itself: a block of zeros is enciphered again and again, and each result
    // overwrites the next two words of the state that enciphers it.
    Halves halves{};
    const auto fill = [&](auto& words) {
        for (std::size_t i = 0; i < std::size(words); i += 2) {
            RunRounds(state, Direction::Encipher, halves);
            words[i] = halves.left;
            words[i + 1] = halves.right;
        }
    };
    fill(state.subkeys);
    for (auto& box : state.boxes) {
        fill(box);
    }
    ::SecureZeroMemory(&halves, sizeof(halves));
}

void ResetCipher(CipherState& state) {
    // Wiped first: the compiler may drop a plain copy into a state that is about to end.
    ::SecureZeroMemory(&state, sizeof(state));
    state = PublishedTables;
}

void EncipherBlock(const CipherState& state, void* block) {
    RunBlock(state, Direction::Encipher, block);
}

void DecipherBlock(const CipherState& state, void* block) {
    RunBlock(state, Direction::Decipher, block);
}

void EncipherBlocks(const CipherState& state, void* bytes, std::size_t length) {
    auto* const first = static_cast<unsigned char*>(bytes);
    std::size_t done = EncipherManyBlocks(state, first, length);
    for (; length - done >= CipherBlockBytes; done += CipherBlockBytes) {
        EncipherBlock(state, first + done);
    }
}

void DecipherBlocks(const CipherState& state, void* bytes, std::size_t length) {
    auto* const first = static_cast<unsigned char*>(bytes);
    std::size_t done = DecipherManyBlocks(state, first, length);
    for (; length - done >= CipherBlockBytes; done += CipherBlockBytes) {
        DecipherBlock(state, first + done);
    }
}

}  // namespace lunara
