#pragma once

#include <string>

namespace kelvora {

// TempDirFrom is the rule for the temporary folder, given the values of TEMP and TMP: TEMP,
// else TMP, else "/tmp", with a trailing "/".
[[nodiscard]] std::string TempDirFrom(const char* temp, const char* tmp);

} // namespace kelvora
