#include "cli/Commands.h"

#include "cli/FileCommands.h"
#include "cli/TextCommands.h"
#include "cli/ToolCommands.h"
#include "common/Printable.h"
#include "common/Version.h"
#include "crypto/CipherPath.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <vector>

namespace kelvora::cli {
namespace {

constexpr OptionSpec kHelpOption{"help", 'h', false};

constexpr std::array kCommands = {
    &EncryptTextCommand, &DecryptTextCommand, &EncryptFilesCommand, &DecryptFilesCommand,
    &ListCommand,        &TestCommand,        &GenpassCommand,      &RateCommand,
};

void PrintOverview(std::ostream& stream) {
    stream << "Usage: kelvora-cli COMMAND [OPTION]... [ARGUMENT]...\n"
              "Encrypts and decrypts texts and files with a passphrase.\n\nCommands:\n";
    for (const Command* command : kCommands) {
        stream << "  " << command->name << std::string(16 - command->name.size(), ' ')
               << command->summary << '\n';
    }
    stream << "\nRun 'kelvora-cli COMMAND --help' for a command's options.\n"
              "Exit status: 0 success, 1 the job failed, 2 usage error.\n";
}

// PrintVersion names the program and the product version, first line alone, so that scripts
// can read it with "head -n 1", then the cipher path this process runs on.
void PrintVersion(std::ostream& stream) {
    stream << "kelvora-cli " << kVersionText << '\n'
           << "cipher path: " << CipherPathName(ActiveCipherPath()) << '\n';
}

const Command* FindCommand(std::string_view name) {
    const auto it = std::find_if(kCommands.begin(), kCommands.end(),
                                 [&](const Command* command) { return command->name == name; });
    return it == kCommands.end() ? nullptr : *it;
}

int RunCommand(CliContext& context, const Command& command, std::span<const std::string> args) {
    std::vector<OptionSpec> specs(command.options.begin(), command.options.end());
    specs.push_back(kHelpOption);
    const ArgParseResult parsed = ParseArgs(args, specs);
    if (!parsed.ok()) {
        return Fail(context, kExitUsage,
                    parsed.error + " (see 'kelvora-cli " + std::string(command.name) + " --help')");
    }
    if (parsed.args.Has(kHelpOption.longName)) {
        context.out << command.usage;
        return kExitSuccess;
    }
    return command.run(context, parsed.args);
}

} // namespace

std::span<const Command* const> AllCommands() {
    return kCommands;
}

int RunCli(CliContext& context, std::span<const std::string> args) {
    if (args.empty()) {
        PrintOverview(context.err);
        return kExitUsage;
    }
    if (args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        PrintOverview(context.out);
        return kExitSuccess;
    }
    if (args[0] == "--version") {
        PrintVersion(context.out);
        return kExitSuccess;
    }
    const Command* command = FindCommand(args[0]);
    if (command == nullptr) {
        return Fail(context, kExitUsage,
                    "unknown command '" + args[0] + "' (see 'kelvora-cli --help')");
    }
    return RunCommand(context, *command, args.subspan(1));
}

int Fail(CliContext& context, int status, std::string_view message) {
    // Messages may quote names from files and containers; they never reach the terminal raw.
    context.err << "kelvora-cli: " << Printable(message) << '\n';
    return status;
}

void Warn(CliContext& context, std::string_view message) {
    context.err << "kelvora-cli: warning: " << message << '\n';
}

} // namespace kelvora::cli
