#include "storage/cipher/cipher_lanes.h"

#include <bit>
#include <cstring>

namespace lunara {
namespace {

static_assert(std::endian::native == std::endian::little, "a block is copied into its halves");

constexpr std::size_t HalfBytes = CipherBlockBytes / 2;
constexpr std::size_t GroupBytes = LaneBlocks * CipherBlockBytes;

inline std::uint32_t RoundFunction(const CipherBoxes& boxes, std::uint32_t x) {
    return ((boxes[0][x & 0xFF] + boxes[1][x >> 8 & 0xFF]) ^ boxes[2][x >> 16 & 0xFF]) +
           boxes[3][x >> 24];
}

void RunGroup(const std::uint32_t* subkeys, const CipherBoxes& boxes, unsigned char* bytes) {
    std::uint32_t left[LaneBlocks];
    std::uint32_t right[LaneBlocks];
    for (std::size_t i = 0; i < LaneBlocks; ++i) {
        std::memcpy(&left[i], bytes + i * CipherBlockBytes, HalfBytes);
        std::memcpy(&right[i], bytes + i * CipherBlockBytes + HalfBytes, HalfBytes);
    }
    // Two rounds a turn: the second one exchanges the roles of the halves, so nothing is swapped.
    // Unrolled in full, because the subkeys' addresses then cost no instructions.
#pragma GCC unroll 8
    for (std::size_t round = 0; round < CipherRounds; round += 2) {
        for (std::size_t i = 0; i < LaneBlocks; ++i) {
            left[i] ^= subkeys[round];
            right[i] ^= RoundFunction(boxes, left[i]);
        }
        for (std::size_t i = 0; i < LaneBlocks; ++i) {
            right[i] ^= subkeys[round + 1];
            left[i] ^= RoundFunction(boxes, right[i]);
        }
    }
    for (std::size_t i = 0; i < LaneBlocks; ++i) {
        left[i] ^= subkeys[CipherRounds];
        right[i] ^= subkeys[CipherRounds + 1];
        std::memcpy(bytes + i * CipherBlockBytes, &right[i], HalfBytes);
        std::memcpy(bytes + i * CipherBlockBytes + HalfBytes, &left[i], HalfBytes);
    }
}

}  // namespace

std::size_t RunBlocksInLanes(const std::uint32_t* subkeys, const CipherBoxes& boxes,
                             unsigned char* bytes, std::size_t length) {
    std::size_t done = 0;
    for (; length - done >= GroupBytes; done += GroupBytes) {
        RunGroup(subkeys, boxes, bytes + done);
    }
    return done;
}

}  // namespace lunara
