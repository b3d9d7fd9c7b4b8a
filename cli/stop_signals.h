// stop_signals.h - signals that end the program, held back while an edit is open: it ends
// between two steps then, and leaves no working file.
#ifndef KIGOU_STOP_SIGNALS_H
#define KIGOU_STOP_SIGNALS_H

#include <signal.h>

#include <array>

namespace kigou {

/** Takes SIGINT, SIGTERM, SIGHUP and SIGPIPE until it is destroyed. At most one at a time. */
class StopSignals {
  public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals &) = delete;
    StopSignals &operator=(const StopSignals &) = delete;

    /** Whether one of them has come. */
    static bool came();

    /** Ends the program by the signal that came, as if it had not been taken; else returns. */
    static void die_if_came();

  private:
    std::array<struct sigaction, 4> before_{};
};

} // namespace kigou

#endif
