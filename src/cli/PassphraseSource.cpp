#include "cli/PassphraseSource.h"

#include "common/Ansi.h"
#include "crypto/KeyRules.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <istream>
#include <vector>

namespace kelvora::cli {
namespace {

ObtainedSecret Failure(int status, std::string message) {
    ObtainedSecret result;
    result.status = status;
    result.error = std::move(message);
    return result;
}

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
        error = "cannot read " + path + ": " + std::strerror(errno);
        return false;
    }
    std::getline(file, line);
    line = WithoutLineBreak(std::move(line));
    return true;
}

ObtainedSecret FromText(std::string utf8) {
    ObtainedSecret result;
    result.passphrase = SecretString(AnsiFromUtf8(utf8));
    Wipe(utf8);
    if (result.passphrase.empty()) {
        return Failure(kExitUsage, "the passphrase is empty");
    }
    return result;
}

ObtainedSecret FromTerminal(CliContext& context, KeyPurpose purpose) {
    std::optional<std::string> first = context.prompt->Ask("Passphrase: ");
    if (!first) {
        return Failure(kExitUsage, "no passphrase was entered");
    }
    if (purpose == KeyPurpose::Encrypt) {
        std::optional<std::string> again = context.prompt->Ask("Repeat the passphrase: ");
        const bool same = again && *again == *first;
        if (again) {
            Wipe(*again);
        }
        if (!same) {
            Wipe(*first);
            return Failure(kExitUsage, "the two passphrases differ");
        }
    }
    return FromText(std::move(*first));
}

ObtainedSecret SharedKeyFromFiles(CliContext& context, const std::vector<std::string>& paths) {
    if (paths.size() > kMaxSharedKeys) {
        return Failure(kExitUsage, "at most 10 key files can be combined");
    }
    std::vector<std::string> keys;
    std::string error;
    for (const std::string& path : paths) {
        std::string line;
        if (!ReadFirstLine(context, path, line, error)) {
            for (std::string& key : keys) {
                Wipe(key);
            }
            return Failure(kExitUsage, error);
        }
        keys.push_back(AnsiFromUtf8(line));
        Wipe(line);
    }
    SharedKey shared = BuildKey(keys);
    for (std::string& key : keys) {
        Wipe(key);
    }
    if (!shared.ok()) {
        return Failure(kExitUsage, "key " + std::to_string(shared.emptyKeyNumber) + " is empty");
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
            return Failure(kExitUsage, error);
        }
        return FromText(std::move(line));
    }
    if (auto fromEnvironment = context.getenv(kPassphraseVariable)) {
        return FromText(std::move(*fromEnvironment));
    }
    if (context.prompt != nullptr) {
        return FromTerminal(context, purpose);
    }
    return Failure(kExitUsage, "no passphrase: give -p FILE, set KELVORA_PASSPHRASE, or run "
                               "on a terminal");
}

ObtainedSecret ObtainKey(CliContext& context, const ParsedArgs& args, KeyPurpose purpose) {
    const std::vector<std::string> keyFiles = args.Values(kKeyFileOption.longName);
    if (purpose == KeyPurpose::Decrypt && !keyFiles.empty() &&
        !args.Has(kPassphraseFileOption.longName)) {
        return SharedKeyFromFiles(context, keyFiles);
    }
    ObtainedSecret result = ObtainPassphrase(context, args, purpose);
    if (result.ok()) {
        result.key = MakePassphraseKey(result.passphrase.str());
    }
    return result;
}

} // namespace kelvora::cli
