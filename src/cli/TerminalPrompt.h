#pragma once

#include "cli/CliContext.h"

#include <memory>

namespace kelvora::cli {

// OpenTerminalPrompt returns a prompt on the controlling terminal (/dev/tty), which asks
// with echo switched off, or null when the process has no terminal.
std::unique_ptr<PassphrasePrompt> OpenTerminalPrompt();

} // namespace kelvora::cli
