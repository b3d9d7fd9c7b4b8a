// encoding.h - text in the encodings that other programs write and read.
#ifndef KIGOU_PICKER_ENCODING_H
#define KIGOU_PICKER_ENCODING_H

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "picker/symbol_reading.h"

namespace kigou {

enum class Encoding {
    utf_8,
    euc_jp,   /**< ASCII, JIS X 0208 and half-width katakana; read, also row 13 of a vendor */
    shift_jis /**< the same and the vendor's characters, as CP932 */
};

/** "UTF-8", "EUC-JP" and "Shift_JIS", in the order of Encoding. */
const std::vector<std::string> &encoding_names();
const std::string &name_of(Encoding encoding);

/** @param name  one of encoding_names() */
Encoding encoding_named(std::string_view name);

/** Bytes of one character; nothing when the encoding lacks it. */
std::optional<std::string> encoded(char32_t character, Encoding encoding);

/** Bytes of a text; nothing when the encoding lacks a character of it. */
std::optional<std::string> encoded(std::string_view utf8, Encoding encoding);

/**
 * UTF-8 of a text, U+FFFD for what is no character of the encoding.
 * @throws Failure (refused) for a text with a NUL
 */
std::string decoded(std::span<const unsigned char> bytes, Encoding encoding);

/**
 * Encodes the lines of a text. A character that the encoding lacks becomes its code in braces,
 * {8740} for a double-byte one, as exports and put read it, else {U+2014}.
 */
class TextEncoder {
  public:
    explicit TextEncoder(Encoding encoding) : encoding_(encoding) {}

    /** @param utf8  of the text so far, what follows; whole characters */
    std::string encode(std::string_view utf8);

    /** The characters that were lacking, in UTF-8, by the lines from 1; of many the first. */
    const std::map<std::size_t, std::string> &lacking() const { return lacking_; }

  private:
    Encoding encoding_;
    std::map<std::size_t, std::string> lacking_;
    std::size_t line_ = 1;
};

} // namespace kigou

#endif
