#pragma once

#include <cstdint>

namespace kelvora {

// The containers store their integers as little-endian signed 32-bit values.

inline void PutInt32Le(std::uint8_t* out, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    out[0] = static_cast<std::uint8_t>(bits);
    out[1] = static_cast<std::uint8_t>(bits >> 8);
    out[2] = static_cast<std::uint8_t>(bits >> 16);
    out[3] = static_cast<std::uint8_t>(bits >> 24);
}

inline std::int32_t GetInt32Le(const std::uint8_t* in) {
    const std::uint32_t bits = std::uint32_t{in[0]} | (std::uint32_t{in[1]} << 8) |
                               (std::uint32_t{in[2]} << 16) | (std::uint32_t{in[3]} << 24);
    return static_cast<std::int32_t>(bits);
}

} // namespace kelvora
