#pragma once

#include <string>

namespace kelvora {

// TempDir returns the temporary folder: TEMP, else TMP, else "/tmp", with a trailing "/".
// The folder is created when absent (errors ignored). The answer of the first call is kept.
const std::string& TempDir();

// TempDirFrom is TempDir's rule without the caching or creation, for tests.
std::string TempDirFrom(const char* temp, const char* tmp);

} // namespace kelvora
