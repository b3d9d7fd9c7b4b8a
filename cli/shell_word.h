// shell_word.h - a text as a word of a command that a person can type.
#ifndef KIGOU_SHELL_WORD_H
#define KIGOU_SHELL_WORD_H

#include <string>
#include <string_view>

namespace kigou {

/** The text in quotation marks where a shell would take it apart. */
inline std::string shell_word(std::string_view text) {
    static constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_@%+=:,./-";
    bool quoted = false;
    std::string word;
    for (const char byte : text) {
        const bool japanese = static_cast<unsigned char>(byte) >= 0x80;
        quoted = quoted || (!japanese && plain.find(byte) == std::string_view::npos);
        word += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    }
    return quoted ? "'" + word + "'" : word;
}

} // namespace kigou

#endif
