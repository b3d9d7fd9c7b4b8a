// double_byte.cpp - see double_byte.h.
#include "picker/double_byte.h"

#include <string_view>

namespace kigou {
namespace {

constexpr std::u32string_view katakana =
    U"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノ"
    U"ハヒフヘホマミムメモヤユヨラリルレロワン゛゜";
constexpr char32_t first_half_width = 0xFF61;
constexpr char32_t half_width_dakuten = 0xFF9E;
constexpr char32_t half_width_handakuten = 0xFF9F;
static_assert(katakana.size() == half_width_handakuten - first_half_width + 1);

} // namespace

bool is_half_width(char32_t character) {
    return character >= first_half_width && character <= half_width_handakuten;
}

std::optional<char32_t> with_mark(char32_t kana, char32_t mark) {
    constexpr std::u32string_view take_dakuten = U"カキクケコサシスセソタチツテトハヒフヘホ";
    constexpr std::u32string_view take_handakuten = U"ハヒフヘホ";
    if (mark == half_width_dakuten) {
        if (kana == U'ウ') return U'ヴ';
        if (take_dakuten.find(kana) != std::u32string_view::npos) return kana + 1;
    }
    if (mark == half_width_handakuten && take_handakuten.find(kana) != std::u32string_view::npos) {
        return kana + 2;
    }
    return std::nullopt;
}

char32_t double_byte_form(char32_t character) {
    switch (character) {
        case U'"':
            return U'”';
        case U'\'':
            return U'’';
        case U'-':
            return U'−';
        case U'~':
            return U'〜';
        default:
            break;
    }
    if (character > 0x20 && character < 0x7F) return character + 0xFEE0;
    return is_half_width(character) ? katakana[character - first_half_width] : character;
}

} // namespace kigou
