#include "crypto/RijndaelSchedule.h"

#include <algorithm>

namespace kelvora {
namespace {

std::uint32_t SubWord(const RijndaelTables& t, std::uint32_t word) {
    std::uint32_t result = 0;
    for (int row = 0; row < 4; ++row) {
        result |= std::uint32_t{t.sbox[ByteOf(word, row)]} << (8 * row);
    }
    return result;
}

// The decryption tables apply InvSubBytes first, so feeding them S-box outputs leaves
// InvMixColumns alone.
std::uint32_t InvMixColumn(const RijndaelTables& t, std::uint32_t word) {
    std::uint32_t result = 0;
    for (int row = 0; row < 4; ++row) {
        result ^= t.decrypt[static_cast<std::size_t>(row)][t.sbox[ByteOf(word, row)]];
    }
    return result;
}

void ExpandEncryptKeys(const RijndaelTables& t, const std::uint8_t* key, RijndaelSchedule& s) {
    const int words = s.nb * (s.nr + 1);
    auto& w = s.encryptKeys;
    for (int i = 0; i < s.nk; ++i) {
        w[static_cast<std::size_t>(i)] = LoadWordLe(key + 4 * i);
    }
    for (int i = s.nk; i < words; ++i) {
        std::uint32_t temp = w[static_cast<std::size_t>(i - 1)];
        if (i % s.nk == 0) {
            // RotWord moves row 1 up to row 0, a right rotation of a little-endian column.
            temp = SubWord(t, std::rotr(temp, 8)) ^
                   t.roundConstants[static_cast<std::size_t>(i / s.nk - 1)];
        } else if (s.nk > 6 && i % s.nk == 4) {
            temp = SubWord(t, temp);
        }
        w[static_cast<std::size_t>(i)] = w[static_cast<std::size_t>(i - s.nk)] ^ temp;
    }
}

void DeriveDecryptKeys(const RijndaelTables& t, RijndaelSchedule& s) {
    for (int round = 0; round <= s.nr; ++round) {
        const bool outer = round == 0 || round == s.nr;
        for (int c = 0; c < s.nb; ++c) {
            const std::uint32_t word =
                s.encryptKeys[static_cast<std::size_t>((s.nr - round) * s.nb + c)];
            s.decryptKeys[static_cast<std::size_t>(round * s.nb + c)] =
                outer ? word : InvMixColumn(t, word);
        }
    }
}

} // namespace

bool ExpandRijndaelKey(const RijndaelTables& tables, int nb, int nk, const std::uint8_t* key,
                       RijndaelSchedule& schedule) {
    if (key == nullptr || nb < 4 || nb > 8 || nk < 4 || nk > 8) {
        return false;
    }
    schedule.nb = nb;
    schedule.nk = nk;
    schedule.nr = 6 + std::max(nb, nk);
    schedule.shifts = nb >= 8 ? std::array<int, 3>{1, 3, 4} : std::array<int, 3>{1, 2, 3};
    ExpandEncryptKeys(tables, key, schedule);
    DeriveDecryptKeys(tables, schedule);
    return true;
}

} // namespace kelvora
