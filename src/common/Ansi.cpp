#include "common/Ansi.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace kelvora {
namespace {

// Code points of the bytes 0x80 to 0x9F; the rest of the code page equals Latin-1.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

// DecodeUtf8 reads one code point at text[pos] and advances pos; malformed input gives
// U+FFFD and advances by one byte.
char32_t DecodeUtf8(std::string_view text, std::size_t& pos) {
    const auto lead = static_cast<unsigned char>(text[pos]);
    std::size_t length = 0;
    char32_t cp = 0;
    if (lead < 0x80) {
        ++pos;
        return lead;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2;
        cp = lead & 0x1Fu;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        cp = lead & 0x0Fu;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        cp = lead & 0x07u;
    } else {
        ++pos;
        return 0xFFFD;
    }
    if (pos + length > text.size()) {
        ++pos;
        return 0xFFFD;
    }
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[pos + i]);
        if ((next & 0xC0) != 0x80) {
            ++pos;
            return 0xFFFD;
        }
        cp = (cp << 6) | (next & 0x3Fu);
    }
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    if (cp < kSmallest[length] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
        ++pos;
        return 0xFFFD;
    }
    pos += length;
    return cp;
}

bool IsControl(char32_t cp) {
    return cp < 0x20 || (cp >= 0x7F && cp < 0xA0);
}

} // namespace

char AnsiFromCodePoint(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) {
        return static_cast<char>(codePoint);
    }
    for (std::size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == codePoint) {
            return static_cast<char>(0x80 + i);
        }
    }
    return '?';
}

char32_t CodePointFromAnsi(unsigned char byte) {
    if (byte >= 0x80 && byte < 0xA0) {
        return kHighControls[byte - 0x80u];
    }
    return byte;
}

std::string AnsiFromUtf8(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    std::size_t pos = 0;
    while (pos < utf8.size()) {
        out.push_back(AnsiFromCodePoint(DecodeUtf8(utf8, pos)));
    }
    return out;
}

std::string AnsiTextFromUtf8(std::string_view utf8) {
    std::string ansi = AnsiFromUtf8(utf8);
    std::replace(ansi.begin(), ansi.end(), '\0', '?');
    return ansi;
}

std::string Utf8FromAnsi(std::string_view ansi) {
    std::string out;
    out.reserve(ansi.size() + ansi.size() / 4);
    for (const char c : ansi) {
        AppendUtf8(out, CodePointFromAnsi(static_cast<unsigned char>(c)));
    }
    return out;
}

AnsiCheck CheckAnsi(std::string_view utf8, NulRule nul) {
    AnsiCheck check;
    std::size_t position = 0;
    std::size_t line = 1;
    std::size_t column = 0;
    for (std::size_t pos = 0; pos < utf8.size();) {
        const std::size_t start = pos;
        const char32_t cp = DecodeUtf8(utf8, pos);
        ++position;
        ++column;
        // A decoded U+FFFD that took one byte was a malformed byte, not the character itself.
        const bool malformed = cp == 0xFFFD && pos == start + 1;
        const bool unsupported = malformed || (cp == 0 && nul == NulRule::Refused) ||
                                 (cp != '?' && AnsiFromCodePoint(cp) == '?');
        if (unsupported && check.count++ == 0) {
            const char32_t shown = malformed ? static_cast<unsigned char>(utf8[start]) : cp;
            check.first = UnsupportedCharacter{shown, position, line, column, malformed};
        }
        if (cp == '\n') {
            ++line;
            column = 0;
        }
    }
    return check;
}

std::string DescribeCharacter(const UnsupportedCharacter& character) {
    char code[32];
    if (character.malformed) {
        std::snprintf(code, sizeof code, "the byte 0x%02X (not UTF-8)",
                      static_cast<unsigned>(character.codePoint));
        return code;
    }
    std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(character.codePoint));
    if (IsControl(character.codePoint)) {
        return code;
    }
    std::string named = "'";
    AppendUtf8(named, character.codePoint);
    return named + "' (" + code + ")";
}

} // namespace kelvora
