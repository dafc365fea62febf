// The cipher of the data files beside its plain version and the libraries that offer the published
// Blowfish.

#include "benchmarks/blowfish_peers.h"
#include "benchmarks/lunara_ciphers.h"
#include "benchmarks/report.h"

namespace lunara::bench {
namespace {

constexpr std::size_t BufferBytes = std::size_t{1} << 20;

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
void AddAllBulk() {
    (AddBulk<Ciphers>("encipher", &Ciphers::Encipher), ...);
    (AddBulk<Ciphers>("decipher", &Ciphers::Decipher), ...);
}

template <typename... Ciphers>
void AddAllKeySetUps() {
    (AddKeySetUp<Ciphers>(), ...);
}

}  // namespace
}  // namespace lunara::bench

int main(int argc, char** argv) {
    using namespace lunara::bench;
    using Gcrypt = GcryptBlowfish<GCRY_CIPHER_MODE_ECB>;
    AddAllBulk<LunaraCipher, LunaraInLanes, LunaraPlain, OpenSslBlowfish, Gcrypt, NettleBlowfish>();
    // Another mode than ours, for comparison: the one library that takes four blocks at once does
    // so only there.
    using Chained = GcryptBlowfish<GCRY_CIPHER_MODE_CBC>;
    AddBulk<Chained>("decipher", &Chained::Decipher);
    AddAllKeySetUps<LunaraCipher, OpenSslBlowfish, Gcrypt, NettleBlowfish>();
    return RunAll(argc, argv, "1 MiB in place on one core, 16 bytes of key");
}
