#include "storage/cipher/cipher_gather.h"

// Compiled with AVX2 instructions, unlike every other file. It must not call or instantiate inline
// functions of shared headers: the linker keeps one copy of each for the whole program, which may
// be the one from here, and that would crash on a processor without AVX2.

#ifdef __AVX2__
#include <immintrin.h>
#endif

namespace lunara {

#ifdef __AVX2__

namespace {

constexpr std::size_t VectorWords = 8;
constexpr std::size_t Vectors = GatherBlocks / VectorWords;  // of each half
constexpr std::size_t VectorBytes = VectorWords * sizeof(std::uint32_t);
constexpr std::size_t GroupBytes = GatherBlocks * CipherBlockBytes;

inline __m256i LookUp(const std::uint32_t* box, __m256i indices) {
    return _mm256_i32gather_epi32(reinterpret_cast<const int*>(box), indices, 4);
}

inline __m256i RoundFunction(const CipherBoxes& boxes, __m256i x) {
    const __m256i lowByte = _mm256_set1_epi32(0xFF);
    const __m256i first = LookUp(boxes[0], _mm256_and_si256(x, lowByte));
    const __m256i second = LookUp(boxes[1], _mm256_and_si256(_mm256_srli_epi32(x, 8), lowByte));
    const __m256i third = LookUp(boxes[2], _mm256_and_si256(_mm256_srli_epi32(x, 16), lowByte));
    const __m256i fourth = LookUp(boxes[3], _mm256_srli_epi32(x, 24));
    return _mm256_add_epi32(_mm256_xor_si256(_mm256_add_epi32(first, second), third), fourth);
}

inline __m256i Subkey(const std::uint32_t* subkeys, std::size_t step) {
    return _mm256_set1_epi32(static_cast<int>(subkeys[step]));
}

// Two vectors hold eight blocks, whose left and right halves alternate. Loading sorts the left
// halves into one vector and the right halves into the other. The order within a vector (0 1 4 5 2
// 3 6 7) does not matter, because storing undoes it.

inline void LoadHalves(const unsigned char* bytes, __m256i& left, __m256i& right) {
    const __m256 low = _mm256_loadu_ps(reinterpret_cast<const float*>(bytes));
    const __m256 high = _mm256_loadu_ps(reinterpret_cast<const float*>(bytes + VectorBytes));
    left = _mm256_castps_si256(_mm256_shuffle_ps(low, high, 0x88));
    right = _mm256_castps_si256(_mm256_shuffle_ps(low, high, 0xDD));
}

inline void StoreHalves(unsigned char* bytes, __m256i left, __m256i right) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(bytes), _mm256_unpacklo_epi32(left, right));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(bytes + VectorBytes),
                        _mm256_unpackhi_epi32(left, right));
}

inline void RunGroup(const std::uint32_t* subkeys, const CipherBoxes& boxes, unsigned char* bytes) {
    __m256i left[Vectors];
    __m256i right[Vectors];
    for (std::size_t i = 0; i < Vectors; ++i) {
        LoadHalves(bytes + 2 * VectorBytes * i, left[i], right[i]);
    }
    for (std::size_t round = 0; round < CipherRounds; round += 2) {
        for (std::size_t i = 0; i < Vectors; ++i) {
            left[i] = _mm256_xor_si256(left[i], Subkey(subkeys, round));
            right[i] = _mm256_xor_si256(right[i], RoundFunction(boxes, left[i]));
        }
        for (std::size_t i = 0; i < Vectors; ++i) {
            right[i] = _mm256_xor_si256(right[i], Subkey(subkeys, round + 1));
            left[i] = _mm256_xor_si256(left[i], RoundFunction(boxes, right[i]));
        }
    }
    for (std::size_t i = 0; i < Vectors; ++i) {
        StoreHalves(bytes + 2 * VectorBytes * i,
                    _mm256_xor_si256(right[i], Subkey(subkeys, CipherRounds + 1)),
                    _mm256_xor_si256(left[i], Subkey(subkeys, CipherRounds)));
    }
}

}  // namespace

bool HasGathers() { return __builtin_cpu_supports("avx2") != 0; }

std::size_t RunBlocksGathered(const std::uint32_t* subkeys, const CipherBoxes& boxes,
                              unsigned char* bytes, std::size_t length) {
    if (!HasGathers()) {
        return 0;
    }
    std::size_t done = 0;
    for (; length - done >= GroupBytes; done += GroupBytes) {
        RunGroup(subkeys, boxes, bytes + done);
    }
    return done;
}

std::uint64_t ReadCycles() { return __rdtsc(); }

#else

bool HasGathers() { return false; }

std::size_t RunBlocksGathered(const std::uint32_t* /*subkeys*/, const CipherBoxes& /*boxes*/,
                              unsigned char* /*bytes*/, std::size_t /*length*/) {
    return 0;
}

std::uint64_t ReadCycles() { return 0; }

#endif

}  // namespace lunara
