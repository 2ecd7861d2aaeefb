#pragma once

#include "cli/CliArgs.h"
#include "cli/CliOutput.h"

namespace kelvora::cli {

// The encrypt option that names the file standard input is stored as.
inline constexpr OptionSpec kNameOption{"name", '\0', "NAME",
                                        "the stored name of standard input ('a/b' makes folders)"};

// EncryptStandardInput is "encrypt --name NAME -o OUT -": standard input, read to its end,
// stored as one file named NAME; OUT may be "-" for standard output.
int EncryptStandardInput(CliContext& context, const ParsedArgs& args);

} // namespace kelvora::cli
