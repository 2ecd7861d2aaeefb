#pragma once

#include "crypto/RijndaelTables.h"

#include <array>
#include <cstdint>

namespace kelvora {

inline constexpr int kMaxScheduleWords = 120; // Nb * (Nr + 1) for Nb = 8, Nr = 14

// RijndaelSchedule is an expanded key. encryptKeys holds round r's column c at r * nb + c.
// decryptKeys holds the equivalent inverse cipher's round keys in the order decryption uses
// them: the last encryption round key first, the middle ones through InvMixColumns.
struct RijndaelSchedule {
    int nb = 0;
    int nk = 0;
    int nr = 0;
    std::array<int, 3> shifts{}; // how far rows 1 to 3 move left
    std::array<std::uint32_t, kMaxScheduleWords> encryptKeys{};
    std::array<std::uint32_t, kMaxScheduleWords> decryptKeys{};
};

// ExpandRijndaelKey builds the schedule for a block of nb and a key of nk 32-bit words from
// the first 4 * nk bytes of key. Block and key lengths outside 4..8 words, or a null key,
// return false and leave schedule untouched.
[[nodiscard]] bool ExpandRijndaelKey(const RijndaelTables& tables, int nb, int nk,
                                     const std::uint8_t* key, RijndaelSchedule& schedule);

} // namespace kelvora
