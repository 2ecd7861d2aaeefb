#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

// MD5String is the format's own MD5 over the bytes of a text: the RFC 1321 transform with
// a finish that departs from the RFC for some lengths (no 0x80 marker when the length mod
// 64 is 56; for lengths over 120 with a remainder of 57 to 63 the last partial block is cut
// to 56 bytes). Returns 32 lower-case hex digits, or nullopt when the length in bits does
// not fit a signed 32-bit integer.
[[nodiscard]] std::optional<std::string> MD5String(std::string_view bytes);

inline constexpr std::size_t kMd5DigestBytes = 16;
using Md5Digest = std::array<std::uint8_t, kMd5DigestBytes>;

// MD5Digest is MD5String's digest as its 16 bytes, the ones its hex digits spell.
[[nodiscard]] std::optional<Md5Digest> MD5Digest(std::string_view bytes);

} // namespace kelvora
