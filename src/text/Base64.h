#pragma once

#include "common/Bytes.h"

#include <string>
#include <string_view>

namespace kelvora {

inline constexpr std::size_t kBase64LineLength = 76;

// Base64Encode gives the standard alphabet with "=" padding in lines of 76 characters
// separated by CR LF, with no line break at the end. Empty input gives an empty text.
[[nodiscard]] std::string Base64Encode(const Bytes& data);

// Base64Decode is the tolerant decoder: every CR LF pair and every "=" is dropped, a
// character outside the alphabet counts as 0, and a lone last character is ignored.
// It never fails.
[[nodiscard]] Bytes Base64Decode(std::string_view text);

} // namespace kelvora
