// line_terminal.cpp - see line_terminal.h.
#include "browser/line_terminal.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "browser/terminal.h"
#include "picker/failure.h"

namespace kigou {
namespace {

volatile sig_atomic_t came_signal = 0;

extern "C" void note_came(int signal) {
    came_signal = signal;
}

} // namespace

LineTerminal::LineTerminal(int descriptor) : descriptor_(descriptor) {
    came_signal = 0;
    struct sigaction action {};
    action.sa_handler = note_came; // without SA_RESTART: waiting ends with it
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : taken) sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, &mask_before_);
    mask_waiting_ = mask_before_;
    for (std::size_t i = 0; i < taken.size(); ++i) {
        sigdelset(&mask_waiting_, taken[i]);
        sigaction(taken[i], nullptr, &before_[i]);
        // One that the caller has the program ignore, as nohup does, stays ignored.
        if (before_[i].sa_handler != SIG_IGN) sigaction(taken[i], &action, nullptr);
    }
}

LineTerminal::~LineTerminal() {
    for (std::size_t i = 0; i < taken.size(); ++i) sigaction(taken[i], &before_[i], nullptr);
    sigprocmask(SIG_SETMASK, &mask_before_, nullptr);
}

void LineTerminal::write(const std::string &text) {
    write_to_terminal(descriptor_, text);
}

std::optional<std::string> LineTerminal::read_line() {
    for (;;) {
        if (const auto end = bytes_.find('\n'); end != std::string::npos) {
            std::string line = bytes_.substr(0, end);
            bytes_.erase(0, end + 1);
            return line;
        }
        pollfd ready{descriptor_, POLLIN, 0};
        const int count = ppoll(&ready, 1, nullptr, &mask_waiting_);
        if (came_signal == SIGINT) return std::nullopt;
        if (came_signal != 0) throw Failure(FailureKind::interrupted, "a signal asked to end");
        if (count <= 0) continue;
        std::array<char, 4096> bytes{};
        const ssize_t got = ::read(descriptor_, bytes.data(), bytes.size());
        if (got == 0) return std::nullopt;
        if (got < 0) {
            if (errno == EINTR || errno == EAGAIN) continue;
            throw Failure(FailureKind::failed,
                          std::string("the terminal is gone: ") + std::strerror(errno));
        }
        bytes_.append(bytes.data(), static_cast<std::size_t>(got));
    }
}

} // namespace kigou
