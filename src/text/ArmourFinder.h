#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

// ArmourBlock is one encrypted text found inside a longer text: its Base64 characters
// joined without line breaks, quote marks or blanks, and the lines it spans (counting from
// 1).
struct ArmourBlock {
    std::string base64;
    std::size_t firstLine = 0;
    std::size_t lastLine = 0;
};

// Encrypted texts found in prose decode to at least this many bytes: the random prefix and
// more than one block, so that a run of short words is never taken for one.
inline constexpr std::size_t kMinArmourBytes = 64;

// FindArmourBlocks finds the encrypted texts in a pasted text such as a whole mail: every
// line loses its quote marks ("> ", ">>", "> > ") and surrounding blanks; a run of lines made
// only of Base64 characters (however the mail wrapped them, "=" only at its end), which may
// begin with the last word of a line of prose ("here it is: HlsrjuX5..."), is a candidate, and up
// to two short lines at either end of a run are dropped when that makes the run decode to whole
// cipher blocks, so that a greeting or a name written right against the text does not spoil it. It
// gives the candidates in the order they stand; none when nothing looks like an encrypted text.
// Line breaks may be LF, CR LF or CR.
[[nodiscard]] std::vector<ArmourBlock> FindArmourBlocks(std::string_view text);

} // namespace kelvora
