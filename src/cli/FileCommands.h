#pragma once

#include "cli/Commands.h"

namespace kelvora::cli {

extern const Command EncryptFilesCommand;
extern const Command DecryptFilesCommand;
extern const Command ListCommand;
extern const Command TestCommand;

} // namespace kelvora::cli
