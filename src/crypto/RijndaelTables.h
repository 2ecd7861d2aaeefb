#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace kelvora {

inline constexpr int kRoundConstants = 30; // enough for Nb * (Nr + 1) = 120 words with Nk = 4

// RijndaelTables are the key-independent tables of Rijndael over GF(2^8) (generator 3,
// reduction polynomial 0x11B). A column is a little-endian 32-bit word: row r sits in bits
// 8r..8r+7. encrypt[r][x] is SubBytes then MixColumns of byte x standing in row r, and
// decrypt[r][x] the same for InvSubBytes and InvMixColumns, so a round is four look-ups
// per column.
struct RijndaelTables {
    std::array<std::uint8_t, 256> sbox{};
    std::array<std::uint8_t, 256> inverseSbox{};
    std::array<std::uint8_t, 256> log{};
    std::array<std::uint8_t, 256> antilog{};
    std::array<std::uint32_t, kRoundConstants> roundConstants{};
    std::array<std::array<std::uint32_t, 256>, 4> encrypt{};
    std::array<std::array<std::uint32_t, 256>, 4> decrypt{};
};

// SharedRijndaelTables computes the tables on its first call and returns the same read-only
// copy after that, so rebuilding them before every job costs nothing.
const RijndaelTables& SharedRijndaelTables();

inline std::uint32_t LoadWordLe(const std::uint8_t* bytes) {
    std::uint32_t word;
    std::memcpy(&word, bytes, sizeof word);
    if constexpr (std::endian::native == std::endian::big) {
        word = __builtin_bswap32(word);
    }
    return word;
}

inline void StoreWordLe(std::uint32_t word, std::uint8_t* bytes) {
    if constexpr (std::endian::native == std::endian::big) {
        word = __builtin_bswap32(word);
    }
    std::memcpy(bytes, &word, sizeof word);
}

inline std::uint8_t ByteOf(std::uint32_t word, int row) {
    return static_cast<std::uint8_t>(word >> (8 * row));
}

} // namespace kelvora
