// shell_word.h - a text as a word of a command that a person can type.
#ifndef KIGOU_SHELL_WORD_H
#define KIGOU_SHELL_WORD_H

#include <string>
#include <string_view>

namespace kigou {

/** The text, in quotation marks where a shell would take it apart. */
std::string shell_word(std::string_view text);

/** A path as such a word, which no command takes for an option. */
std::string path_word(std::string_view path);

/** A command in a sentence: between quotation marks, unless it has some itself. */
std::string quoted_command(const std::string &command);

} // namespace kigou

#endif
