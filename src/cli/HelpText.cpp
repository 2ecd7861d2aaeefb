// The help of every command, made from its table entry: usage lines, description, options
// in two columns, the one paragraph on passphrases, and the options every command takes.
#include "cli/Commands.h"
#include "cli/PassphraseSource.h"

namespace kelvora::cli {
namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kHelpColumn = 30; // where an option's help line starts

// Wrapped fills words into lines no wider than kWidth: the first after first, the others
// after indent blanks.
std::string Wrapped(std::string_view first, std::string_view text, std::size_t indent) {
    std::string result(first);
    if (result.ends_with(' ') && text.find_first_not_of(' ') == std::string_view::npos) {
        result.pop_back(); // nothing follows the first words
    }
    std::size_t lineStart = 0;
    bool lineEmpty = true;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string_view word = text.substr(at, end - at);
        at = end + 1;
        if (word.empty()) {
            continue;
        }
        if (!lineEmpty && result.size() - lineStart + 1 + word.size() >= kWidth) {
            result += '\n';
            lineStart = result.size();
            result.append(indent, ' ');
            lineEmpty = true;
        }
        if (!lineEmpty) {
            result += ' ';
        }
        result += word;
        lineEmpty = false;
    }
    return result + '\n';
}

// Paragraphs wraps every line of text on its own, so that "\n" starts a new paragraph.
std::string Paragraphs(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        result += Wrapped({}, text.substr(at, end - at), 0);
        at = end + 1;
    }
    return result;
}

std::string OptionLines(const OptionSpec& option) {
    std::string left =
        option.shortName == '\0' ? "      --" : std::string("  -") + option.shortName + ", --";
    left += option.longName;
    if (option.TakesValue()) {
        left += ' ';
        left += option.valueName;
    }
    if (left.size() + 2 > kHelpColumn) {
        left += '\n';
        left.append(kHelpColumn, ' ');
    } else {
        left.resize(kHelpColumn, ' ');
    }
    return Wrapped(left, option.help, kHelpColumn);
}

// PassphraseParagraph says where a command's passphrase comes from: written once for all
// commands, with what differs by use.
std::string PassphraseParagraph(PassphraseUse use) {
    const bool encrypting = use == PassphraseUse::Encrypt;
    std::string text = "The passphrase comes from the first of: -p FILE (its first line; '-' "
                       "reads the first line of standard input), ";
    if (use != PassphraseUse::Rate) {
        text += encrypting ? "--key-file FILE... (shared security: 2 to 10 files, each file's "
                             "first line a key; what is encrypted then opens only in "
                             "shared-security mode, with all keys in the same order; not "
                             "together with -p), "
                           : "--key-file FILE... (shared security: 1 to 10 files, each file's "
                             "first line a key, in the order they were given to encrypt; not "
                             "together with -p), ";
    }
    text += std::string("the environment variable ") + kPassphraseVariable +
            ", the terminal (asked without echo" + (encrypting ? ", twice" : "") + "). " +
            (use == PassphraseUse::Rate ? "A passphrase" : "A passphrase or key") +
            " holding a character outside Windows-1252 is " +
            (encrypting ? "refused" : "taken with a warning") +
            " (it would become \"?\" in the key); only the first 32 characters of a passphrase "
            "count (a warning says so).";
    return Paragraphs(text);
}

// PassphraseSynopsis is how the first usage line shows the passphrase options.
std::string_view PassphraseSynopsis(PassphraseUse use) {
    switch (use) {
    case PassphraseUse::None:
        return {};
    case PassphraseUse::Rate:
        return " [-p FILE]";
    case PassphraseUse::Encrypt:
    case PassphraseUse::Decrypt:
        return " [-p FILE | --key-file FILE...]";
    }
    return {};
}

} // namespace

std::string CommandHelp(const Command& command) {
    std::string help;
    const std::string program = "kelvora-cli " + std::string(command.name) + ' ';
    for (std::size_t i = 0; i < command.usages.size(); ++i) {
        std::string usage(command.usages[i]);
        if (i == 0) {
            usage += PassphraseSynopsis(command.passphrase);
        }
        help += Wrapped((i == 0 ? "Usage: " : "       ") + program, usage, 7 + program.size());
    }
    help += Paragraphs(command.description);
    const std::vector<OptionSpec> options = OptionsOf(command);
    const std::size_t own = command.options.size();
    const std::size_t common = 3; // --help, --quiet and --verbose close the list
    help += own > 0 ? "\n" : "";
    for (std::size_t i = 0; i < options.size() - common; ++i) {
        help += (i == own ? "\n" : "") + OptionLines(options[i]);
    }
    if (command.passphrase != PassphraseUse::None) {
        help += '\n' + PassphraseParagraph(command.passphrase);
    }
    help += "\nEvery command also takes:\n";
    for (std::size_t i = options.size() - common; i < options.size(); ++i) {
        help += OptionLines(options[i]);
    }
    return help;
}

} // namespace kelvora::cli
