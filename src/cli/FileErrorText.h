#pragma once

#include "files/FileError.h"

#include <string>

namespace kelvora::cli {

// FileErrorMessage is the CLI's one mapping from a file job's result to its error line.
[[nodiscard]] std::string FileErrorMessage(const FileJobResult& result);

} // namespace kelvora::cli
