#include "crypto/RijndaelTables.h"

namespace kelvora {
namespace {

std::uint8_t TimesX(std::uint8_t value) {
    const auto shifted = static_cast<std::uint8_t>(value << 1);
    return (value & 0x80) != 0 ? static_cast<std::uint8_t>(shifted ^ 0x1B) : shifted;
}

std::uint8_t RotateByteLeft(std::uint8_t value, int bits) {
    return static_cast<std::uint8_t>((value << bits) | (value >> (8 - bits)));
}

std::uint32_t Column(std::uint8_t row0, std::uint8_t row1, std::uint8_t row2, std::uint8_t row3) {
    return std::uint32_t{row0} | std::uint32_t{row1} << 8 | std::uint32_t{row2} << 16 |
           std::uint32_t{row3} << 24;
}

void BuildLogTables(RijndaelTables& t) {
    std::uint8_t power = 1;
    for (int i = 0; i < 255; ++i) {
        t.antilog[static_cast<std::size_t>(i)] = power;
        t.log[power] = static_cast<std::uint8_t>(i);
        power = static_cast<std::uint8_t>(power ^ TimesX(power)); // times the generator 3
    }
    t.antilog[255] = t.antilog[0];
}

std::uint8_t Multiply(const RijndaelTables& t, std::uint8_t a, std::uint8_t b) {
    if (a == 0 || b == 0) {
        return 0;
    }
    return t.antilog[static_cast<std::size_t>((t.log[a] + t.log[b]) % 255)];
}

void BuildSboxes(RijndaelTables& t) {
    for (int x = 0; x < 256; ++x) {
        const auto index = static_cast<std::size_t>(x);
        const std::uint8_t inverse = x == 0 ? 0 : t.antilog[255U - t.log[index]];
        const auto affine = static_cast<std::uint8_t>(
            inverse ^ RotateByteLeft(inverse, 1) ^ RotateByteLeft(inverse, 2) ^
            RotateByteLeft(inverse, 3) ^ RotateByteLeft(inverse, 4) ^ 0x63);
        t.sbox[index] = affine;
        t.inverseSbox[affine] = static_cast<std::uint8_t>(x);
    }
}

void BuildRoundConstants(RijndaelTables& t) {
    std::uint8_t constant = 1;
    for (auto& entry : t.roundConstants) {
        entry = constant;
        constant = TimesX(constant);
    }
}

// Row r of a table is row 0 rotated by r bytes: the MixColumns matrix is circulant.
void BuildRoundTables(RijndaelTables& t) {
    for (std::size_t x = 0; x < 256; ++x) {
        const std::uint8_t s = t.sbox[x];
        const std::uint8_t i = t.inverseSbox[x];
        const std::uint32_t forward = Column(Multiply(t, s, 2), s, s, Multiply(t, s, 3));
        const std::uint32_t inverse =
            Column(Multiply(t, i, 14), Multiply(t, i, 9), Multiply(t, i, 13), Multiply(t, i, 11));
        for (int row = 0; row < 4; ++row) {
            t.encrypt[static_cast<std::size_t>(row)][x] = std::rotl(forward, 8 * row);
            t.decrypt[static_cast<std::size_t>(row)][x] = std::rotl(inverse, 8 * row);
        }
    }
}

RijndaelTables BuildTables() {
    RijndaelTables tables;
    BuildLogTables(tables);
    BuildSboxes(tables);
    BuildRoundConstants(tables);
    BuildRoundTables(tables);
    return tables;
}

} // namespace

const RijndaelTables& SharedRijndaelTables() {
    static const RijndaelTables tables = BuildTables();
    return tables;
}

} // namespace kelvora
