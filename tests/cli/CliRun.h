#pragma once

#include "cli/Commands.h"

#include <atomic>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace kelvora::testing {

using Env = std::map<std::string, std::string>;

// Texts several tests use: "Hi" in English under the passphrase "secret", made by the
// format's hand-built fixture; characters Windows-1252 lacks.
inline constexpr const char* kHiUnderSecret =
    "HlsrjuX5+MdfLK9r2m8rDRV1R85+uTQsF/KUu7a3bQdYxA7YvWeS1fPaUB1dyehhplkyAivsbBvp\n"
    "MUWQUIOkOH5svjcgVxzm9yqPRt8bDmySz988vGwqMQzxJL1tm+OYvK6useHP8Dezt6+U82aNFiJT\n"
    "oHftgoQRQpXw43rOzBo=\n";
inline const std::string kAlpha = "\xCE\xB1";                 // α
inline const std::string kGreek = "\xCE\xB1\xCE\xB2\xCE\xB3"; // αβγ
inline const std::string kEmoji = "\xF0\x9F\x94\x91";

// Passphrase is an environment that gives passphrase.
inline Env Passphrase(const std::string& passphrase) {
    return {{"KELVORA_PASSPHRASE", passphrase}};
}

struct CliResult {
    int status = -1; // exit status, or -1 when a process did not exit normally
    std::string out;
    std::string err;
};

// ScriptedPrompt is a terminal whose person types answers in order, then ends the input;
// asked records the prompts shown.
struct ScriptedPrompt final : cli::PassphrasePrompt {
    std::optional<std::string> Ask(std::string_view prompt) override {
        asked.emplace_back(prompt);
        return asked.size() <= answers.size() ? std::optional(answers[asked.size() - 1])
                                              : std::nullopt;
    }
    std::vector<std::string> answers;
    std::vector<std::string> asked;
};

// Lookup answers the names env holds, and no other.
inline std::function<std::optional<std::string>(const char*)> Lookup(const Env& env) {
    return [&env](const char* name) -> std::optional<std::string> {
        const auto it = env.find(name);
        return it == env.end() ? std::nullopt : std::optional<std::string>(it->second);
    };
}

// RunInProcess runs a kelvora-cli command line inside the test, reading in, with an
// environment made of env alone (no variable of the test's own counts), the prompt given
// (none: no terminal) and stop as the stop flag.
inline CliResult RunInProcess(const std::vector<std::string>& args, std::istream& in,
                              const Env& env, cli::PassphrasePrompt* prompt = nullptr,
                              const std::atomic<int>* stop = nullptr) {
    std::ostringstream out;
    std::ostringstream err;
    cli::CliContext context{in, out, err, Lookup(env), prompt};
    context.stopSignal = stop;
    const int status = cli::RunCli(context, args);
    return CliResult{status, out.str(), err.str()};
}

inline CliResult RunInProcess(const std::vector<std::string>& args, const std::string& input = {},
                              const Env& env = {}) {
    std::istringstream in(input);
    return RunInProcess(args, in, env);
}

// Words splits a command line at blanks.
inline std::vector<std::string> Words(const std::string& line) {
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

} // namespace kelvora::testing
