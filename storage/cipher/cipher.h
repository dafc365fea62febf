#pragma once

// The cipher of the data files: Blowfish with three deviations of its own, which every existing
// file relies on. It differs from the published algorithm in that
//   1. the key's terminating zero byte takes part in the key expansion,
//   2. bytes become words, of the key and of the blocks, with the least significant byte first, and
//   3. the round function indexes S-box 0 with the least significant byte and S-box 3 with the most
//      significant one.
// A Blowfish library therefore does not read these files.

#include <cstddef>
#include <cstdint>

namespace lunara {

/// Bytes of one block.
inline constexpr std::size_t CipherBlockBytes = 8;

/// Subkeys and S-boxes, as the key left them. Nothing wipes it by itself: see `ResetCipher`.
struct CipherState {
    alignas(64) std::uint32_t subkeys[18];
    std::uint32_t boxes[4][256];
};

/// The state before any key: the hexadecimal digits of pi.
extern const CipherState PublishedTables;

/// Expands `key`, bytes up to a terminating zero, into the state. Bytes from the 73rd on have no
/// effect. An empty or null key leaves the published tables.
void InitCipher(CipherState& state, const char* key);

/// Overwrites what the key made of the state and leaves the published tables.
void ResetCipher(CipherState& state);

/// Encipher or decipher length / 8 blocks in place, each by itself, so that records may be taken
/// together or apart; a remainder of up to 7 bytes stays as it is. `bytes` needs no alignment.
void EncipherBlocks(const CipherState& state, void* bytes, std::size_t length);
void DecipherBlocks(const CipherState& state, void* bytes, std::size_t length);

}  // namespace lunara
