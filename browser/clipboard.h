// clipboard.h - the clipboard of whoever sits at a terminal, also a far one.
#ifndef KIGOU_BROWSER_CLIPBOARD_H
#define KIGOU_BROWSER_CLIPBOARD_H

#include <string>
#include <string_view>

namespace kigou {

/** What stands between a program and the terminal. */
enum class Between { nothing, tmux, screen };

/** Bytes that have a terminal set its clipboard; screen and tmux pass them on unread. */
std::string clipboard_bytes(std::string_view utf8, Between between);

/**
 * Sets the clipboard, in tmux its newest buffer too. A terminal does not tell whether it did it.
 * @param terminal  descriptor of the terminal, which nothing may be drawing on
 * @return false when TERM names a terminal that has none, or it could not be written to
 */
bool copy_to_clipboard(int terminal, const std::string &utf8);

} // namespace kigou

#endif
