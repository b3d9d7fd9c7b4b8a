// shell_word.cpp - see shell_word.h.
#include "cli/shell_word.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace kigou {
namespace {

bool is_control(char byte) {
    return (byte >= 0 && byte < 0x20) || byte == 0x7F;
}

/** $'...', which a shell reads back with all control characters. */
std::string with_escapes(std::string_view text) {
    std::string word = "$'";
    for (const char byte : text) {
        if (is_control(byte)) {
            std::array<char, 5> escape{};
            std::snprintf(escape.data(), escape.size(), "\\%03o", static_cast<unsigned>(byte));
            word += escape.data();
        } else {
            if (byte == '\'' || byte == '\\') word += '\\';
            word += byte;
        }
    }
    return word + "'";
}

} // namespace

std::string shell_word(std::string_view text) {
    static constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_@%+=:,./-";
    if (std::any_of(text.begin(), text.end(), is_control)) return with_escapes(text);
    bool quoted = false;
    std::string word;
    for (const char byte : text) {
        const bool japanese = static_cast<unsigned char>(byte) >= 0x80;
        quoted = quoted || (!japanese && plain.find(byte) == std::string_view::npos);
        word += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    }
    return quoted ? "'" + word + "'" : word;
}

std::string path_word(std::string_view path) {
    return shell_word(path.starts_with('-') ? "./" + std::string(path) : std::string(path));
}

std::string quoted_command(const std::string &command) {
    return command.find('\'') == std::string::npos ? "'" + command + "'" : command;
}

} // namespace kigou
