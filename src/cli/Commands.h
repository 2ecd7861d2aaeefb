#pragma once

#include "cli/CliArgs.h"
#include "cli/CliOutput.h"

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora::cli {

// PassphraseUse says whether and how a command takes a passphrase; it chooses the
// passphrase options a command gets and the one paragraph of its help that explains them.
enum class PassphraseUse {
    None,
    Encrypt, // -p or 2 to 10 --key-file; asked twice on a terminal
    Decrypt, // -p or 1 to 10 --key-file; asked once
    Rate,    // -p only: the passphrase itself is wanted, not a key
};

// OperandRule is how many operands a command takes, and what to say when there are too few
// (more than max is "unexpected argument").
struct OperandRule {
    std::size_t min = 0;
    std::size_t max = 0;
    std::string_view missing;
};
inline constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

// Command is one subcommand of kelvora-cli and everything its help is made of: the summary
// for the overview, the usage lines (each after "kelvora-cli NAME "), a description, its
// own options, its operands and its passphrase. The dispatcher adds the passphrase
// options and --help, --quiet and --verbose, checks the operands, and then runs it.
struct Command {
    std::string_view name;
    std::string_view summary;
    std::span<const std::string_view> usages;
    std::string_view description;
    std::span<const OptionSpec> options;
    OperandRule operands;
    PassphraseUse passphrase = PassphraseUse::None;
    int (*run)(CliContext& context, const ParsedArgs& args) = nullptr;
};

// Long names that several commands give an option of their own meaning each.
inline constexpr std::string_view kOutputName = "output";
inline constexpr std::string_view kForceName = "force";

// OptionsOf is every option a command takes: its own, its passphrase options, then --help,
// --quiet and --verbose.
[[nodiscard]] std::vector<OptionSpec> OptionsOf(const Command& command);

// CommandHelp is the text "COMMAND --help" prints, made from the command's table entry.
[[nodiscard]] std::string CommandHelp(const Command& command);

// AllCommands lists the subcommands in the order the overview shows them.
std::span<const Command* const> AllCommands();

// RunCli runs one command line (without the program name) and returns the exit status.
int RunCli(CliContext& context, std::span<const std::string> args);

} // namespace kelvora::cli
