// Decryption of the 256-bit-block cipher with VAES on 256-bit registers. The layout is
// transposed: one register holds the left halves of two blocks, another their right halves,
// so the blend and shuffle of each round stay inside the 128-bit lanes (the same masks in
// both) and lanes only move when blocks are loaded and stored. Eight blocks are in flight.
// Only this file's functions carry AVX2 and VAES.
#include "crypto/Rijndael256Hardware.h"
#include "crypto/Rijndael256Permutation.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>

#define KELVORA_VAES __attribute__((target("vaes,avx2,aes,ssse3,sse4.1")))

namespace kelvora {
namespace {

constexpr int kPairs = 4; // two blocks per pair

KELVORA_VAES inline __m256i Load(const std::uint8_t* bytes) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
}

KELVORA_VAES inline __m256i BothLanes(const std::uint8_t* bytes) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
}

// Pair holds two blocks transposed: x = left halves of both, y = right halves of both.
struct Pair {
    __m256i x;
    __m256i y;
};

KELVORA_VAES inline Pair Transpose(__m256i first, __m256i second) {
    return {_mm256_permute2x128_si256(first, second, 0x20),
            _mm256_permute2x128_si256(first, second, 0x31)};
}

KELVORA_VAES inline __m256i Permute(__m256i own, __m256i other, __m256i blend, __m256i shuffle) {
    return _mm256_shuffle_epi8(_mm256_blendv_epi8(own, other, blend), shuffle);
}

} // namespace

KELVORA_VAES void Rijndael256DecryptCbcVaes(const HardwareRoundKeys& keys, const std::uint8_t* in,
                                            std::uint8_t* out, std::size_t count,
                                            std::uint8_t* iv) {
    constexpr std::size_t kGroupBlocks = 2 * kPairs;
    const __m256i blend = BothLanes(kDecryptPermutation.blend);
    const __m256i shuffle = BothLanes(kDecryptPermutation.shuffle);
    Pair k[kHardwareRounds + 1];
    for (int round = 0; round <= kHardwareRounds; ++round) {
        k[round] = {BothLanes(keys.decrypt[round]), BothLanes(keys.decrypt[round] + 16)};
    }
    __m256i previous = Load(iv);
    std::size_t n = 0;
    for (; n + kGroupBlocks <= count; n += kGroupBlocks) {
        const std::uint8_t* group = in + 32 * n;
        Pair s[kPairs];
        for (int i = 0; i < kPairs; ++i) {
            const Pair loaded = Transpose(Load(group + 64 * i), Load(group + 64 * i + 32));
            s[i] = {_mm256_xor_si256(loaded.x, k[0].x), _mm256_xor_si256(loaded.y, k[0].y)};
        }
        for (int round = 1; round < kHardwareRounds; ++round) {
            for (Pair& pair : s) {
                const __m256i t = Permute(pair.x, pair.y, blend, shuffle);
                const __m256i u = Permute(pair.y, pair.x, blend, shuffle);
                pair = {_mm256_aesdec_epi128(t, k[round].x), _mm256_aesdec_epi128(u, k[round].y)};
            }
        }
        for (Pair& pair : s) {
            const __m256i t = Permute(pair.x, pair.y, blend, shuffle);
            const __m256i u = Permute(pair.y, pair.x, blend, shuffle);
            pair = {_mm256_aesdeclast_epi128(t, k[kHardwareRounds].x),
                    _mm256_aesdeclast_epi128(u, k[kHardwareRounds].y)};
        }
        // Back to block order, each block XORed with the ciphertext before it. All of the
        // group's ciphertext is read before anything is stored, so in may equal out.
        __m256i plain[kGroupBlocks];
        for (int i = 0; i < kPairs; ++i) {
            const Pair blocks = Transpose(s[i].x, s[i].y);
            const __m256i before =
                i == 0 ? previous : Load(group + 32 * static_cast<std::size_t>(2 * i - 1));
            plain[2 * i] = _mm256_xor_si256(blocks.x, before);
            plain[2 * i + 1] =
                _mm256_xor_si256(blocks.y, Load(group + 32 * static_cast<std::size_t>(2 * i)));
        }
        previous = Load(group + 32 * (kGroupBlocks - 1));
        for (std::size_t i = 0; i < kGroupBlocks; ++i) {
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 32 * (n + i)), plain[i]);
        }
    }
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(iv), previous);
    // The last few blocks take the 128-bit kernel, chaining from iv.
    Rijndael256DecryptCbcAesNi(keys, in + 32 * n, out + 32 * n, count - n, iv);
}

} // namespace kelvora

#else // no x86: CipherPathAvailable never offers this path

namespace kelvora {
void Rijndael256DecryptCbcVaes(const HardwareRoundKeys&, const std::uint8_t*, std::uint8_t*,
                               std::size_t, std::uint8_t*) {}
} // namespace kelvora

#endif
