#pragma once

// Chooses the fastest way through the cipher for many blocks. The plain version is `EncipherBlock`
// and `DecipherBlock` of cipher.h, one block after the other; every result is the same.

#include "storage/cipher/cipher.h"

namespace lunara {

/// Encipher or decipher whole groups of blocks in place, from the first byte on, and return the
/// number of bytes done, a multiple of 8. Fewer than `LaneBlocks` * 8 bytes are left at the end;
/// the caller passes those to `EncipherBlock` or `DecipherBlock`.
[[nodiscard]] std::size_t EncipherManyBlocks(const CipherState& state, unsigned char* bytes,
                                             std::size_t length);
[[nodiscard]] std::size_t DecipherManyBlocks(const CipherState& state, unsigned char* bytes,
                                             std::size_t length);

}  // namespace lunara
