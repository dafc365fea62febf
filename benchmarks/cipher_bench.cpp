// Times the cipher of the data files: bulk throughput and key set-up. The peers are the libraries
// that offer the published Blowfish.

#include "storage/cipher/cipher.h"

#include <memory>

#include "benchmarks/blowfish_peers.h"
#include "benchmarks/report.h"

namespace lunara::bench {
namespace {

constexpr std::size_t BufferBytes = std::size_t{1} << 20;

class LunaraCipher {
  public:
    static constexpr const char* Name = "lunara";

    LunaraCipher() { SetKey(); }

    void SetKey() { InitCipher(state, "ein geheimeswort"); }
    void Encipher(unsigned char* bytes, std::size_t length) {
        EncipherBlocks(state, bytes, length);
    }
    void Decipher(unsigned char* bytes, std::size_t length) {
        DecipherBlocks(state, bytes, length);
    }

  private:
    CipherState state{};
};

template <typename Cipher>
void AddBulk(const char* group, void (Cipher::*operation)(unsigned char*, std::size_t)) {
    AddCase(
        std::string(group) + '/' + Cipher::Name, Time::Processor,
        [operation](benchmark::State& state) {
            Cipher cipher;
            std::vector<unsigned char> buffer(BufferBytes, 0x5A);
            for (auto _ : state) {
                (cipher.*operation)(buffer.data(), buffer.size());
                benchmark::DoNotOptimize(buffer.data());
            }
            state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(BufferBytes));
        });
}

template <typename Cipher>
void AddKeySetUp() {
    AddCase(std::string("key set-up/") + Cipher::Name, Time::Processor,
            [](benchmark::State& state) {
                Cipher cipher;
                for (auto _ : state) {
                    cipher.SetKey();
                    benchmark::DoNotOptimize(&cipher);
                }
            });
}

template <typename... Ciphers>
void AddAll() {
    (AddBulk<Ciphers>("encipher", &Ciphers::Encipher), ...);
    (AddBulk<Ciphers>("decipher", &Ciphers::Decipher), ...);
    (AddKeySetUp<Ciphers>(), ...);
}

}  // namespace
}  // namespace lunara::bench

int main(int argc, char** argv) {
    using namespace lunara::bench;
    AddAll<LunaraCipher, OpenSslBlowfish, GcryptBlowfish<GCRY_CIPHER_MODE_ECB>, NettleBlowfish>();
    // CBC although ours is ECB: libgcrypt is the one peer that deciphers four blocks at once, and
    // it does so only in this mode.
    using Chained = GcryptBlowfish<GCRY_CIPHER_MODE_CBC>;
    AddBulk<Chained>("decipher", &Chained::Decipher);
    return RunAll(argc, argv, "1 MiB in place on one core, 16 bytes of key");
}
