#pragma once

// The cipher's rounds on many blocks at once, for processors that look up eight table words with
// one instruction. Some do that faster than one word after the other and some slower, and no
// processor says which: the caller tries it.

#include <cstddef>
#include <cstdint>

namespace lunara {

using CipherBoxes = std::uint32_t[4][256];

/// Blocks that are taken together.
inline constexpr std::size_t GatherBlocks = 32;

/// The processor has the instructions (and this program was built for that kind of processor).
bool HasGathers();

/// Takes groups of `GatherBlocks` blocks through the rounds with the 18 `subkeys` in the order of
/// their use, and returns how many bytes were done: none where there are no gathers.
std::size_t RunBlocksGathered(const std::uint32_t* subkeys, const CipherBoxes& boxes,
                              unsigned char* bytes, std::size_t length);

/// The processor's own clock.
std::uint64_t ReadCycles();

}  // namespace lunara
