#pragma once

// Chooses the fastest way through the cipher for many blocks. The plain version is `EncipherBlock`
// and `DecipherBlock` of cipher.h, one block after the other; every result is the same.

#include "storage/cipher/cipher.h"

namespace lunara {

/// Encipher or decipher a multiple of 8 bytes in place, from the first one on, and return how many:
/// all but fewer than `LaneBlocks` blocks and a remainder. The caller does the rest plainly.
[[nodiscard]] std::size_t EncipherManyBlocks(const CipherState& state, unsigned char* bytes,
                                             std::size_t length);
[[nodiscard]] std::size_t DecipherManyBlocks(const CipherState& state, unsigned char* bytes,
                                             std::size_t length);

}  // namespace lunara
