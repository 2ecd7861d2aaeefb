// The 256-bit-block cipher on AES instructions. The state sits in two 128-bit halves, x
// (columns 0-3) and y (columns 4-7); AESENC and AESDEC work per column except for their
// ShiftRows, which stays inside a half. Before each of them one fixed byte permutation, a
// blend across the halves and a shuffle inside each, moves the bytes so that AES's ShiftRows
// per half lands every byte where the 256-bit block's ShiftRows (rows moved by 1, 3 and 4
// columns) puts it. SubBytes commutes with the permutation, so each step is exactly one round.
// Only the functions here carry the instruction sets, so the rest of the program stays
// baseline x86-64.
#include "crypto/Rijndael256Hardware.h"
#include "crypto/Rijndael256Permutation.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>

#define KELVORA_AESNI __attribute__((target("aes,ssse3,sse4.1")))

namespace kelvora {
namespace {

struct Permutation128 {
    __m128i blend;   // 0x80 where a byte comes from the other half
    __m128i shuffle; // then where each byte of a half comes from inside it
};

KELVORA_AESNI inline __m128i Load(const std::uint8_t* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

KELVORA_AESNI inline void Store(std::uint8_t* bytes, __m128i value) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), value);
}

KELVORA_AESNI inline Permutation128 LoadPermutation(const RoundPermutation& masks) {
    return {Load(masks.blend), Load(masks.shuffle)};
}

KELVORA_AESNI inline __m128i Permute(__m128i own, __m128i other, const Permutation128& p) {
    return _mm_shuffle_epi8(_mm_blendv_epi8(own, other, p.blend), p.shuffle);
}

// Halves of one block, for the rounds on it.
struct Block128 {
    __m128i x;
    __m128i y;
};

KELVORA_AESNI inline Block128 LoadBlock(const std::uint8_t* bytes) {
    return {Load(bytes), Load(bytes + 16)};
}

KELVORA_AESNI inline void StoreBlock(std::uint8_t* bytes, Block128 block) {
    Store(bytes, block.x);
    Store(bytes + 16, block.y);
}

KELVORA_AESNI inline Block128 Xor(Block128 a, Block128 b) {
    return {_mm_xor_si128(a.x, b.x), _mm_xor_si128(a.y, b.y)};
}

KELVORA_AESNI inline Block128 RoundKey(const std::uint8_t (&keys)[kHardwareRounds + 1][32],
                                       int round) {
    return LoadBlock(keys[round]);
}

enum class Step { Encrypt, EncryptLast, Decrypt, DecryptLast };

template <Step kStep> KELVORA_AESNI inline __m128i AesStep(__m128i half, __m128i key) {
    if constexpr (kStep == Step::Encrypt) {
        return _mm_aesenc_si128(half, key);
    } else if constexpr (kStep == Step::EncryptLast) {
        return _mm_aesenclast_si128(half, key);
    } else if constexpr (kStep == Step::Decrypt) {
        return _mm_aesdec_si128(half, key);
    } else {
        return _mm_aesdeclast_si128(half, key);
    }
}

// Round is one round of the 256-bit block: the permutation, then the AES step on each half.
template <Step kStep>
KELVORA_AESNI inline Block128 Round(Block128 s, Block128 key, const Permutation128& p) {
    const __m128i t = Permute(s.x, s.y, p);
    const __m128i u = Permute(s.y, s.x, p);
    return {AesStep<kStep>(t, key.x), AesStep<kStep>(u, key.y)};
}

// DecryptBlocks runs the inverse rounds on kWidth independent blocks side by side, so the
// instructions of one block fill the latency of another's.
template <std::size_t kWidth>
KELVORA_AESNI inline void DecryptBlocks(const HardwareRoundKeys& keys, const Permutation128& p,
                                        Block128 (&s)[kWidth]) {
    const Block128 first = RoundKey(keys.decrypt, 0);
    for (Block128& block : s) {
        block = Xor(block, first);
    }
    for (int round = 1; round < kHardwareRounds; ++round) {
        const Block128 key = RoundKey(keys.decrypt, round);
        for (Block128& block : s) {
            block = Round<Step::Decrypt>(block, key, p);
        }
    }
    const Block128 last = RoundKey(keys.decrypt, kHardwareRounds);
    for (Block128& block : s) {
        block = Round<Step::DecryptLast>(block, last, p);
    }
}

} // namespace

KELVORA_AESNI void Rijndael256EncryptCbcAesNi(const HardwareRoundKeys& keys, const std::uint8_t* in,
                                              std::uint8_t* out, std::size_t count,
                                              std::uint8_t* iv) {
    const Permutation128 p = LoadPermutation(kEncryptPermutation);
    Block128 k[kHardwareRounds + 1];
    for (int round = 0; round <= kHardwareRounds; ++round) {
        k[round] = RoundKey(keys.encrypt, round);
    }
    Block128 chain = LoadBlock(iv);
    for (std::size_t n = 0; n < count; ++n) {
        // The first key goes onto the plain block before the chaining value arrives, which
        // keeps one XOR off the serial path.
        Block128 s = Xor(Xor(LoadBlock(in + 32 * n), k[0]), chain);
        for (int round = 1; round < kHardwareRounds; ++round) {
            s = Round<Step::Encrypt>(s, k[round], p);
        }
        chain = Round<Step::EncryptLast>(s, k[kHardwareRounds], p);
        StoreBlock(out + 32 * n, chain);
    }
    StoreBlock(iv, chain);
}

// Every ciphertext a group needs is read before its plain blocks are stored, so in and out
// may be the same buffer.
KELVORA_AESNI void Rijndael256DecryptCbcAesNi(const HardwareRoundKeys& keys, const std::uint8_t* in,
                                              std::uint8_t* out, std::size_t count,
                                              std::uint8_t* iv) {
    constexpr std::size_t kWidth = 4;
    const Permutation128 p = LoadPermutation(kDecryptPermutation);
    Block128 previous = LoadBlock(iv);
    std::size_t n = 0;
    for (; n + kWidth <= count; n += kWidth) {
        const std::uint8_t* group = in + 32 * n;
        Block128 s[kWidth];
        for (std::size_t i = 0; i < kWidth; ++i) {
            s[i] = LoadBlock(group + 32 * i);
        }
        DecryptBlocks(keys, p, s);
        s[0] = Xor(s[0], previous);
        for (std::size_t i = 1; i < kWidth; ++i) {
            s[i] = Xor(s[i], LoadBlock(group + 32 * (i - 1)));
        }
        previous = LoadBlock(group + 32 * (kWidth - 1));
        for (std::size_t i = 0; i < kWidth; ++i) {
            StoreBlock(out + 32 * (n + i), s[i]);
        }
    }
    for (; n < count; ++n) {
        const Block128 cipher = LoadBlock(in + 32 * n);
        Block128 s[1] = {cipher};
        DecryptBlocks(keys, p, s);
        StoreBlock(out + 32 * n, Xor(s[0], previous));
        previous = cipher;
    }
    StoreBlock(iv, previous);
}

} // namespace kelvora

#else // no x86: CipherPathAvailable never offers these paths

namespace kelvora {
void Rijndael256EncryptCbcAesNi(const HardwareRoundKeys&, const std::uint8_t*, std::uint8_t*,
                                std::size_t, std::uint8_t*) {}
void Rijndael256DecryptCbcAesNi(const HardwareRoundKeys&, const std::uint8_t*, std::uint8_t*,
                                std::size_t, std::uint8_t*) {}
} // namespace kelvora

#endif
