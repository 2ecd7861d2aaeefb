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

constexpr OptionSpec kPlainInputOption{"input", 'i', "FILE", "read the text from FILE"};
constexpr OptionSpec kArmouredOutputOption{kOutputName, 'o', "FILE",
                                           "write the encrypted text to FILE"};
constexpr OptionSpec kReplaceOutputOption{
    kForceName, '\0', {}, "replace FILE when it exists already"};
constexpr OptionSpec kLanguageOption{
    "lang", '\0', "CODE",
    "language of the first line: de, en, es or fr (any case; a locale such as de_AT.UTF-8 is "
    "taken by its language)"};
constexpr OptionSpec kReplaceUnsupportedOption{
    "replace-unsupported",
    '\0',
    {},
    "encrypt \"?\" for characters outside Windows-1252 and NULs instead of refusing the text"};
constexpr OptionSpec kBlockOption{"block", '\0', "N",
                                  "decrypt the N-th encrypted text of the input"};
constexpr OptionSpec kArmouredInputOption{"input", 'i', "FILE",
                                          "read the encrypted text from FILE"};
constexpr OptionSpec kPlainOutputOption{kOutputName, 'o', "FILE", "write the text to FILE"};
constexpr OptionSpec kNoBannerOption{
    "no-banner", '\0', {}, "leave out the first line when it is the Kelvora line"};
constexpr OptionSpec kForceTextOption{
    kForceName,
    '\0',
    {},
    "replace FILE when it exists already, and write the result even when the passphrase looks "
    "wrong"};

constexpr std::array kEncryptOptions = {kPlainInputOption, kArmouredOutputOption,
                                        kReplaceOutputOption, kLanguageOption,
                                        kReplaceUnsupportedOption};
constexpr std::array kDecryptOptions = {kBlockOption, kArmouredInputOption, kPlainOutputOption,
                                        kNoBannerOption, kForceTextOption};

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

std::string LineSpan(const ArmourBlock& block) {
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
            where += (i == 0 ? "" : ", ") + std::to_string(i + 1) + ": " + LineSpan(blocks[i]);
        }
        return ChosenArmour{{},
                            kExitFailure,
                            "the input holds " + std::to_string(blocks.size()) +
                                " encrypted texts (" + where + "); choose one with --block N"};
    }
    const ArmourBlock& block = blocks[chosen - 1];
    if (context.verbose) {
        Note(context, "decrypting the encrypted text of " + LineSpan(block));
    }
    return ChosenArmour{block.base64, kExitSuccess, {}};
}

int RunEncryptText(CliContext& context, const ParsedArgs& args) {
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
    if (!ReadAll(context, args.Value(kPlainInputOption.longName), input, error)) {
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
    if (!WriteAll(context, args.Value(kOutputName), FromCrLf(result.text) + "\n",
                  args.Has(kForceName), error)) {
        return Fail(context, kExitFailure, error);
    }
    return kExitSuccess;
}

int RunDecryptText(CliContext& context, const ParsedArgs& args) {
    ObtainedSecret secret = ObtainKey(context, args, KeyPurpose::Decrypt);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    std::string armoured;
    std::string error;
    if (!ReadAll(context, args.Value(kPlainInputOption.longName), armoured, error)) {
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
    if (!StartsWithBanner(shown.str()) && !args.Has(kForceName)) {
        return Fail(context, kExitFailure, "wrong passphrase, or not a Kelvora text");
    }
    const std::string_view text =
        args.Has(kNoBannerOption.longName) ? WithoutBannerLine(shown.str()) : shown.str();
    SecretString output(Utf8FromAnsi(FromCrLf(text)));
    if (!WriteAll(context, args.Value(kOutputName), output.str(), args.Has(kForceName), error)) {
        return Fail(context, kExitFailure, error);
    }
    return kExitSuccess;
}

constexpr std::array<std::string_view, 1> kEncryptUsages = {
    "[--lang de|en|es|fr] [--replace-unsupported] [-i FILE] [-o FILE [--force]]"};
constexpr std::array<std::string_view, 1> kDecryptUsages = {
    "[--block N] [--no-banner] [--force] [-i FILE] [-o FILE]"};

} // namespace

const Command kEncryptTextCommand{
    "encrypt-text",
    "encrypt a text into printable lines",
    kEncryptUsages,
    "Encrypts a UTF-8 text (standard input by default) into Base64 lines of 76 characters "
    "(standard output by default). The decrypted text begins with a line saying it was "
    "encrypted with Kelvora, in the language --lang picks; without --lang, the language of "
    "LC_ALL, LC_MESSAGES or LANG (the first one set), English when it is none of the four.",
    kEncryptOptions,
    {},
    PassphraseUse::Encrypt,
    RunEncryptText};

const Command kDecryptTextCommand{
    "decrypt-text",
    "decrypt a text made by encrypt-text or the window",
    kDecryptUsages,
    "Decrypts an encrypted text and writes the text as the program's window shows it: the "
    "Kelvora line first, then the text. The encrypted text may stand inside a whole mail: it is "
    "found among the prose, also when it begins on a line of prose, and its quote marks ('> ', "
    "'>> ') and the mail's line wrapping are removed. When the input holds several encrypted "
    "texts, the command names their lines and decrypts the one --block picks. Input in which "
    "nothing looks like an encrypted text is decoded whole (line breaks and blanks anywhere are "
    "fine). Exit status 1 and no output when the text does not decrypt to a Kelvora text "
    "(wrong passphrase), unless --force.",
    kDecryptOptions,
    {},
    PassphraseUse::Decrypt,
    RunDecryptText};

} // namespace kelvora::cli
