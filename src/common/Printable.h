#pragma once

#include <string>
#include <string_view>

namespace kelvora {

// Printable makes a name safe to show on a terminal or in a window: every control character
// (bytes below 0x20, DEL, and the C1 controls U+0080 to U+009F in UTF-8) becomes "\xHH" or
// "\u00HH", so a name can neither move the cursor, retitle a terminal nor break a line.
// Everything else is kept as it is.
[[nodiscard]] std::string Printable(std::string_view utf8);

// HoldsControlCharacter is true when an ANSI (Windows-1252) name holds a byte below 0x20,
// DEL, or one of the five bytes Windows-1252 leaves undefined (they read as C1 controls).
[[nodiscard]] bool HoldsControlCharacter(std::string_view ansi);

} // namespace kelvora
