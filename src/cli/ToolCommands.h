#pragma once

#include "cli/Commands.h"

namespace kelvora::cli {

extern const Command GenpassCommand;
extern const Command RateCommand;

} // namespace kelvora::cli
