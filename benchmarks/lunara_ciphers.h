#pragma once

// Our own ways through the cipher, in the form of the peers of blowfish_peers.h, so that one run
// shows what each fast way gains over the plain one.

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "storage/cipher/cipher.h"
#include "storage/cipher/cipher_lanes.h"

namespace lunara::bench {

class CipherWithKey {
  public:
    CipherWithKey() { SetKey(); }

    void SetKey() { InitCipher(state, "ein geheimeswort"); }

  protected:
    CipherState state{};
};

/// What the program uses.
class LunaraCipher : public CipherWithKey {
  public:
    static constexpr const char* Name = "lunara";

    void Encipher(unsigned char* bytes, std::size_t length) {
        EncipherBlocks(state, bytes, length);
    }
    void Decipher(unsigned char* bytes, std::size_t length) {
        DecipherBlocks(state, bytes, length);
    }
};

/// Six blocks side by side: what the program uses on a processor with slow gathers or none.
class LunaraInLanes : public CipherWithKey {
  public:
    static constexpr const char* Name = "lunara, six blocks side by side";

    void Encipher(unsigned char* bytes, std::size_t length) {
        Run(state.subkeys, bytes, length, EncipherBlock);
    }
    void Decipher(unsigned char* bytes, std::size_t length) {
        std::uint32_t reversed[CipherSubkeys];
        std::reverse_copy(std::begin(state.subkeys), std::end(state.subkeys), reversed);
        Run(reversed, bytes, length, DecipherBlock);
    }

  private:
    template <typename RunBlock>
    void Run(const std::uint32_t* subkeys, unsigned char* bytes, std::size_t length,
             RunBlock runBlock) {
        std::size_t done = RunBlocksInLanes(subkeys, state.boxes, bytes, length);
        for (; length - done >= CipherBlockBytes; done += CipherBlockBytes) {
            runBlock(state, bytes + done);
        }
    }
};

/// The plain version.
class LunaraPlain : public CipherWithKey {
  public:
    static constexpr const char* Name = "lunara, block by block";

    void Encipher(unsigned char* bytes, std::size_t length) {
        for (; length >= CipherBlockBytes; length -= CipherBlockBytes, bytes += CipherBlockBytes) {
            EncipherBlock(state, bytes);
        }
    }
    void Decipher(unsigned char* bytes, std::size_t length) {
        for (; length >= CipherBlockBytes; length -= CipherBlockBytes, bytes += CipherBlockBytes) {
            DecipherBlock(state, bytes);
        }
    }
};

}  // namespace lunara::bench
