#include "crypto/RijndaelCipher.h"

#include "crypto/RijndaelBlock256.h"

#include <array>

namespace kelvora {
namespace {

using State = std::array<std::uint32_t, 8>;

// Any block length: row r of output column c comes from input column c + offset[r] (c minus
// the shift when decrypting), and the last round has no MixColumns, so it takes the bare
// S-box byte.
template <bool kEncrypt>
void CryptBlockGeneric(const RijndaelTables& t, const RijndaelSchedule& s, State& state) {
    const auto& rounds = kEncrypt ? t.encrypt : t.decrypt;
    const auto& box = kEncrypt ? t.sbox : t.inverseSbox;
    const std::uint32_t* keys = kEncrypt ? s.encryptKeys.data() : s.decryptKeys.data();
    const int nb = s.nb;
    std::array<int, 4> offset{0, s.shifts[0], s.shifts[1], s.shifts[2]};
    if (!kEncrypt) {
        for (int row = 1; row < 4; ++row) {
            offset[static_cast<std::size_t>(row)] = nb - offset[static_cast<std::size_t>(row)];
        }
    }
    for (int c = 0; c < nb; ++c) {
        state[static_cast<std::size_t>(c)] ^= keys[c];
    }
    for (int round = 1; round <= s.nr; ++round) {
        State next{};
        for (int c = 0; c < nb; ++c) {
            std::uint32_t word = keys[round * nb + c];
            for (int row = 0; row < 4; ++row) {
                const auto from =
                    static_cast<std::size_t>((c + offset[static_cast<std::size_t>(row)]) % nb);
                const std::uint8_t x = ByteOf(state[from], row);
                word ^= round < s.nr ? rounds[static_cast<std::size_t>(row)][x]
                                     : std::uint32_t{box[x]} << (8 * row);
            }
            next[static_cast<std::size_t>(c)] = word;
        }
        state = next;
    }
}

void LoadState(const std::uint8_t* bytes, int nb, State& state) {
    for (int c = 0; c < nb; ++c) {
        state[static_cast<std::size_t>(c)] = LoadWordLe(bytes + 4 * c);
    }
}

void StoreState(const State& state, int nb, std::uint8_t* bytes) {
    for (int c = 0; c < nb; ++c) {
        StoreWordLe(state[static_cast<std::size_t>(c)], bytes + 4 * c);
    }
}

void XorInto(State& target, const State& other) {
    for (std::size_t c = 0; c < target.size(); ++c) {
        target[c] ^= other[c];
    }
}

} // namespace

void RijndaelEncryptCbc(const RijndaelTables& tables, const RijndaelSchedule& schedule,
                        const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                        std::uint8_t* iv) {
    const int nb = schedule.nb;
    if (nb == 8) {
        Rijndael256EncryptCbc(tables, schedule, in, out, count, iv);
        return;
    }
    const auto blockBytes = static_cast<std::size_t>(4 * nb);
    State chain{};
    LoadState(iv, nb, chain);
    for (std::size_t n = 0; n < count; ++n) {
        State block{};
        LoadState(in + n * blockBytes, nb, block);
        XorInto(chain, block);
        CryptBlockGeneric<true>(tables, schedule, chain);
        StoreState(chain, nb, out + n * blockBytes);
    }
    StoreState(chain, nb, iv);
}

void RijndaelDecryptCbc(const RijndaelTables& tables, const RijndaelSchedule& schedule,
                        const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                        std::uint8_t* iv) {
    const int nb = schedule.nb;
    if (nb == 8) {
        Rijndael256DecryptCbc(tables, schedule, in, out, count, iv);
        return;
    }
    const auto blockBytes = static_cast<std::size_t>(4 * nb);
    State previous{};
    LoadState(iv, nb, previous);
    for (std::size_t n = 0; n < count; ++n) {
        State cipher{};
        LoadState(in + n * blockBytes, nb, cipher);
        State plain = cipher;
        CryptBlockGeneric<false>(tables, schedule, plain);
        XorInto(plain, previous);
        StoreState(plain, nb, out + n * blockBytes);
        previous = cipher;
    }
    StoreState(previous, nb, iv);
}

} // namespace kelvora
