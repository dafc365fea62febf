#pragma once

// The cipher's rounds on 32 blocks at once, with the AVX2 instruction that looks up eight table
// words ("gather"). The plain version is `EncipherBlock` of cipher.h.
//
// Gain (cipher_bench and data_file_bench, g++ 12 on an Intel Xeon with gathers): 2.7 times the
// plain version's throughput and 1.4 to 2 times that of cipher_lanes.h; deciphering a diary of 40
// years takes 1.1 ms instead of 3.0 and 1.9 ms. Loading it takes 1.3 ms in all.
//
// Some processors gather faster than they load one word after the other, some slower (above all
// with microcode that guards gathers against leaks), and no processor tells which. cipher_fast.cpp
// times both.

#include "storage/cipher/cipher.h"

namespace lunara {

/// Blocks that go through the rounds together: four vectors of each half, so that the look-ups of
/// one vector fill the time in which another one waits for its own.
inline constexpr std::size_t GatherBlocks = 32;

/// Whether the processor has the gather instruction; false in a build for another architecture.
bool HasGathers();

/// Takes groups of `GatherBlocks` blocks, from the first one on, through the rounds and returns how
/// many bytes that were: 0 without gathers. `subkeys`: 18 of them, in the order of their use
/// (deciphering: reversed).
[[nodiscard]] std::size_t RunBlocksGathered(const std::uint32_t* subkeys, const CipherBoxes& boxes,
                                            unsigned char* bytes, std::size_t length);

/// The processor's time-stamp counter; 0 without gathers.
std::uint64_t ReadCycles();

}  // namespace lunara
