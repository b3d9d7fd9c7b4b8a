// text.h - between UTF-8, which people and terminals use, and the library's
// Shift_JIS, with the platform's converters.
//
// A character of JIS X 0208 is converted as EUC-JP, so that each cell has one Unicode
// character (1-29 U+2015, 1-32 U+FF3C, 1-33 U+301C, 1-61 U+2212). Everything else, such
// as the vendor rows, is converted as CP932.
#ifndef KIGOU_PICKER_TEXT_H
#define KIGOU_PICKER_TEXT_H

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kigou {

/** Shift_JIS text without a NUL at its end. */
using Sjis = std::vector<unsigned char>;

/** What a decoder makes of a byte or a pair that stands for no character. */
inline constexpr char32_t replacement_character = 0xFFFD;

/** How a double-byte code was decoded. */
enum class Repertoire {
    none, /**< not a character: undefined, or not one pair */
    jis_x_0208,
    vendor /**< a character of CP932 outside JIS X 0208 */
};

/**
 * Decodes Shift_JIS. Never fails and never loses what follows a bad byte: an undefined
 * pair becomes one U+FFFD, and a lead byte without a trail byte (0x40 to 0xFC but 0x7F)
 * becomes U+FFFD alone. ASCII and half-width katakana are single bytes; control
 * characters pass.
 */
std::string to_utf8(std::span<const unsigned char> sjis);

/**
 * Encodes UTF-8 as Shift_JIS, a JIS X 0208 cell first. Characters that other tables put
 * on a cell are accepted for it: U+FF5E as well as U+301C gives 0x8160.
 *
 * @throws Failure (refused) naming the first character that Shift_JIS lacks, or the first
 *         byte that is not UTF-8, with its position counted from 1
 */
Sjis to_sjis(std::string_view utf8);

/** One character as to_sjis encodes it, one byte or two; nothing when Shift_JIS lacks it. */
std::optional<Sjis> sjis_of(char32_t character);

/** Where one double-byte code belongs. */
Repertoire repertoire_of(std::span<const unsigned char> pair);

/** The characters of UTF-8 text; malformed bytes become U+FFFD, one each. */
std::u32string to_characters(std::string_view utf8);

/** UTF-8 of one character. */
std::string to_utf8(char32_t character);

/** The text without its last character. */
std::string without_last(std::string_view utf8);

/** Pasted text for a line: blanks for line ends within it, and none behind it. */
std::string on_one_line(std::string_view utf8);

/** As many of its first characters. */
std::string beginning_of(std::string_view utf8, std::size_t characters);

/** The text with U+FFFD for control characters, which could command what shows it. */
std::string printable(std::string_view utf8);

/** The beginning of a text that may be long, for a message. */
std::string shortened(std::string_view utf8);

/** UTF-8 of a text file: UTF-8 with or without a byte order mark, or UTF-16 with one. */
std::string utf8_of_file(std::span<const unsigned char> bytes);

/** "U+3000"; several characters are separated by a blank. */
std::string unicode_names(std::string_view utf8);

} // namespace kigou

#endif
