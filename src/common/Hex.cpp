#include "common/Hex.h"

namespace kelvora {

void AppendHex(std::string& out, std::span<const std::uint8_t> bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    for (const std::uint8_t byte : bytes) {
        out.push_back(kDigits[byte >> 4]);
        out.push_back(kDigits[byte & 15]);
    }
}

std::string HexFromBytes(std::span<const std::uint8_t> bytes) {
    std::string out;
    out.reserve(bytes.size() * 2);
    AppendHex(out, bytes);
    return out;
}

} // namespace kelvora
