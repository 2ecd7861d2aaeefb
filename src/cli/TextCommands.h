#pragma once

#include "cli/Commands.h"

namespace kelvora::cli {

extern const Command EncryptTextCommand;
extern const Command DecryptTextCommand;

} // namespace kelvora::cli
