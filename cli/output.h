// output.h - text for terminals: UTF-8 with Japanese characters two columns wide.
#ifndef KIGOU_OUTPUT_H
#define KIGOU_OUTPUT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace kigou {

/** Columns that UTF-8 text takes: one for ASCII and half-width katakana, else two. */
std::size_t display_width(std::string_view utf8);

/** The text with blanks up to a width in columns; wider text stays as it is. */
std::string padded(std::string_view utf8, std::size_t columns);

/** The text with U+FFFD for control characters, which could command the terminal. */
std::string printable(std::string_view utf8);

/** Writes a line to the error output, "kigou: " first. */
void complain(std::string_view text);

} // namespace kigou

#endif
