#include "cli/Commands.h"

#include "cli/FileCommands.h"
#include "cli/PassphraseSource.h"
#include "cli/TextCommands.h"
#include "cli/ToolCommands.h"
#include "common/Version.h"
#include "crypto/CipherPath.h"

#include <algorithm>
#include <array>
#include <ostream>

namespace kelvora::cli {
namespace {

constexpr OptionSpec kHelpOption{"help", 'h', {}, "show this help"};
constexpr OptionSpec kQuietOption{"quiet", 'q', {}, "no notes and no progress, only errors"};
constexpr OptionSpec kVerboseOption{
    "verbose", 'v', {}, "say what is done, step by step, on standard error"};

constexpr std::array kCommands = {
    &kEncryptTextCommand, &kDecryptTextCommand, &kEncryptCommand, &kDecryptCommand,
    &kListCommand,        &kTestCommand,        &kGenpassCommand, &kRateCommand,
};

void PrintOverview(std::ostream& stream) {
    stream << "Usage: kelvora-cli COMMAND [OPTION]... [ARGUMENT]...\n"
              "Encrypts and decrypts texts and files with a passphrase.\n\nCommands:\n";
    for (const Command* command : kCommands) {
        stream << "  " << command->name << std::string(16 - command->name.size(), ' ')
               << command->summary << '\n';
    }
    stream << "\nRun 'kelvora-cli help COMMAND' (or 'COMMAND --help') for a command's options.\n"
              "Run 'kelvora-cli --version' for the version and the cipher path in use.\n"
              "'-' names standard input or output wherever a file is named. On a terminal the\n"
              "file commands show their progress on standard error.\n"
              "Exit status: 0 success, 1 the job failed, 2 usage error, 128 + N after signal N\n"
              "(130 for Ctrl-C).\n";
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

int UnknownCommand(CliContext& context, const std::string& name) {
    return Fail(context, kExitUsage, "unknown command '" + name + "' (see 'kelvora-cli --help')");
}

int RunCommand(CliContext& context, const Command& command, std::span<const std::string> args) {
    const ArgParseResult parsed = ParseArgs(args, OptionsOf(command));
    if (!parsed.ok()) {
        return Fail(context, kExitUsage,
                    parsed.error + " (see 'kelvora-cli " + std::string(command.name) + " --help')");
    }
    if (parsed.args.Has(kHelpOption.longName)) {
        context.out << CommandHelp(command);
        return kExitSuccess;
    }
    context.quiet = parsed.args.Has(kQuietOption.longName);
    context.verbose = parsed.args.Has(kVerboseOption.longName);
    if (context.quiet && context.verbose) {
        return Fail(context, kExitUsage, "--quiet and --verbose exclude each other");
    }
    context.showProgress = context.showProgress && !context.quiet;
    const std::vector<std::string>& operands = parsed.args.operands;
    if (operands.size() < command.operands.min) {
        return Fail(context, kExitUsage, command.operands.missing);
    }
    if (operands.size() > command.operands.max) {
        return Fail(context, kExitUsage,
                    "unexpected argument '" + operands[command.operands.max] + "'");
    }
    return command.run(context, parsed.args);
}

// Help answers "kelvora-cli help [COMMAND]" as "COMMAND --help" would.
int Help(CliContext& context, std::span<const std::string> topics) {
    if (topics.empty()) {
        PrintOverview(context.out);
        return kExitSuccess;
    }
    if (topics.size() > 1) {
        return Fail(context, kExitUsage, "help takes one command");
    }
    const Command* command = FindCommand(topics[0]);
    if (command == nullptr) {
        return UnknownCommand(context, topics[0]);
    }
    context.out << CommandHelp(*command);
    return kExitSuccess;
}

} // namespace

std::vector<OptionSpec> OptionsOf(const Command& command) {
    std::vector<OptionSpec> specs(command.options.begin(), command.options.end());
    if (command.passphrase != PassphraseUse::None) {
        specs.push_back(kPassphraseFileOption);
    }
    if (command.passphrase == PassphraseUse::Encrypt ||
        command.passphrase == PassphraseUse::Decrypt) {
        specs.push_back(kKeyFileOption);
    }
    specs.insert(specs.end(), {kQuietOption, kVerboseOption, kHelpOption});
    return specs;
}

std::span<const Command* const> AllCommands() {
    return kCommands;
}

int RunCli(CliContext& context, std::span<const std::string> args) {
    if (args.empty()) {
        PrintOverview(context.err);
        return kExitUsage;
    }
    if (args[0] == "--help" || args[0] == "-h") {
        PrintOverview(context.out);
        return kExitSuccess;
    }
    if (args[0] == "--version") {
        PrintVersion(context.out);
        return kExitSuccess;
    }
    if (args[0] == "help") {
        return Help(context, args.subspan(1));
    }
    const Command* command = FindCommand(args[0]);
    if (command == nullptr) {
        return UnknownCommand(context, args[0]);
    }
    return RunCommand(context, *command, args.subspan(1));
}

} // namespace kelvora::cli
