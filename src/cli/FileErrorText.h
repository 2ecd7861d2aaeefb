#pragma once

#include "files/FileError.h"

#include <string>

namespace kelvora::cli {

// FileErrorMessage is the CLI's one mapping from a file job's result to its error line.
[[nodiscard]] std::string FileErrorMessage(const FileJobResult& result);

// LeftOutSummary is the closing line of a job that left count entries out, each named on a
// line of its own before.
[[nodiscard]] std::string LeftOutSummary(std::size_t count);

} // namespace kelvora::cli
