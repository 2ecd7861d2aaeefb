#pragma once

#include <string>
#include <string_view>

namespace kelvora {

// The formats use CR LF line breaks. Text from a person passes ToCrLf before the format
// code sees it; text shown to a person passes FromCrLf.

// ToCrLf turns every LF, CR LF and lone CR into CR LF.
std::string ToCrLf(std::string_view text);

// FromCrLf turns every CR LF into LF; lone CRs and LFs stay as they are.
std::string FromCrLf(std::string_view text);

} // namespace kelvora
