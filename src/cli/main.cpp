#include "cli/Commands.h"
#include "cli/Signals.h"
#include "cli/TerminalPrompt.h"
#include "files/ChunkHeap.h"

#include <cstdlib>
#include <iostream>
#include <unistd.h>
#include <vector>

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    kelvora::KeepChunkBuffersInHeap();
    std::vector<std::string> args(argv + 1, argv + argc);
    const auto prompt = kelvora::cli::OpenTerminalPrompt();
    const kelvora::cli::StopSignals stopSignals;
    kelvora::cli::CliContext context{
        std::cin,
        std::cout,
        std::cerr,
        [](const char* name) -> std::optional<std::string> {
            const char* value = std::getenv(name);
            return value == nullptr ? std::nullopt : std::optional<std::string>(value);
        },
        prompt.get(),
        isatty(STDERR_FILENO) == 1,
    };
    context.stopSignal = &stopSignals.Caught();
    const int status = kelvora::cli::RunCli(context, args);
    std::cout.flush();
    if (const int signal = stopSignals.Caught(); signal != 0) {
        return kelvora::cli::kSignalExitBase + signal;
    }
    return status;
}
