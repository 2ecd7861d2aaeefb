#include "cli/Signals.h"

namespace kelvora::cli {
namespace {

constexpr std::array kStopSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

// CaughtSlot is where the handler notes a signal: a handler reaches nothing but static
// storage. Only the scope object hands it out.
std::atomic<int>& CaughtSlot() {
    static constinit std::atomic<int> caught{0};
    return caught;
}

extern "C" void OnStopSignal(int signal) {
    int none = 0;
    CaughtSlot().compare_exchange_strong(none, signal);
}

} // namespace

StopSignals::StopSignals() {
    static_assert(kStopSignals.size() == std::tuple_size_v<decltype(m_previous)>);
    CaughtSlot() = 0;
    struct sigaction action {};
    action.sa_handler = OnStopSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0; // no SA_RESTART: a blocked call must return with EINTR
    for (std::size_t i = 0; i < kStopSignals.size(); ++i) {
        sigaction(kStopSignals[i], &action, &m_previous[i]);
    }
}

StopSignals::~StopSignals() {
    for (std::size_t i = 0; i < kStopSignals.size(); ++i) {
        sigaction(kStopSignals[i], &m_previous[i], nullptr);
    }
}

const std::atomic<int>& StopSignals::Caught() const {
    return CaughtSlot();
}

} // namespace kelvora::cli
