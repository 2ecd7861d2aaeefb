#pragma once

namespace kelvora::cli {

// StopSignals turns SIGINT, SIGTERM, SIGHUP and SIGQUIT into a request to stop: the handler
// only notes the signal, and calls are not restarted, so a job blocked in open or read (a
// FIFO, a terminal) returns at once, cleans up and ends. The previous handlers come back
// when the guard is destroyed.
class StopSignals {
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;
};

// CaughtSignal is the first stop signal received while a StopSignals guard lived, or 0.
[[nodiscard]] int CaughtSignal();

// kSignalExitBase + the signal number is the exit status after a stop signal (130 for
// Ctrl-C), as shells report a command ended by a signal.
inline constexpr int kSignalExitBase = 128;

} // namespace kelvora::cli
