#pragma once

#include "cli/Commands.h"

namespace kelvora::cli {

extern const Command kEncryptTextCommand;
extern const Command kDecryptTextCommand;

} // namespace kelvora::cli
