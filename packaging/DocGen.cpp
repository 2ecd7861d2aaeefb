// kelvora-docgen: writes the parts of the manual page and of the shell completion that come
// from kelvora-cli's own command table, so that neither can drift from what --help says: the
// manual shows each command's help as --help prints it, the completion every option.
//
//   kelvora-docgen man TEMPLATE         the scdoc template with its {{COMMANDS}} line filled
//   kelvora-docgen completion TEMPLATE  the bash template with {{COMMANDS}}, {{OPTIONS}} and
//                                       {{VALUE_OPTIONS}} filled
#include "cli/Commands.h"

#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

namespace {

using kelvora::cli::AllCommands;
using kelvora::cli::Command;
using kelvora::cli::OptionSpec;

// ScdocText escapes the characters scdoc reads as emphasis in running text.
std::string ScdocText(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '*' || c == '_' || c == '\\') {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

// Sentence turns a summary from the overview ("encrypt a text ...") into a sentence.
std::string Sentence(std::string_view summary) {
    std::string sentence(summary);
    if (!sentence.empty() && sentence.front() >= 'a' && sentence.front() <= 'z') {
        sentence.front() = static_cast<char>(sentence.front() - 'a' + 'A');
    }
    if (!sentence.ends_with('.')) {
        sentence += '.';
    }
    return sentence;
}

void WriteManCommands(std::ostream& out) {
    for (const Command* command : AllCommands()) {
        out << "## " << command->name << "\n\n"
            << ScdocText(Sentence(command->summary)) << "\n\n```\n";
        out << CommandHelp(*command) << "```\n\n";
    }
}

// Spellings lists an option as the command line may spell it: "--name" and "-x".
std::string Spellings(const OptionSpec& option) {
    std::string words = "--" + std::string(option.longName);
    if (option.shortName != '\0') {
        words += std::string(" -") + option.shortName;
    }
    return words;
}

std::string CommandNames() {
    std::string names;
    for (const Command* command : AllCommands()) {
        names += (names.empty() ? "" : " ") + std::string(command->name);
    }
    return names;
}

// WriteOptionCases writes one case branch per command giving its options.
void WriteOptionCases(std::ostream& out) {
    for (const Command* command : AllCommands()) {
        out << "        " << command->name << ") echo '";
        // The options the dispatcher adds to every command (--help, --quiet, --verbose) too.
        for (const OptionSpec& option : OptionsOf(*command)) {
            out << Spellings(option) << ' ';
        }
        out << "' ;;\n";
    }
}

// WriteValueOptionCases writes one case pattern per command for the options that take a
// value, so the completion offers that value (a file, a folder, a language) next.
void WriteValueOptionCases(std::ostream& out) {
    for (const Command* command : AllCommands()) {
        std::string patterns;
        for (const OptionSpec& option : OptionsOf(*command)) {
            if (!option.TakesValue()) {
                continue;
            }
            patterns += (patterns.empty() ? "" : "|") + std::string(command->name) + ":--" +
                        std::string(option.longName);
            if (option.shortName != '\0') {
                patterns += "|" + std::string(command->name) + ":-" + option.shortName;
            }
        }
        if (!patterns.empty()) {
            out << "        " << patterns << ") return 0 ;;\n";
        }
    }
}

// FillTemplate copies the template, replacing each line that is exactly a known marker;
// in the completion, {{COMMANDS}} may also stand inside a line.
int FillTemplate(const char* path, bool man) {
    constexpr std::string_view kCommandsMarker = "{{COMMANDS}}";
    std::ifstream in(path);
    if (!in) {
        std::cerr << "kelvora-docgen: cannot read " << path << '\n';
        return 1;
    }
    std::string line;
    while (std::getline(in, line)) {
        if (man && line == kCommandsMarker) {
            WriteManCommands(std::cout);
        } else if (!man && line == "{{OPTIONS}}") {
            WriteOptionCases(std::cout);
        } else if (!man && line == "{{VALUE_OPTIONS}}") {
            WriteValueOptionCases(std::cout);
        } else {
            if (const auto at = line.find(kCommandsMarker); !man && at != std::string::npos) {
                line.replace(at, kCommandsMarker.size(), CommandNames());
            }
            std::cout << line << '\n';
        }
    }
    std::cout.flush();
    return std::cout ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view mode = argc == 3 ? argv[1] : "";
    if (mode != "man" && mode != "completion") {
        std::cerr << "usage: kelvora-docgen man|completion TEMPLATE\n";
        return 2;
    }
    return FillTemplate(argv[2], mode == "man");
}
