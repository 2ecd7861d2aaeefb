#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelvora::cli {

// OptionSpec describes one option of a command: its long name (without "--"), its short
// letter ('\0' for none), the name of its value in the help ("FILE"; empty for an option
// that takes no value) and its help line.
struct OptionSpec {
    std::string_view longName;
    char shortName = '\0';
    std::string_view valueName;
    std::string_view help;

    constexpr bool TakesValue() const { return !valueName.empty(); }
};

// ParsedArgs is a command line split into options (by long name, in the order given) and
// operands.
struct ParsedArgs {
    std::vector<std::pair<std::string, std::string>> options;
    std::vector<std::string> operands;

    bool Has(std::string_view name) const;
    // Value is the last value given for an option, if any.
    std::optional<std::string> Value(std::string_view name) const;
    // Values are all values given for a repeatable option, in order.
    std::vector<std::string> Values(std::string_view name) const;
};

struct ArgParseResult {
    ParsedArgs args;
    std::string error; // empty on success
    bool ok() const { return error.empty(); }
};

// ParseArgs reads arguments as GNU tools do: options and operands in any order, "--name
// value", "--name=value", "-x value", "-xvalue", bundled short flags, "--" ends the options
// and a lone "-" is an operand. An unknown option, a missing value or a value given to a
// flag gives an error text and no arguments.
[[nodiscard]] ArgParseResult ParseArgs(std::span<const std::string> args,
                                       std::span<const OptionSpec> specs);

} // namespace kelvora::cli
