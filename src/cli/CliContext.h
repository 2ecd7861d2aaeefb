#pragma once

#include <atomic>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora::cli {

// PassphrasePrompt asks a person for a passphrase without echo. Ask returns nothing when
// the person ends the input.
class PassphrasePrompt {
public:
    virtual ~PassphrasePrompt() = default;
    virtual std::optional<std::string> Ask(std::string_view prompt) = 0;
};

// CliContext is everything a command touches outside itself, so that tests can run the
// commands in-process with string streams, a scripted environment and prompt, no terminal
// and a stop flag of their own.
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
    // stopSignal, when set, holds the stop signal received so far (0 while none): main
    // points it at its StopSignals scope. A job ends cleanly at its next check.
    const std::atomic<int>* stopSignal = nullptr;
};

// StopRequested is true once a stop signal (or a test standing in for one) asked to stop.
[[nodiscard]] inline bool StopRequested(const CliContext& context) {
    return context.stopSignal != nullptr && *context.stopSignal != 0;
}

} // namespace kelvora::cli
