// stop_signals.cpp - see stop_signals.h.
#include "cli/stop_signals.h"

namespace kigou {
namespace {

constexpr std::array<int, 4> taken{SIGINT, SIGTERM, SIGHUP, SIGPIPE};
volatile sig_atomic_t came_signal = 0;

extern "C" void note_signal(int signal) {
    came_signal = signal;
}

} // namespace

StopSignals::StopSignals() {
    struct sigaction action {};
    action.sa_handler = note_signal;
    for (std::size_t i = 0; i < taken.size(); ++i) {
        sigaction(taken[i], nullptr, &before_[i]);
        // One that the caller has the program ignore, as nohup does, stays ignored.
        if (before_[i].sa_handler != SIG_IGN) sigaction(taken[i], &action, nullptr);
    }
}

StopSignals::~StopSignals() {
    for (std::size_t i = 0; i < taken.size(); ++i) sigaction(taken[i], &before_[i], nullptr);
}

bool StopSignals::came() {
    return came_signal != 0;
}

void StopSignals::die_if_came() {
    if (came_signal == 0) return;
    signal(came_signal, SIG_DFL);
    raise(came_signal);
}

} // namespace kigou
