#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace kelvora {

// AppendHex appends two lower-case hex digits for every byte.
void AppendHex(std::string& out, std::span<const std::uint8_t> bytes);

// HexFromBytes gives two lower-case hex digits for every byte.
[[nodiscard]] std::string HexFromBytes(std::span<const std::uint8_t> bytes);

} // namespace kelvora
