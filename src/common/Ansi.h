#pragma once

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

// Utf8FromAnsi converts Windows-1252 bytes to UTF-8. It cannot fail.
std::string Utf8FromAnsi(std::string_view ansi);

// AnsiFromCodePoint gives the Windows-1252 byte of a Unicode code point, or '?' when the
// code page lacks it. CodePointFromAnsi is its inverse over all 256 bytes.
char AnsiFromCodePoint(char32_t codePoint);
char32_t CodePointFromAnsi(unsigned char byte);

} // namespace kelvora
