#include "common/Printable.h"

#include "common/Hex.h"

#include <algorithm>
#include <array>

namespace kelvora {

namespace {

constexpr unsigned char kDelete = 0x7F;
constexpr unsigned char kUtf8C1Lead = 0xC2;
constexpr unsigned char kC1First = 0x80;
constexpr unsigned char kC1Last = 0x9F;

void AppendEscape(std::string& out, const char* prefix, unsigned char byte) {
    out += prefix;
    AppendHex(out, std::span(&byte, 1));
}

bool IsC0OrDelete(unsigned char byte) {
    return byte < 0x20 || byte == kDelete;
}

} // namespace

std::string Printable(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const unsigned char next =
            i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1]) : 0;
        if (IsC0OrDelete(byte)) {
            AppendEscape(out, "\\x", byte);
        } else if (byte == kUtf8C1Lead && next >= kC1First && next <= kC1Last) {
            AppendEscape(out, "\\u00", next);
            ++i;
        } else {
            out.push_back(utf8[i]);
        }
    }
    return out;
}

bool HoldsControlCharacter(std::string_view ansi) {
    static constexpr std::array<unsigned char, 5> kUndefined = {0x81, 0x8D, 0x8F, 0x90, 0x9D};
    return std::any_of(ansi.begin(), ansi.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return IsC0OrDelete(byte) ||
               std::find(kUndefined.begin(), kUndefined.end(), byte) != kUndefined.end();
    });
}

} // namespace kelvora
