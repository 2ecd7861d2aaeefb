#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

// The "ANSI code page" of every format is Windows-1252, on every platform, so that keys,
// texts and stored names agree byte for byte with copies of the program on Windows.
// The five bytes Windows-1252 leaves undefined map to the C1 controls of the same value,
// so every byte survives a round trip.

// AnsiFromUtf8 converts UTF-8 to Windows-1252, one byte a character. A character the
// code page lacks, and every byte of malformed UTF-8, becomes "?".
std::string AnsiFromUtf8(std::string_view utf8);

// AnsiTextFromUtf8 converts a text someone agreed to have changed: as AnsiFromUtf8, and a
// NUL becomes "?" as well, so that the whole text is kept when it is shown.
std::string AnsiTextFromUtf8(std::string_view utf8);

// Utf8FromAnsi converts Windows-1252 bytes to UTF-8. It cannot fail.
std::string Utf8FromAnsi(std::string_view ansi);

// AnsiFromCodePoint gives the Windows-1252 byte of a Unicode code point, or '?' when the
// code page lacks it. CodePointFromAnsi is its inverse over all 256 bytes.
char AnsiFromCodePoint(char32_t codePoint);
char32_t CodePointFromAnsi(unsigned char byte);

// UnsupportedCharacter is a character of a UTF-8 text that Windows-1252 cannot hold, where
// it stands: position counts characters from 1, line and column (both from 1) count lines
// ended by "\n" and characters within the line. For a byte that is not valid UTF-8,
// malformed is true and codePoint holds the byte.
struct UnsupportedCharacter {
    char32_t codePoint = 0;
    std::size_t position = 0;
    std::size_t line = 0;
    std::size_t column = 0;
    bool malformed = false;
};

// Whether a NUL counts as unsupported: a text ends at its first NUL wherever it is shown,
// so texts refuse it; a key holds it like any other byte.
enum class NulRule { Allowed, Refused };

// AnsiCheck is the first unsupported character of a text and how many there are.
struct AnsiCheck {
    std::optional<UnsupportedCharacter> first;
    std::size_t count = 0;
    bool ok() const { return count == 0; }
};

// CheckAnsi finds the characters of a UTF-8 text that AnsiFromUtf8 would turn into "?"
// (and the NULs, when nul refuses them). It cannot fail.
[[nodiscard]] AnsiCheck CheckAnsi(std::string_view utf8, NulRule nul);

// DescribeCharacter names a character for a message: "'α' (U+03B1)", or "U+0000" alone for
// a control character, or "the byte 0xFF (not UTF-8)" for a malformed byte.
[[nodiscard]] std::string DescribeCharacter(const UnsupportedCharacter& character);

} // namespace kelvora
