#pragma once

#include <map>
#include <string>
#include <vector>

namespace kelvora::testing {

struct ProcessResult {
    int status = -1; // exit status, or -1 when the process did not exit normally
    std::string out;
    std::string err;
};

// RunCli runs the built kelvora-cli as a process in its own session (so it never has a
// terminal to ask), feeding input on standard input. The environment is this process's
// without KELVORA_PASSPHRASE, plus env.
ProcessResult RunCli(const std::vector<std::string>& args, const std::string& input = {},
                     const std::map<std::string, std::string>& env = {});

// SignalledResult is a run that got a signal: how long the program took to end after it
// (-1 when it had not ended after 5 seconds and was killed).
struct SignalledResult : ProcessResult {
    double secondsToEnd = -1;
};

// RunCliSignalled runs kelvora-cli as RunCli does (with no input) and sends it signal after
// afterMs milliseconds.
SignalledResult RunCliSignalled(const std::vector<std::string>& args,
                                const std::map<std::string, std::string>& env, int signal,
                                int afterMs);

} // namespace kelvora::testing
