#pragma once

// Peers for the cipher benchmarks: the general-purpose libraries in Debian that offer Blowfish.
// They compute the published algorithm, which is as much work as ours: same rounds, same tables.
// Each wrapper takes a 16-byte key and works in place on whole 8-byte blocks, without chaining
// (ECB) unless its name says CBC.

#include <gcrypt.h>
#include <nettle/blowfish.h>
#include <openssl/evp.h>
#include <openssl/provider.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace lunara::bench {

inline constexpr unsigned char PeerKey[] = {'e', 'i', 'n', ' ', 'g', 'e', 'h', 'e',
                                            'i', 'm', 'e', 's', 'w', 'o', 'r', 't'};

/// Ends the program with a message unless `condition` holds.
inline void Require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "%s failed\n", what);
        std::exit(1);
    }
}

class OpenSslBlowfish {
  public:
    static constexpr const char* Name = "OpenSSL, legacy provider";

    OpenSslBlowfish() {
        OSSL_PROVIDER_load(nullptr, "default");
        Require(OSSL_PROVIDER_load(nullptr, "legacy") != nullptr, "OpenSSL's legacy provider");
        cipher = EVP_CIPHER_fetch(nullptr, "BF-ECB", nullptr);
        Require(cipher != nullptr, "OpenSSL's BF-ECB");
        for (EVP_CIPHER_CTX** context : {&enciphering, &deciphering}) {
            *context = EVP_CIPHER_CTX_new();
        }
        SetKey();
        EVP_DecryptInit_ex2(deciphering, cipher, PeerKey, nullptr, nullptr);
        EVP_CIPHER_CTX_set_padding(deciphering, 0);
    }
    OpenSslBlowfish(const OpenSslBlowfish&) = delete;
    OpenSslBlowfish& operator=(const OpenSslBlowfish&) = delete;
    ~OpenSslBlowfish() {
        EVP_CIPHER_CTX_free(enciphering);
        EVP_CIPHER_CTX_free(deciphering);
        EVP_CIPHER_free(cipher);
    }

    void SetKey() {
        EVP_EncryptInit_ex2(enciphering, cipher, PeerKey, nullptr, nullptr);
        EVP_CIPHER_CTX_set_padding(enciphering, 0);
    }
    void Encipher(unsigned char* bytes, std::size_t length) {
        int done = 0;
        EVP_EncryptUpdate(enciphering, bytes, &done, bytes, static_cast<int>(length));
    }
    void Decipher(unsigned char* bytes, std::size_t length) {
        int done = 0;
        EVP_DecryptUpdate(deciphering, bytes, &done, bytes, static_cast<int>(length));
    }

  private:
    EVP_CIPHER* cipher = nullptr;
    EVP_CIPHER_CTX* enciphering = nullptr;
    EVP_CIPHER_CTX* deciphering = nullptr;
};

template <int Mode>
class GcryptBlowfish {
  public:
    static constexpr const char* Name =
        Mode == GCRY_CIPHER_MODE_ECB ? "libgcrypt" : "libgcrypt, chained (CBC)";

    GcryptBlowfish() {
        gcry_check_version(nullptr);
        gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
        gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
        Require(gcry_cipher_open(&handle, GCRY_CIPHER_BLOWFISH, Mode, 0) == 0, "libgcrypt");
        SetKey();
    }
    GcryptBlowfish(const GcryptBlowfish&) = delete;
    GcryptBlowfish& operator=(const GcryptBlowfish&) = delete;
    ~GcryptBlowfish() { gcry_cipher_close(handle); }

    void SetKey() { gcry_cipher_setkey(handle, PeerKey, sizeof(PeerKey)); }
    void Encipher(unsigned char* bytes, std::size_t length) {
        gcry_cipher_encrypt(handle, bytes, length, nullptr, 0);
    }
    void Decipher(unsigned char* bytes, std::size_t length) {
        gcry_cipher_decrypt(handle, bytes, length, nullptr, 0);
    }

  private:
    gcry_cipher_hd_t handle = nullptr;
};

class NettleBlowfish {
  public:
    static constexpr const char* Name = "nettle";

    NettleBlowfish() { SetKey(); }

    void SetKey() { blowfish_set_key(&context, sizeof(PeerKey), PeerKey); }
    void Encipher(unsigned char* bytes, std::size_t length) {
        blowfish_encrypt(&context, length, bytes, bytes);
    }
    void Decipher(unsigned char* bytes, std::size_t length) {
        blowfish_decrypt(&context, length, bytes, bytes);
    }

  private:
    blowfish_ctx context{};
};

}  // namespace lunara::bench
