#pragma once

#include "common/Bytes.h"

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace kelvora::testing {

// BytesFromHex reads pairs of hex digits (either case) into bytes, for known answers kept
// as hex. Writing hex is the core's HexFromBytes (common/Hex.h).
inline Bytes BytesFromHex(std::string_view hex) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes.push_back(
            static_cast<std::uint8_t>(std::stoul(std::string(hex.substr(i, 2)), nullptr, 16)));
    }
    return bytes;
}

// PatternBytes gives reproducible bytes: random-looking (incompressible) or text-like.
inline Bytes PatternBytes(std::size_t count, std::uint32_t seed, bool compressible = false) {
    static constexpr char kWords[] = "lorem ipsum dolor sit amet consectetur adipiscing elit ";
    std::mt19937 generator(seed);
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] =
            compressible
                ? static_cast<std::uint8_t>(kWords[(i + generator() % 3) % (sizeof kWords - 1)])
                : static_cast<std::uint8_t>(generator());
    }
    return bytes;
}

} // namespace kelvora::testing
