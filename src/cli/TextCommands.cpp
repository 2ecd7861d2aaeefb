#include "cli/TextCommands.h"

#include "cli/CliIo.h"
#include "cli/LanguageChoice.h"
#include "cli/PassphraseSource.h"
#include "common/Ansi.h"
#include "common/LineBreaks.h"
#include "crypto/CRijndael.h"
#include "i18n/Catalogue.h"
#include "text/ArmourFinder.h"
#include "text/EncryptedText.h"

#include <array>

namespace kelvora::cli {
namespace {

constexpr OptionSpec kInputOption{"input", 'i', true};
constexpr OptionSpec kLanguageOption{"lang", '\0', true};
constexpr OptionSpec kNoBannerOption{"no-banner", '\0', false};
constexpr OptionSpec kBlockOption{"block", '\0', true};
constexpr OptionSpec kReplaceUnsupportedOption{"replace-unsupported", '\0', false};

constexpr std::array kEncryptOptions = {
    kInputOption, kOutputOption,         kLanguageOption, kReplaceUnsupportedOption,
    kForceOption, kPassphraseFileOption, kKeyFileOption};
constexpr std::array kDecryptOptions = {kBlockOption,    kInputOption, kOutputOption,
                                        kNoBannerOption, kForceOption, kPassphraseFileOption,
                                        kKeyFileOption};

// WithoutBannerLine drops the first line when it is a banner line, with any address.
std::string_view WithoutBannerLine(std::string_view text) {
    if (!StartsWithBanner(text)) {
        return text;
    }
    const std::size_t lineEnd = text.find("\r\n");
    return lineEnd == std::string_view::npos ? std::string_view() : text.substr(lineEnd + 2);
}

// AnsiText converts the text to encrypt to Windows-1252. A character the code page lacks, or
// a NUL (the text would end there when shown), refuses the text with its position, unless
// the person allowed "?" in their place; then err says how many were replaced.
std::optional<std::string> AnsiText(CliContext& context, const ParsedArgs& args,
                                    std::string_view utf8) {
    const AnsiCheck check = CheckAnsi(utf8, NulRule::Refused);
    if (check.ok()) {
        return AnsiFromUtf8(utf8);
    }
    if (!args.Has(kReplaceUnsupportedOption.longName)) {
        const UnsupportedCharacter& first = *check.first;
        Fail(context, kExitFailure,
             "the text holds " + DescribeCharacter(first) + " at line " +
                 std::to_string(first.line) + ", column " + std::to_string(first.column) +
                 ", which an encrypted text cannot hold; give --replace-unsupported to encrypt "
                 "\"?\" in its place");
        return std::nullopt;
    }
    std::string ansi = AnsiTextFromUtf8(utf8);
    Warn(context, std::to_string(check.count) + " character" + (check.count == 1 ? "" : "s") +
                      " of the text replaced by \"?\"");
    return ansi;
}

// ChosenArmour is the encrypted text to decrypt out of the input, or why none was chosen.
struct ChosenArmour {
    std::string armoured;
    int status = kExitSuccess;
    std::string error;
};

std::string Lines(const ArmourBlock& block) {
    return block.firstLine == block.lastLine
               ? "line " + std::to_string(block.firstLine)
               : "lines " + std::to_string(block.firstLine) + "-" + std::to_string(block.lastLine);
}

// ChooseArmour finds the encrypted texts in the input (a whole mail, quoted or wrapped, will
// do). One is taken as it is; of several, --block N says which. Input in which nothing looks
// like an encrypted text goes to the decoder whole, which reads blanks and breaks anywhere.
ChosenArmour ChooseArmour(CliContext& context, const ParsedArgs& args, const std::string& input) {
    const std::vector<ArmourBlock> blocks = FindArmourBlocks(input);
    const std::optional<std::string> wanted = args.Value(kBlockOption.longName);
    std::size_t chosen = 1;
    if (wanted) {
        chosen = 0;
        if (wanted->find_first_not_of("0123456789") == std::string::npos && wanted->size() < 6) {
            chosen = static_cast<std::size_t>(std::stoul("0" + *wanted));
        }
        if (chosen < 1 || chosen > std::max<std::size_t>(blocks.size(), 1)) {
            return ChosenArmour{{},
                                kExitUsage,
                                "--block takes a number from 1 to " +
                                    std::to_string(std::max<std::size_t>(blocks.size(), 1))};
        }
    }
    if (blocks.empty()) {
        return ChosenArmour{input, kExitSuccess, {}};
    }
    if (blocks.size() > 1 && !wanted) {
        std::string where;
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            where += (i == 0 ? "" : ", ") + std::to_string(i + 1) + ": " + Lines(blocks[i]);
        }
        return ChosenArmour{{},
                            kExitFailure,
                            "the input holds " + std::to_string(blocks.size()) +
                                " encrypted texts (" + where + "); choose one with --block N"};
    }
    const ArmourBlock& block = blocks[chosen - 1];
    if (context.verbose) {
        Note(context, "decrypting the encrypted text of " + Lines(block));
    }
    return ChosenArmour{block.base64, kExitSuccess, {}};
}

int EncryptText(CliContext& context, const ParsedArgs& args) {
    if (!args.operands.empty()) {
        return Fail(context, kExitUsage, "unexpected argument '" + args.operands[0] + "'");
    }
    const std::optional<std::string> language = args.Value(kLanguageOption.longName);
    const std::optional<int> offset =
        language ? LanguageOffsetFromName(*language) : LanguageOffsetFromLocale(context.getenv);
    if (!offset) {
        return Fail(context, kExitUsage, "--lang takes de, en, es or fr");
    }
    ObtainedSecret secret = ObtainKey(context, args, KeyPurpose::Encrypt);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    std::string input;
    std::string error;
    if (!ReadAll(context, args.Value(kInputOption.longName), input, error)) {
        return Fail(context, kExitFailure, error);
    }
    if (input.empty()) {
        return Fail(context, kExitFailure, "the text to encrypt is empty");
    }
    std::optional<std::string> ansi = AnsiText(context, args, input);
    Wipe(input);
    if (!ansi) {
        return kExitFailure;
    }
    SecretString plain(WithBanner(*offset, ToCrLf(*ansi)));
    Wipe(*ansi);
    CRijndael cipher;
    SystemRandom random;
    const TextResult result = kelvora::EncryptText(cipher, secret.key.bytes(), plain.str(), random);
    if (!WriteAll(context, args.Value(kOutputOption.longName), FromCrLf(result.text) + "\n",
                  args.Has(kForceOption.longName), error)) {
        return Fail(context, kExitFailure, error);
    }
    return kExitSuccess;
}

int DecryptText(CliContext& context, const ParsedArgs& args) {
    if (!args.operands.empty()) {
        return Fail(context, kExitUsage, "unexpected argument '" + args.operands[0] + "'");
    }
    ObtainedSecret secret = ObtainKey(context, args, KeyPurpose::Decrypt);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    std::string armoured;
    std::string error;
    if (!ReadAll(context, args.Value(kInputOption.longName), armoured, error)) {
        return Fail(context, kExitFailure, error);
    }
    if (armoured.find_first_not_of(" \t\r\n") == std::string::npos) {
        return Fail(context, kExitFailure, "the input holds no encrypted text");
    }
    const ChosenArmour chosen = ChooseArmour(context, args, armoured);
    if (chosen.status != kExitSuccess) {
        return Fail(context, chosen.status, chosen.error);
    }
    CRijndael cipher;
    TextResult result = kelvora::DecryptText(cipher, secret.key.bytes(), ToCrLf(chosen.armoured));
    if (result.status != TextStatus::Ok) {
        return Fail(context, kExitFailure,
                    "not a Kelvora text: it is damaged or incomplete (its length is not a "
                    "whole number of blocks)");
    }
    SecretString shown(std::string(UpToFirstNul(result.text)));
    Wipe(result.text);
    if (!StartsWithBanner(shown.str()) && !args.Has(kForceOption.longName)) {
        return Fail(context, kExitFailure, "wrong passphrase, or not a Kelvora text");
    }
    const std::string_view text =
        args.Has(kNoBannerOption.longName) ? WithoutBannerLine(shown.str()) : shown.str();
    SecretString output(Utf8FromAnsi(FromCrLf(text)));
    if (!WriteAll(context, args.Value(kOutputOption.longName), output.str(),
                  args.Has(kForceOption.longName), error)) {
        return Fail(context, kExitFailure, error);
    }
    return kExitSuccess;
}

} // namespace

const Command EncryptTextCommand{
    "encrypt-text", "encrypt a text into printable lines",
    "Usage: kelvora-cli encrypt-text [--lang de|en|es|fr] [--replace-unsupported] [-i FILE]\n"
    "                                [-o FILE [--force]] [-p FILE | --key-file FILE...]\n"
    "Encrypts a UTF-8 text (standard input by default) into Base64 lines of 76 characters\n"
    "(standard output by default). The decrypted text begins with a line saying it was\n"
    "encrypted with Kelvora, in the language --lang picks; without --lang, the language of\n"
    "LC_ALL, LC_MESSAGES or LANG (the first one set), English when it is none of the four.\n\n"
    "  -i, --input FILE            read the text from FILE\n"
    "  -o, --output FILE           write the encrypted text to FILE\n"
    "      --force                 replace FILE when it exists already\n"
    "      --lang CODE             language of the first line: de, en, es or fr (any case;\n"
    "                              a locale such as de_AT.UTF-8 is taken by its language)\n"
    "      --replace-unsupported   encrypt \"?\" for characters outside Windows-1252 and NULs\n"
    "                              instead of refusing the text\n"
    "  -p, --passphrase-file FILE  read the passphrase from FILE's first line\n"
    "      --key-file FILE         a shared-security key, given once per key, key 1 first\n"
    "                              (2 to 10 files; each file's first line is the key)\n\n"
    "The passphrase comes from the first of: -p FILE (its first line; '-' reads the first\n"
    "line of standard input), the environment variable KELVORA_PASSPHRASE, the terminal\n"
    "(asked twice). With --key-file the text opens only in shared-security mode, with all\n"
    "keys in the same order. A passphrase or key holding a character outside Windows-1252\n"
    "is refused; only the first 32 characters of a passphrase count (a warning says so).\n",
    kEncryptOptions, EncryptText};

const Command DecryptTextCommand{
    "decrypt-text", "decrypt a text made by encrypt-text or the window",
    "Usage: kelvora-cli decrypt-text [--block N] [--no-banner] [--force] [-i FILE] [-o FILE]\n"
    "                                [-p FILE | --key-file FILE...]\n"
    "Decrypts an encrypted text and writes the text as the program's window shows it: the\n"
    "Kelvora line first, then the text. The encrypted text may stand inside a whole mail:\n"
    "it is found among the prose, its quote marks ('> ', '>> ') and the mail's line\n"
    "wrapping are removed. When the input holds several encrypted texts, the command names\n"
    "their lines and decrypts the one --block picks. Input in which nothing looks like an\n"
    "encrypted text is decoded whole (line breaks and blanks anywhere are fine).\n\n"
    "      --block N               decrypt the N-th encrypted text of the input\n"
    "  -i, --input FILE            read the encrypted text from FILE\n"
    "  -o, --output FILE           write the text to FILE\n"
    "      --no-banner             leave out the first line when it is the Kelvora line\n"
    "      --force                 replace FILE when it exists already, and write the result\n"
    "                              even when the passphrase looks wrong\n"
    "  -p, --passphrase-file FILE  read the passphrase from FILE's first line\n"
    "      --key-file FILE         a shared-security key, given once per key, key 1 first\n"
    "                              (1 to 10 files; each file's first line is the key)\n\n"
    "The key comes from -p FILE or --key-file FILE... (not both), else the environment\n"
    "variable KELVORA_PASSPHRASE, else the terminal. Exit status 1 and no output when the\n"
    "text does not decrypt to a Kelvora text (wrong passphrase), unless --force.\n",
    kDecryptOptions, DecryptText};

} // namespace kelvora::cli
