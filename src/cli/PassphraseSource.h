#pragma once

#include "cli/CliArgs.h"
#include "cli/CliOutput.h"
#include "common/Bytes.h"

#include <array>

namespace kelvora::cli {

// The options through which a command receives its passphrase. A passphrase is never taken
// from a command-line argument, where other users could read it.
inline constexpr OptionSpec kPassphraseFileOption{"passphrase-file", 'p', "FILE",
                                                  "read the passphrase from FILE's first line"};
inline constexpr OptionSpec kKeyFileOption{
    "key-file", '\0', "FILE", "a shared-security key, given once per key, key 1 first"};
inline constexpr std::size_t kMinSharedKeysToEncrypt = 2; // one key is no shared security
inline constexpr std::size_t kMaxSharedKeys = 10;
inline constexpr const char* kPassphraseVariable = "KELVORA_PASSPHRASE";

enum class KeyPurpose {
    Encrypt, // asks twice on a terminal; --key-file 2 to 10 times; refuses what a key cannot hold
    Decrypt, // --key-file 1 to 10 times; warns of what a key cannot hold
    Rate,    // asks once; the passphrase itself is wanted, not a key
};

// ObtainedSecret is a passphrase (Windows-1252) or a finished key, or the exit status and
// message of the failure.
struct ObtainedSecret {
    SecretString passphrase;
    SecretBytes key;
    int status = kExitSuccess;
    std::string error;
    bool ok() const { return status == kExitSuccess; }

    // Refusal is the failure with status and its message.
    static ObtainedSecret Refusal(int status, std::string message) {
        ObtainedSecret refused;
        refused.status = status;
        refused.error = std::move(message);
        return refused;
    }
};

// ObtainPassphrase takes the passphrase from the first source present: -p FILE (its first
// line; "-" reads the first line of standard input), the environment variable, the
// terminal. An empty passphrase, or no source at all, is a usage error. A character that
// Windows-1252 lacks would reach the key as "?": encryption refuses it (exit 1, naming the
// character), the other purposes warn on err; a passphrase longer than the key warns too.
[[nodiscard]] ObtainedSecret ObtainPassphrase(CliContext& context, const ParsedArgs& args,
                                              KeyPurpose purpose);

// ObtainKey gives the 32-byte key for a purpose: the passphrase key rule, or with --key-file
// the shared key rule over the keys in order, key 1 first. -p with --key-file is a usage
// error, and so is a number of key files the purpose does not take.
[[nodiscard]] ObtainedSecret ObtainKey(CliContext& context, const ParsedArgs& args,
                                       KeyPurpose purpose);

} // namespace kelvora::cli
