#pragma once

#include "cli/Commands.h"

namespace kelvora::cli {

extern const Command kGenpassCommand;
extern const Command kRateCommand;

} // namespace kelvora::cli
