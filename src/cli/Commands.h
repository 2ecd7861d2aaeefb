#pragma once

#include "cli/CliArgs.h"
#include "cli/CliOutput.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora::cli {

// Command is one subcommand of kelvora-cli: its name, one line for the overview, its full
// help text, its options (--help is added to every command), and what it does.
struct Command {
    std::string_view name;
    std::string_view summary;
    std::string_view usage;
    std::span<const OptionSpec> options;
    int (*run)(CliContext& context, const ParsedArgs& args);
};

// Options that mean the same in every command that takes them.
inline constexpr OptionSpec kOutputOption{"output", 'o', true};
inline constexpr OptionSpec kForceOption{"force", '\0', false};

// OptionsOf is every option a command takes: its own, then --help, --quiet and --verbose,
// which the dispatcher adds to every command.
[[nodiscard]] std::vector<OptionSpec> OptionsOf(const Command& command);

// AllCommands lists the subcommands in the order the overview shows them.
std::span<const Command* const> AllCommands();

// RunCli runs one command line (without the program name) and returns the exit status.
int RunCli(CliContext& context, std::span<const std::string> args);

} // namespace kelvora::cli
