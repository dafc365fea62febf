#pragma once

// The cipher of the data files: Blowfish with three deviations that every existing file relies on.
//   1. The key's terminating zero byte takes part in the key expansion.
//   2. Bytes become words, of the key and of the blocks, least significant byte first.
//   3. The round function indexes S-box 0 with the least significant byte of its argument and S-box
//      3 with the most significant one.
// A Blowfish library therefore does not read these files.
//
// cipher.cpp is the whole cipher in its plain form: key set-up, one block, many blocks.
// cipher_fast.h enciphers many blocks at once, with the same result; skip it at first reading.

#include <cstddef>
#include <cstdint>

namespace lunara {

/// Bytes of one block: two 32-bit halves.
inline constexpr std::size_t CipherBlockBytes = 8;

/// Rounds of a block. Each takes one subkey, and the two halves take one more each at the end.
inline constexpr std::size_t CipherRounds = 16;
inline constexpr std::size_t CipherSubkeys = CipherRounds + 2;

using CipherBoxes = std::uint32_t[4][256];

/// Subkeys and S-boxes, as the key left them. The destructor wipes nothing: call `ResetCipher`.
struct CipherState {
    alignas(64) std::uint32_t subkeys[CipherSubkeys];
    CipherBoxes boxes;
};

/// The state before any key: the hexadecimal digits of pi.
extern const CipherState PublishedTables;

/// Expands `key`, the bytes up to a terminating zero, into the state. Bytes from the 73rd on have
/// no effect. An empty or null key leaves the published tables.
void InitCipher(CipherState& state, const char* key);

/// Overwrites all that depends on the key and leaves the published tables.
void ResetCipher(CipherState& state);

/// Enciphers or deciphers the 8 bytes at `block` in place. `block` needs no alignment.
void EncipherBlock(const CipherState& state, void* block);
void DecipherBlock(const CipherState& state, void* block);

/// Enciphers or deciphers length / 8 blocks in place; a remainder of up to 7 bytes stays as it is.
/// Blocks do not depend on each other, so one call may take any number of records. `bytes` needs
/// no alignment.
void EncipherBlocks(const CipherState& state, void* bytes, std::size_t length);
void DecipherBlocks(const CipherState& state, void* bytes, std::size_t length);

}  // namespace lunara
