// double_byte.h - the double-byte forms of what a keyboard gives in single bytes.
#ifndef KIGOU_PICKER_DOUBLE_BYTE_H
#define KIGOU_PICKER_DOUBLE_BYTE_H

#include <optional>

namespace kigou {

/** Half-width katakana and its marks, U+FF61 to U+FF9F. */
bool is_half_width(char32_t character);

/**
 * The double-byte form of ASCII but the blank, and of half-width katakana; any other character
 * as it is. Four are spelt otherwise in JIS X 0208: " ' - ~ become ” ’ − 〜.
 */
char32_t double_byte_form(char32_t character);

/** Katakana with a half-width dakuten or handakuten behind it; nothing when it takes none. */
std::optional<char32_t> with_mark(char32_t kana, char32_t mark);

} // namespace kigou

#endif
