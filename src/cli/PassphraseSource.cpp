#include "cli/PassphraseSource.h"

#include "cli/FileErrorText.h"
#include "common/Ansi.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <istream>
#include <vector>

namespace kelvora::cli {
namespace {

std::string WithoutLineBreak(std::string line) {
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

// ReadFirstLine reads the first line of a file ("-" = standard input) into line.
bool ReadFirstLine(CliContext& context, const std::string& path, std::string& line,
                   std::string& error) {
    if (path == "-") {
        std::getline(context.in, line);
        line = WithoutLineBreak(std::move(line));
        return true;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = FileFailure(FileError::ReadFailed, path, errno);
        return false;
    }
    std::getline(file, line);
    line = WithoutLineBreak(std::move(line));
    return true;
}

// Unholdable says that a key text holds a character the key cannot hold.
std::string Unholdable(const std::string& whose, const UnsupportedCharacter& character) {
    return whose + " holds " + DescribeCharacter(character) + " at character " +
           std::to_string(character.position) + ", which a key cannot hold (it becomes \"?\")";
}

// CheckKeyText refuses (for encryption) or warns of a character the key cannot hold, so that
// no key is made from a text other than the one the person typed without a word.
std::optional<ObtainedSecret> CheckKeyText(CliContext& context, std::string_view utf8,
                                           const std::string& whose, KeyPurpose purpose) {
    const AnsiCheck check = CheckAnsi(utf8, NulRule::Allowed);
    if (check.ok()) {
        return std::nullopt;
    }
    if (purpose == KeyPurpose::Encrypt) {
        return ObtainedSecret::Refusal(kExitFailure,
                                       Unholdable(whose, *check.first) + "; choose another");
    }
    Warn(context, Unholdable(whose, *check.first));
    return std::nullopt;
}

ObtainedSecret FromText(CliContext& context, std::string utf8, KeyPurpose purpose) {
    std::optional<ObtainedSecret> refused = CheckKeyText(context, utf8, "the passphrase", purpose);
    ObtainedSecret result;
    result.passphrase = SecretString(AnsiFromUtf8(utf8));
    Wipe(utf8);
    if (result.passphrase.empty()) {
        return ObtainedSecret::Refusal(kExitUsage, "the passphrase is empty");
    }
    if (refused) {
        return std::move(*refused);
    }
    if (result.passphrase.str().size() > kKeyBytes) {
        Warn(context, "the passphrase is longer than 32 characters: only the first 32 characters "
                      "are used");
    }
    return result;
}

ObtainedSecret FromTerminal(CliContext& context, KeyPurpose purpose) {
    std::optional<std::string> first = context.prompt->Ask("Passphrase: ");
    if (!first) {
        return ObtainedSecret::Refusal(kExitUsage, "no passphrase was entered");
    }
    if (purpose == KeyPurpose::Encrypt) {
        std::optional<std::string> again = context.prompt->Ask("Repeat the passphrase: ");
        const bool same = again && *again == *first;
        if (again) {
            Wipe(*again);
        }
        if (!same) {
            Wipe(*first);
            return ObtainedSecret::Refusal(kExitUsage, "the two passphrases differ");
        }
    }
    return FromText(context, std::move(*first), purpose);
}

// SharedKeyCountError says why a number of key files does not fit the purpose, if it does not.
std::optional<std::string> SharedKeyCountError(std::size_t count, KeyPurpose purpose) {
    if (count > kMaxSharedKeys) {
        return "at most 10 key files can be combined";
    }
    if (purpose == KeyPurpose::Encrypt && count < kMinSharedKeysToEncrypt) {
        return "one key is no shared security: give --key-file 2 to 10 times, or -p FILE";
    }
    return std::nullopt;
}

ObtainedSecret SharedKeyFromFiles(CliContext& context, const std::vector<std::string>& paths,
                                  KeyPurpose purpose) {
    if (const auto error = SharedKeyCountError(paths.size(), purpose)) {
        return ObtainedSecret::Refusal(kExitUsage, *error);
    }
    std::vector<std::string> keys;
    const auto wipeKeys = [&keys] {
        for (std::string& key : keys) {
            Wipe(key);
        }
    };
    for (const std::string& path : paths) {
        std::string line;
        std::string error;
        if (!ReadFirstLine(context, path, line, error)) {
            wipeKeys();
            return ObtainedSecret::Refusal(kExitUsage, error);
        }
        const std::string whose = "key " + std::to_string(keys.size() + 1);
        std::optional<ObtainedSecret> refused = CheckKeyText(context, line, whose, purpose);
        keys.push_back(AnsiFromUtf8(line));
        Wipe(line);
        if (refused) {
            wipeKeys();
            return std::move(*refused);
        }
    }
    SharedKey shared = BuildKey(keys);
    wipeKeys();
    if (!shared.ok()) {
        return ObtainedSecret::Refusal(kExitUsage, "key " + std::to_string(shared.emptyKeyNumber) +
                                                       " is empty");
    }
    ObtainedSecret result;
    result.key = std::move(shared.key);
    return result;
}

} // namespace

ObtainedSecret ObtainPassphrase(CliContext& context, const ParsedArgs& args, KeyPurpose purpose) {
    if (const auto path = args.Value(kPassphraseFileOption.longName)) {
        std::string line;
        std::string error;
        if (!ReadFirstLine(context, *path, line, error)) {
            return ObtainedSecret::Refusal(kExitUsage, error);
        }
        return FromText(context, std::move(line), purpose);
    }
    if (auto fromEnvironment = context.getenv(kPassphraseVariable)) {
        return FromText(context, std::move(*fromEnvironment), purpose);
    }
    if (context.prompt != nullptr) {
        return FromTerminal(context, purpose);
    }
    return ObtainedSecret::Refusal(kExitUsage,
                                   "no passphrase: give -p FILE, set KELVORA_PASSPHRASE, or run "
                                   "on a terminal");
}

ObtainedSecret ObtainKey(CliContext& context, const ParsedArgs& args, KeyPurpose purpose) {
    const std::vector<std::string> keyFiles = args.Values(kKeyFileOption.longName);
    if (!keyFiles.empty() && args.Has(kPassphraseFileOption.longName)) {
        return ObtainedSecret::Refusal(kExitUsage,
                                       "give either -p FILE or --key-file FILE..., not both");
    }
    if (!keyFiles.empty()) {
        return SharedKeyFromFiles(context, keyFiles, purpose);
    }
    ObtainedSecret result = ObtainPassphrase(context, args, purpose);
    if (result.ok()) {
        result.key = MakePassphraseKey(result.passphrase.str());
    }
    return result;
}

} // namespace kelvora::cli
