#include "crypto/RijndaelBlock256.h"

#include <array>

namespace kelvora {
namespace {

constexpr std::size_t kColumns = 8;
constexpr std::size_t kRounds = 14;
using State = std::array<std::uint32_t, kColumns>;

// The helpers are forced inline: the eight columns only stay in registers when a whole block
// is one function, and -O2 would otherwise keep the rounds as calls.

// Row r of output column C comes from input column C + shift (rows 1..3 shift 1, 3, 4) when
// encrypting, and from C - shift when decrypting.
template <std::size_t C>
[[gnu::always_inline]] inline std::uint32_t EncryptColumn(const RijndaelTables& t, const State& s,
                                                          std::uint32_t key) {
    return t.encrypt[0][ByteOf(s[C], 0)] ^ t.encrypt[1][ByteOf(s[(C + 1) % kColumns], 1)] ^
           t.encrypt[2][ByteOf(s[(C + 3) % kColumns], 2)] ^
           t.encrypt[3][ByteOf(s[(C + 4) % kColumns], 3)] ^ key;
}

template <std::size_t C>
[[gnu::always_inline]] inline std::uint32_t DecryptColumn(const RijndaelTables& t, const State& s,
                                                          std::uint32_t key) {
    return t.decrypt[0][ByteOf(s[C], 0)] ^ t.decrypt[1][ByteOf(s[(C + 7) % kColumns], 1)] ^
           t.decrypt[2][ByteOf(s[(C + 5) % kColumns], 2)] ^
           t.decrypt[3][ByteOf(s[(C + 4) % kColumns], 3)] ^ key;
}

// The last round has no MixColumns: each row takes the bare S-box byte.
template <std::size_t C>
[[gnu::always_inline]] inline std::uint32_t
LastColumn(const std::array<std::uint8_t, 256>& box, const State& s, std::size_t shift1,
           std::size_t shift2, std::size_t shift3, std::uint32_t key) {
    return (std::uint32_t{box[ByteOf(s[C], 0)]} |
            std::uint32_t{box[ByteOf(s[(C + shift1) % kColumns], 1)]} << 8 |
            std::uint32_t{box[ByteOf(s[(C + shift2) % kColumns], 2)]} << 16 |
            std::uint32_t{box[ByteOf(s[(C + shift3) % kColumns], 3)]} << 24) ^
           key;
}

template <bool kEncrypt, std::size_t... C>
[[gnu::always_inline]] inline void Round(const RijndaelTables& t, const State& in, State& out,
                                         const std::uint32_t* k, std::index_sequence<C...>) {
    if constexpr (kEncrypt) {
        ((out[C] = EncryptColumn<C>(t, in, k[C])), ...);
    } else {
        ((out[C] = DecryptColumn<C>(t, in, k[C])), ...);
    }
}

template <bool kEncrypt, std::size_t... C>
[[gnu::always_inline]] inline void LastRound(const RijndaelTables& t, const State& in, State& out,
                                             const std::uint32_t* k, std::index_sequence<C...>) {
    if constexpr (kEncrypt) {
        ((out[C] = LastColumn<C>(t.sbox, in, 1, 3, 4, k[C])), ...);
    } else {
        ((out[C] = LastColumn<C>(t.inverseSbox, in, 7, 5, 4, k[C])), ...);
    }
}

template <bool kEncrypt>
[[gnu::always_inline]] inline void CryptBlock(const RijndaelTables& t, const std::uint32_t* keys,
                                              State& state) {
    constexpr auto columns = std::make_index_sequence<kColumns>{};
    for (std::size_t c = 0; c < kColumns; ++c) {
        state[c] ^= keys[c];
    }
    State other;
#pragma GCC unroll 6
    for (std::size_t round = 1; round < kRounds - 1; round += 2) {
        Round<kEncrypt>(t, state, other, keys + round * kColumns, columns);
        Round<kEncrypt>(t, other, state, keys + (round + 1) * kColumns, columns);
    }
    Round<kEncrypt>(t, state, other, keys + (kRounds - 1) * kColumns, columns);
    LastRound<kEncrypt>(t, other, state, keys + kRounds * kColumns, columns);
}

[[gnu::always_inline]] inline void Load(const std::uint8_t* bytes, State& state) {
    for (std::size_t c = 0; c < kColumns; ++c) {
        state[c] = LoadWordLe(bytes + 4 * c);
    }
}

[[gnu::always_inline]] inline void Store(const State& state, std::uint8_t* bytes) {
    for (std::size_t c = 0; c < kColumns; ++c) {
        StoreWordLe(state[c], bytes + 4 * c);
    }
}

} // namespace

void Rijndael256EncryptCbc(const RijndaelTables& tables, const RijndaelSchedule& schedule,
                           const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                           std::uint8_t* iv) {
    State chain;
    Load(iv, chain);
    for (std::size_t n = 0; n < count; ++n, in += 4 * kColumns, out += 4 * kColumns) {
        State block;
        Load(in, block);
        for (std::size_t c = 0; c < kColumns; ++c) {
            chain[c] ^= block[c];
        }
        CryptBlock<true>(tables, schedule.encryptKeys.data(), chain);
        Store(chain, out);
    }
    Store(chain, iv);
}

void Rijndael256DecryptCbc(const RijndaelTables& tables, const RijndaelSchedule& schedule,
                           const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                           std::uint8_t* iv) {
    State previous;
    Load(iv, previous);
    for (std::size_t n = 0; n < count; ++n, in += 4 * kColumns, out += 4 * kColumns) {
        State cipher;
        Load(in, cipher); // before the store: in and out may be the same block
        State plain = cipher;
        CryptBlock<false>(tables, schedule.decryptKeys.data(), plain);
        for (std::size_t c = 0; c < kColumns; ++c) {
            plain[c] ^= previous[c];
        }
        Store(plain, out);
        previous = cipher;
    }
    Store(previous, iv);
}

} // namespace kelvora
