#pragma once

#include <array>
#include <atomic>
#include <csignal>

namespace kelvora::cli {

// StopSignals is the scope, created once in main, during which SIGINT, SIGTERM, SIGHUP and
// SIGQUIT become a request to stop: the handler only notes the signal, and calls are not
// restarted, so a job blocked in open or read (a FIFO, a terminal) returns at once, cleans
// up and ends. Commands see the request through CliContext::stopSignal, never through the
// signal itself, so tests stop them by setting a flag of their own. The previous handlers
// come back when the scope ends.
class StopSignals {
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    // Caught is the first stop signal received while the scope lived, or 0.
    [[nodiscard]] const std::atomic<int>& Caught() const;

private:
    std::array<struct sigaction, 4> m_previous{};
};

// kSignalExitBase + the signal number is the exit status after a stop signal (130 for
// Ctrl-C), as shells report a command ended by a signal.
inline constexpr int kSignalExitBase = 128;

} // namespace kelvora::cli
