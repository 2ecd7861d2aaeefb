#pragma once

#include "cli/Commands.h"

namespace kelvora::cli {

extern const Command kEncryptCommand;
extern const Command kDecryptCommand;
extern const Command kListCommand;
extern const Command kTestCommand;

} // namespace kelvora::cli
