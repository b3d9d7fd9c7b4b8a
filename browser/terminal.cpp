// terminal.cpp - see terminal.h.
#include "browser/terminal.h"

#include <curses.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <term.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "picker/failure.h"

#undef columns // by curses.h and term.h
#undef lines

namespace kigou {
namespace {

constexpr std::size_t usual_rows = 24, usual_columns = 80;

// Mouse reports with numbers of any size, and marks around what is pasted; terminals that know
// neither pass over them.
constexpr const char *more_on = "\033[?1000h\033[?1006h\033[?2004h";
constexpr const char *more_off = "\033[?2004l\033[?1006l\033[?1000l";

volatile sig_atomic_t end_signal = 0, stop_asked = 0, went_on = 0;
constexpr std::array<int, 4> end_signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

extern "C" void note_end(int signal) {
    end_signal = signal;
}

extern "C" void note_resize(int) {}

extern "C" void note_job(int signal) {
    (signal == SIGTSTP ? stop_asked : went_on) = 1;
}

/** A string of the terminal's description; empty when it has none. */
std::string word(const char *name) {
    const char *const text = tigetstr(name);
    return text == nullptr || text == reinterpret_cast<const char *>(-1) ? "" : text;
}

/** The same without the pauses that old terminals wanted. */
std::string without_pauses(std::string text) {
    for (auto at = text.find("$<"); at != std::string::npos; at = text.find("$<", at)) {
        const auto end = text.find('>', at);
        if (end == std::string::npos) break;
        text.erase(at, end - at + 1);
    }
    return text;
}

std::string to_place(std::size_t row, std::size_t column) {
    static const std::string way = word("cup"); // of the one description that is read
    const char *const text = tparm(way.c_str(), static_cast<long>(row), static_cast<long>(column),
                                   0L, 0L, 0L, 0L, 0L, 0L, 0L);
    return without_pauses(text == nullptr ? "" : text);
}

} // namespace

std::string why_no_columns(int descriptor) {
    const char *const name = std::getenv("TERM");
    if (!name || *name == '\0') return "TERM is not set, so columns cannot be shown";
    int error = 0; // without it a name that is not known ends the program
    const bool known = cur_term != nullptr || setupterm(name, descriptor, &error) == OK;
    if (known && !word("cup").empty() && !word("clear").empty()) return {};
    return std::string("TERM=") + name + " cannot show columns";
}

void write_to_terminal(int descriptor, const std::string &bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno != EINTR) {
            throw Failure(FailureKind::failed,
                          std::string("the terminal is gone: ") + std::strerror(errno));
        }
        if (count > 0) done += static_cast<std::size_t>(count);
    }
}

Terminal::Terminal(int descriptor) : descriptor_(descriptor) {
    if (const std::string why = why_no_columns(descriptor); !why.empty()) {
        throw Failure(FailureKind::refused, why);
    }
    const std::string plain = without_pauses(word("sgr0"));
    words_ = {without_pauses(word("clear")),
              without_pauses(word("el")),
              plain,
              plain + without_pauses(word("rev")),
              plain + without_pauses(word("bold")),
              plain + without_pauses(word("dim")),
              to_place};
    enter_ = without_pauses(word("smcup") + word("civis")) + more_on;
    // The picture would stay on a terminal that has no other screen, or is told not to use it.
    leave_ = more_off + plain + words_.clear + without_pauses(word("cnorm") + word("rmcup"));
    take_over();
}

Terminal::~Terminal() {
    give_back();
}

void Terminal::take_over() {
    tcgetattr(descriptor_, &before_);
    raw_ = before_;
    raw_.c_iflag &= static_cast<tcflag_t>(~(ICRNL | INLCR | IGNCR | ISTRIP | IXON));
    raw_.c_lflag &= static_cast<tcflag_t>(~(ICANON | ECHO | ISIG | IEXTEN));
    raw_.c_cc[VMIN] = 1;
    raw_.c_cc[VTIME] = 0;
    tcsetattr(descriptor_, TCSADRAIN, &raw_);
    struct sigaction action {};
    action.sa_handler = note_end; // without SA_RESTART: a read ends with it
    for (const int signal : end_signals) sigaction(signal, &action, nullptr);
    action.sa_handler = note_resize;
    sigaction(SIGWINCH, &action, nullptr);
    action.sa_handler = note_job;
    for (const int signal : {SIGTSTP, SIGCONT}) sigaction(signal, &action, nullptr);
    write(enter_);
}

bool Terminal::was_away() {
    if (stop_asked != 0) {
        stop_asked = 0;
        write(leave_);
        tcsetattr(descriptor_, TCSADRAIN, &before_);
        raise(SIGSTOP);
    }
    if (went_on == 0) return false;
    went_on = 0;
    tcsetattr(descriptor_, TCSADRAIN, &raw_);
    write(enter_);
    return true;
}

void Terminal::give_back() {
    try {
        write(leave_);
    } catch (const Failure &) {
        // It is gone, and needs nothing any more.
    }
    tcsetattr(descriptor_, TCSADRAIN, &before_);
    for (const int signal : end_signals) ::signal(signal, SIG_DFL);
    for (const int signal : {SIGTSTP, SIGCONT}) ::signal(signal, SIG_DFL);
}

Terminal::Size Terminal::size() const {
    winsize size{};
    if (ioctl(descriptor_, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
        return {usual_rows, usual_columns};
    }
    return {size.ws_row, size.ws_col};
}

void Terminal::write(const std::string &bytes) {
    write_to_terminal(descriptor_, bytes);
}

std::string Terminal::read(int milliseconds) {
    pollfd ready{descriptor_, POLLIN, 0};
    const int count = poll(&ready, 1, milliseconds);
    if (end_signal != 0) throw Failure(FailureKind::interrupted, "a signal asked to end");
    if (count <= 0) return {};
    std::array<char, 4096> bytes{};
    const ssize_t got = ::read(descriptor_, bytes.data(), bytes.size());
    if (got < 0 && errno == EINTR) return {};
    if (got <= 0) throw Failure(FailureKind::failed, "the terminal is gone");
    return {bytes.data(), static_cast<std::size_t>(got)};
}

} // namespace kigou
