#pragma once

#include "cli/CliArgs.h"
#include "cli/CliOutput.h"
#include "files/InputList.h"

#include <string>
#include <vector>

namespace kelvora::cli {

inline constexpr OptionSpec kEachOption{
    "each",
    '\0',
    {},
    "one container per input file instead, holding that file alone: NAME.vexo beside it, or "
    "below -C DIR (the folder structure of the inputs kept); a file that fails is reported and "
    "the others still go; .vexo files are passed over (with a note)"};

// EachContainerPath is where encrypt --each puts the container of one input file: beside
// it as NAME.vexo, or with a folder below it, the input's relative path kept (a file given
// alone by its own name).
[[nodiscard]] std::string EachContainerPath(const InputEntry& entry, const std::string& folder);

// EncryptEach is "encrypt --each": every input file into its own container holding that
// file alone. A file that fails is reported and the others still go (exit status 1 then).
int EncryptEach(CliContext& context, const ParsedArgs& args, const std::vector<InputEntry>& entries,
                const std::optional<std::string>& folder);

} // namespace kelvora::cli
