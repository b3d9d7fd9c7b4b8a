// output.cpp - see output.h.
#include "cli/output.h"

#include <iostream>

#include "cli/text_codec.h"

namespace kigou {

std::size_t display_width(std::string_view utf8) {
    std::size_t columns = 0;
    for (const char32_t character : to_characters(utf8)) {
        const bool half = character < 0x80 || (character >= 0xFF61 && character <= 0xFF9F);
        columns += half ? 1 : 2;
    }
    return columns;
}

std::string padded(std::string_view utf8, std::size_t columns) {
    const std::size_t width = display_width(utf8);
    return std::string(utf8) + std::string(columns > width ? columns - width : 0, ' ');
}

std::string printable(std::string_view utf8) {
    std::string text;
    for (const char32_t character : to_characters(utf8)) {
        const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
        text += to_utf8(control ? replacement_character : character);
    }
    return text;
}

void complain(std::string_view text) {
    std::cerr << "kigou: " << printable(text) << '\n';
}

} // namespace kigou
