#pragma once

#include "cli/CliOutput.h"

#include <optional>
#include <string>

namespace kelvora::cli {

// ReadAll reads a whole file, or standard input when path is absent or "-". On failure it
// returns false with a message in error.
[[nodiscard]] bool ReadAll(CliContext& context, const std::optional<std::string>& path,
                           std::string& data, std::string& error);

// WriteAll writes data to a file, or to standard output when path is absent or "-". An
// existing file is refused unless replace is true, and then replaced only once the new file
// is complete; a failed write leaves no partial file.
[[nodiscard]] bool WriteAll(CliContext& context, const std::optional<std::string>& path,
                            std::string_view data, bool replace, std::string& error);

} // namespace kelvora::cli
