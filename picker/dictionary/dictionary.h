// dictionary.h - the symbols of a set for the input method that a person has, and back.
#ifndef KIGOU_PICKER_DICTIONARY_DICTIONARY_H
#define KIGOU_PICKER_DICTIONARY_DICTIONARY_H

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "picker/dictionary/entries.h"

namespace kigou {

enum class DictionaryFormat {
    mozc,         /**< the text form of mozc's user dictionary: reading, word, 記号, comment */
    skk,          /**< an SKK dictionary, sorted by the bytes of the readings in its encoding */
    xcompose,     /**< sequences of libX11 and libxkbcommon for the Compose key */
    quick_phrase, /**< fcitx5's quick phrases: letters and a symbol a line */
    list          /**< a symbol a line */
};

/**
 * @param encoding  that the caller gives the text; the header of an SKK dictionary names it
 * @param left_out  gets each symbol that the dictionary does not hold, and why
 * @return UTF-8, LF
 */
std::string write_dictionary(const SymbolSet &set, DictionaryFormat format, Encoding encoding,
                             LeftOutSymbols &left_out);

/** A word of a dictionary, and the line that it stands in. */
struct DictionaryWord {
    std::string text;   /**< UTF-8 */
    std::size_t line;   /**< from 1 */
    std::string reason; /**< why it is no symbol although it may look like one; mostly empty */
};

/**
 * The symbols of a dictionary as lines of data, each once, in its order.
 * @param format    mozc or skk
 * @param left_out  gets the words that are no symbol, and why
 */
Sjis read_dictionary(std::string_view utf8, DictionaryFormat format, LeftOutList &left_out);

/** mozc or skk, when the beginning of a text looks so. */
std::optional<DictionaryFormat> dictionary_format_of(std::string_view utf8);

/** The encoding that the first line of an SKK dictionary names; nothing when it names none. */
std::optional<Encoding> encoding_of_dictionary(std::span<const unsigned char> bytes);

// One format each. The writers name what they cannot hold.
std::string mozc_dictionary(const std::vector<DictionaryEntry> &entries, Encoding encoding,
                            LeftOutSymbols &left_out);
std::vector<DictionaryWord> words_of_mozc(std::string_view utf8);
std::string skk_dictionary(const std::vector<DictionaryEntry> &entries, Encoding encoding,
                           LeftOutSymbols &left_out);
std::vector<DictionaryWord> words_of_skk(std::string_view utf8);
std::string compose_sequences(const std::vector<DictionaryEntry> &entries,
                              LeftOutSymbols &left_out);
std::string quick_phrases(const std::vector<DictionaryEntry> &entries, LeftOutSymbols &left_out);

} // namespace kigou

#endif
