// readings.h - what the symbols that come with the program are called and how they are read,
// and which symbols are taken for each other. The tables are compiled in.
#ifndef KIGOU_PICKER_SEARCH_READINGS_H
#define KIGOU_PICKER_SEARCH_READINGS_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "picker/text.h"

namespace kigou {

/** A symbol's own line of data/readings.tsv. Texts are UTF-8. */
struct SymbolNames {
    unsigned short code = 0;   /**< Shift_JIS, lead byte first */
    std::string_view readings; /**< hiragana and ー, commas between, most used first */
    std::string_view name;     /**< Japanese; of this symbol alone */
    std::string_view english;  /**< lower-case letters, blanks, hyphens; of this symbol alone */
    std::string_view also{};   /**< other names, words and spellings, commas between */
};

/** All symbols that have names, by their codes. */
std::span<const SymbolNames> all_names();

/** Names of a symbol; null for one without, as most kanji are. */
const SymbolNames *names_of(std::span<const unsigned char> symbol);

/** The parts of a text with commas between. */
std::vector<std::string_view> listed(std::string_view text);

/** Readings of a symbol one by one, most used first; none for one without. */
std::vector<std::string> readings_of(std::span<const unsigned char> symbol);

/** Whether a reading is that of a whole kind of symbols (きごう), which tells little of one. */
bool is_group_word(std::string_view reading);

/** Symbols that are taken for this one, each once; none for most. */
std::vector<Sjis> lookalikes_of(std::span<const unsigned char> symbol);

} // namespace kigou

#endif
