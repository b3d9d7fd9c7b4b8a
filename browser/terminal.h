// terminal.h - the terminal that the browser runs on, and what must be put back at its end.
#ifndef KIGOU_BROWSER_TERMINAL_H
#define KIGOU_BROWSER_TERMINAL_H

#include <termios.h>

#include <cstddef>
#include <optional>
#include <string>

#include "browser/screen.h"

namespace kigou {

/**
 * Why columns cannot be drawn on a terminal, going by TERM; empty when they can. The description
 * of the terminal is read once in a process, and a Terminal goes by the same.
 */
std::string why_no_columns(int descriptor);

/** @throws Failure (failed) when the terminal is gone */
void write_to_terminal(int descriptor, const std::string &bytes);

/**
 * Takes a terminal over: its other screen, keys one by one, the mouse. All of it is put back when
 * this is destroyed; a signal that asks to end ends the next read by a Failure. One at a time.
 */
class Terminal {
  public:
    /**
     * @param descriptor  of the terminal, for reading and writing; it is not closed
     * @throws Failure (refused) when columns cannot be drawn on it
     */
    explicit Terminal(int descriptor);
    ~Terminal();
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    const TerminalWords &words() const { return words_; }

    struct Size {
        std::size_t rows, columns;
        bool operator==(const Size &) const = default;
    };
    Size size() const;

    /** @throws Failure (failed) when the terminal is gone */
    void write(const std::string &bytes);

    /**
     * Bytes that were typed; none when the time is over or the size has changed.
     * @param milliseconds  to wait; -1 as long as it takes
     * @throws Failure: failed when the terminal is gone, interrupted when a signal asks to end
     */
    std::string read(int milliseconds);

    /** Whether others may have written on it, since the process was stopped; once for each time. */
    bool was_away();

  private:
    void take_over();
    void give_back();

    int descriptor_;
    termios before_{}, raw_{};
    TerminalWords words_;
    std::string enter_, leave_;
};

} // namespace kigou

#endif
