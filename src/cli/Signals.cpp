#include "cli/Signals.h"

#include <array>
#include <atomic>
#include <csignal>

namespace kelvora::cli {
namespace {

constexpr std::array kStopSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

std::atomic<int> g_caught{0};
std::array<struct sigaction, kStopSignals.size()> g_previous{};

extern "C" void OnStopSignal(int signal) {
    int none = 0;
    g_caught.compare_exchange_strong(none, signal);
}

} // namespace

StopSignals::StopSignals() {
    g_caught = 0;
    struct sigaction action {};
    action.sa_handler = OnStopSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0; // no SA_RESTART: a blocked call must return with EINTR
    for (std::size_t i = 0; i < kStopSignals.size(); ++i) {
        sigaction(kStopSignals[i], &action, &g_previous[i]);
    }
}

StopSignals::~StopSignals() {
    for (std::size_t i = 0; i < kStopSignals.size(); ++i) {
        sigaction(kStopSignals[i], &g_previous[i], nullptr);
    }
}

int CaughtSignal() {
    return g_caught;
}

} // namespace kelvora::cli
