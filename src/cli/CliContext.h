#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora::cli {

// Exit status of every command.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1; // the job failed: wrong passphrase, damaged input, I/O
inline constexpr int kExitUsage = 2;   // the command line or the passphrase source is unusable

// PassphrasePrompt asks a person for a passphrase without echo. Ask returns nothing when
// the person ends the input.
class PassphrasePrompt {
public:
    virtual ~PassphrasePrompt() = default;
    virtual std::optional<std::string> Ask(std::string_view prompt) = 0;
};

// CliContext is everything a command touches outside itself, so that tests can run the
// commands in-process with string streams, a scripted environment and no terminal.
struct CliContext {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    // getenv answers an environment variable, or nothing when it is not set.
    std::function<std::optional<std::string>(const char*)> getenv;
    // prompt is null when there is no terminal to ask.
    PassphrasePrompt* prompt = nullptr;
    // showProgress is true when progress lines may be drawn on err (a terminal).
    bool showProgress = false;
    // quiet (--quiet) keeps notes and progress off err; verbose (--verbose) adds a line for
    // every step a command takes. Errors are always written.
    bool quiet = false;
    bool verbose = false;
};

// Note writes "kelvora-cli: <message>" on err unless the command runs quietly.
void Note(CliContext& context, std::string_view message);

// Fail writes the one error line "kelvora-cli: <message>" and returns status.
int Fail(CliContext& context, int status, std::string_view message);

// Warn writes the line "kelvora-cli: warning: <message>"; the command goes on.
void Warn(CliContext& context, std::string_view message);

} // namespace kelvora::cli
