// line_terminal.h - a terminal that is read and written line by line, as it is.
#ifndef KIGOU_BROWSER_LINE_TERMINAL_H
#define KIGOU_BROWSER_LINE_TERMINAL_H

#include <signal.h>

#include <array>
#include <optional>
#include <string>

namespace kigou {

/**
 * Leaves the terminal in its line mode, so echo, erasing and input methods go on. Signals that ask
 * to end come through only while a line is awaited, so none ends an edit. One at a time.
 */
class LineTerminal {
  public:
    /** @param descriptor  of the terminal, for reading and writing; it is not closed */
    explicit LineTerminal(int descriptor);
    ~LineTerminal();
    LineTerminal(const LineTerminal &) = delete;
    LineTerminal &operator=(const LineTerminal &) = delete;

    /** @throws Failure (failed) when the terminal is gone */
    void write(const std::string &text);

    /**
     * A line without its end; none at the end of the input and when Ctrl+C was typed.
     * @throws Failure: failed when the terminal is gone, interrupted when a signal asks to end
     */
    std::optional<std::string> read_line();

  private:
    static constexpr std::array<int, 3> taken{SIGINT, SIGTERM, SIGHUP};

    int descriptor_;
    std::string bytes_; /**< behind the last line that was read */
    std::array<struct sigaction, taken.size()> before_{};
    sigset_t mask_before_{}, mask_waiting_{};
};

} // namespace kigou

#endif
