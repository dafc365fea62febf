#include "storage/cipher/cipher.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

#include "platform/win32.h"
#include "storage/cipher/cipher_gather.h"

#if defined(__GNUC__) && !defined(__clang__)
// Otherwise GCC regroups the XORs of a round and puts the subkey onto the path on which the rounds
// wait for each other, which costs the key set-up a twentieth.
#pragma GCC optimize("no-tree-reassoc")
#endif

namespace lunara {
namespace {

static_assert(std::endian::native == std::endian::little, "blocks are read where they stand");

constexpr std::size_t Rounds = 16;

// Blocks taken through the rounds side by side. One block's rounds wait for each other; the waits
// of six fill each other, and with more of them too many halves no longer fit the registers.
constexpr std::size_t Lanes = 6;

enum class Direction { Encipher, Decipher };

/// The subkey of a step, in [0, Rounds + 1].
template <Direction Way>
std::uint32_t Subkey(const CipherState& state, std::size_t step) {
    return state.subkeys[Way == Direction::Encipher ? step : Rounds + 1 - step];
}

std::uint32_t RoundFunction(const CipherState& state, std::uint32_t x) {
    const auto& boxes = state.boxes;
    return ((boxes[0][x & 0xFF] + boxes[1][(x >> 8) & 0xFF]) ^ boxes[2][(x >> 16) & 0xFF]) +
           boxes[3][x >> 24];
}

/// The halves of blocks that go through the rounds side by side.
template <std::size_t Count>
struct Halves {
    std::uint32_t left[Count];
    std::uint32_t right[Count];
};

/// All rounds. Each half takes the subkey of the next round along with this round's result, off the
/// path on which the rounds wait for each other; two rounds a turn spare the exchange of the
/// halves.
template <Direction Way, std::size_t Count>
inline void RunRounds(const CipherState& state, Halves<Count>& halves) {
    auto& [left, right] = halves;
    for (std::size_t i = 0; i < Count; ++i) {
        left[i] ^= Subkey<Way>(state, 0);
    }
#pragma GCC unroll 8
    for (std::size_t round = 1; round <= Rounds; round += 2) {
        for (std::size_t i = 0; i < Count; ++i) {
            right[i] = right[i] ^ Subkey<Way>(state, round) ^ RoundFunction(state, left[i]);
        }
        for (std::size_t i = 0; i < Count; ++i) {
            left[i] = left[i] ^ Subkey<Way>(state, round + 1) ^ RoundFunction(state, right[i]);
        }
    }
    for (std::size_t i = 0; i < Count; ++i) {
        const std::uint32_t newLeft = right[i] ^ Subkey<Way>(state, Rounds + 1);
        right[i] = left[i];
        left[i] = newLeft;
    }
}

template <Direction Way, std::size_t Count>
void RunBlocks(const CipherState& state, unsigned char* bytes) {
    constexpr std::size_t HalfBytes = CipherBlockBytes / 2;
    Halves<Count> halves;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled below
    for (std::size_t i = 0; i < Count; ++i) {
        std::memcpy(&halves.left[i], bytes + i * CipherBlockBytes, HalfBytes);
        std::memcpy(&halves.right[i], bytes + i * CipherBlockBytes + HalfBytes, HalfBytes);
    }
    RunRounds<Way>(state, halves);
    for (std::size_t i = 0; i < Count; ++i) {
        std::memcpy(bytes + i * CipherBlockBytes, &halves.left[i], HalfBytes);
        std::memcpy(bytes + i * CipherBlockBytes + HalfBytes, &halves.right[i], HalfBytes);
    }
}

template <Direction Way>
void RunInLanes(const CipherState& state, unsigned char* bytes, std::size_t length) {
    std::size_t blocks = length / CipherBlockBytes;
    for (; blocks >= Lanes; blocks -= Lanes, bytes += Lanes * CipherBlockBytes) {
        RunBlocks<Way, Lanes>(state, bytes);
    }
    for (; blocks > 0; --blocks, bytes += CipherBlockBytes) {
        RunBlocks<Way, 1>(state, bytes);
    }
}

template <Direction Way>
std::size_t RunGathered(const CipherState& state, unsigned char* bytes, std::size_t length) {
    std::uint32_t subkeys[Rounds + 2];
    for (std::size_t step = 0; step < std::size(subkeys); ++step) {
        subkeys[step] = Subkey<Way>(state, step);
    }
    const std::size_t done = RunBlocksGathered(subkeys, state.boxes, bytes, length);
    ::SecureZeroMemory(subkeys, sizeof(subkeys));
    return done;
}

/// Tries both ways on a few blocks, each often enough for the processor to get up to speed.
bool AreGathersFaster() {
    if (!HasGathers()) {
        return false;
    }
    constexpr int Tries = 8;
    unsigned char bytes[GatherBlocks * Lanes * CipherBlockBytes] = {};
    const auto fewestCycles = [&bytes](auto run) {
        std::uint64_t fewest = ~std::uint64_t{0};
        for (int i = 0; i < Tries; ++i) {
            const std::uint64_t start = ReadCycles();
            run(PublishedTables, bytes, sizeof(bytes));
            fewest = std::min(fewest, ReadCycles() - start);
        }
        return fewest;
    };
    return fewestCycles(RunGathered<Direction::Encipher>) <
           fewestCycles(RunInLanes<Direction::Encipher>);
}

template <Direction Way>
void RunAll(const CipherState& state, void* bytes, std::size_t length) {
    auto* next = static_cast<unsigned char*>(bytes);
    if (length >= GatherBlocks * CipherBlockBytes) {
        static const bool areGathersFaster = AreGathersFaster();
        if (areGathersFaster) {
            const std::size_t done = RunGathered<Way>(state, next, length);
            next += done;
            length -= done;
        }
    }
    RunInLanes<Way>(state, next, length);
}

/// XORs the key, repeated with its terminating zero byte, into the subkeys.
void MixInKey(CipherState& state, const char* key) {
    const std::size_t period = std::strlen(key) + 1;
    std::size_t position = 0;
    for (std::uint32_t& subkey : state.subkeys) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            subkey ^= std::uint32_t{static_cast<unsigned char>(key[position])} << shift;
            position = position + 1 == period ? 0 : position + 1;
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
    Halves<1> halves{};
    const auto fill = [&](auto& words) {
        for (std::size_t i = 0; i < std::size(words); i += 2) {
            RunRounds<Direction::Encipher>(state, halves);
            words[i] = halves.left[0];
            words[i + 1] = halves.right[0];
        }
    };
    fill(state.subkeys);
    for (auto& box : state.boxes) {
        fill(box);
    }
    ::SecureZeroMemory(&halves, sizeof(halves));
}

void ResetCipher(CipherState& state) {
    // Not a plain copy alone: before a state's end the compiler may leave one out.
    ::SecureZeroMemory(&state, sizeof(state));
    state = PublishedTables;
}

void EncipherBlocks(const CipherState& state, void* bytes, std::size_t length) {
    RunAll<Direction::Encipher>(state, bytes, length);
}

void DecipherBlocks(const CipherState& state, void* bytes, std::size_t length) {
    RunAll<Direction::Decipher>(state, bytes, length);
}

}  // namespace lunara
