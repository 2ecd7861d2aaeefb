#pragma once

#include "files/FileError.h"

#include <string>
#include <string_view>

namespace kelvora::cli {

// FileErrorMessage is the CLI's one mapping from a file job's result to its error line.
[[nodiscard]] std::string FileErrorMessage(const FileJobResult& result);

// What replaces an existing output: a container or text file, a restored file.
inline constexpr std::string_view kForceToReplace = "--force to replace it";
inline constexpr std::string_view kExistingFileOptions = "--overwrite, --skip-existing or --rename";

// ExistsAlready names an output that exists already, and the options that would replace it
// (or leave it), when given.
[[nodiscard]] std::string ExistsAlready(const std::string& name, std::string_view options = {});

// FileFailure is the error line of a read or write of path that failed with errno.
[[nodiscard]] std::string FileFailure(FileError error, const std::string& path, int systemError);

// LeftOutSummary is the closing line of a job that left count entries out, each named on a
// line of its own before.
[[nodiscard]] std::string LeftOutSummary(std::size_t count);

} // namespace kelvora::cli
