#include "text/Base64.h"

#include <array>

namespace kelvora {
namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Characters outside the alphabet decode as 0, as if they were "A".
constexpr std::array<std::uint8_t, 256> MakeReverseTable() {
    std::array<std::uint8_t, 256> table{};
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        table[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
    }
    return table;
}
constexpr std::array<std::uint8_t, 256> kReverse = MakeReverseTable();

std::size_t EncodedLength(std::size_t byteCount) {
    const std::size_t chars = byteCount / 3 * 4 + (byteCount % 3 > 0 ? 4 : 0);
    std::size_t total = chars + chars / kBase64LineLength * 2;
    if (total > 0 && total % (kBase64LineLength + 2) == 0) {
        total -= 2; // no line break after the last full line
    }
    return total;
}

// WithoutBreaksAndPadding drops every CR LF pair and every "="; a lone CR or LF stays.
std::string WithoutBreaksAndPadding(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            ++i;
        } else if (text[i] != '=') {
            out.push_back(text[i]);
        }
    }
    return out;
}

std::uint8_t Sextet(char c) {
    return kReverse[static_cast<unsigned char>(c)];
}

} // namespace

std::string Base64Encode(const Bytes& data) {
    std::string out(EncodedLength(data.size()), '\0');
    std::size_t pos = 0;
    std::size_t lineChars = 0;
    const auto put = [&](std::uint32_t sextet) { out[pos++] = kAlphabet[sextet & 63u]; };
    std::size_t i = 0;
    for (; i + 3 <= data.size(); i += 3) {
        if (lineChars == kBase64LineLength) {
            out[pos++] = '\r';
            out[pos++] = '\n';
            lineChars = 0;
        }
        const std::uint32_t group = static_cast<std::uint32_t>(data[i]) << 16 |
                                    static_cast<std::uint32_t>(data[i + 1]) << 8 | data[i + 2];
        put(group >> 18);
        put(group >> 12);
        put(group >> 6);
        put(group);
        lineChars += 4;
    }
    const std::size_t rest = data.size() - i;
    if (rest > 0) {
        if (lineChars == kBase64LineLength) {
            out[pos++] = '\r';
            out[pos++] = '\n';
        }
        const std::uint32_t group = static_cast<std::uint32_t>(data[i]) << 16 |
                                    (rest == 2 ? static_cast<std::uint32_t>(data[i + 1]) << 8 : 0u);
        put(group >> 18);
        put(group >> 12);
        if (rest == 2) {
            put(group >> 6);
        } else {
            out[pos++] = '=';
        }
        out[pos++] = '=';
    }
    return out;
}

Bytes Base64Decode(std::string_view text) {
    const std::string chars = WithoutBreaksAndPadding(text);
    const std::size_t m = chars.size();
    const std::size_t tail = m % 4;
    Bytes out(m / 4 * 3 + (tail == 2 ? 1 : 0) + (tail == 3 ? 2 : 0));
    std::size_t pos = 0;
    std::size_t i = 0;
    for (; i + 4 <= m; i += 4) {
        const std::uint32_t group = static_cast<std::uint32_t>(Sextet(chars[i])) << 18 |
                                    static_cast<std::uint32_t>(Sextet(chars[i + 1])) << 12 |
                                    static_cast<std::uint32_t>(Sextet(chars[i + 2])) << 6 |
                                    Sextet(chars[i + 3]);
        out[pos++] = static_cast<std::uint8_t>(group >> 16);
        out[pos++] = static_cast<std::uint8_t>(group >> 8);
        out[pos++] = static_cast<std::uint8_t>(group);
    }
    if (tail >= 2) {
        const std::uint32_t group =
            static_cast<std::uint32_t>(Sextet(chars[i])) << 18 |
            static_cast<std::uint32_t>(Sextet(chars[i + 1])) << 12 |
            (tail == 3 ? static_cast<std::uint32_t>(Sextet(chars[i + 2])) << 6 : 0u);
        out[pos++] = static_cast<std::uint8_t>(group >> 16);
        if (tail == 3) {
            out[pos++] = static_cast<std::uint8_t>(group >> 8);
        }
    }
    return out;
}

} // namespace kelvora
