// entries.h - the symbols of a set as a dictionary of an input method has them.
#ifndef KIGOU_PICKER_DICTIONARY_ENTRIES_H
#define KIGOU_PICKER_DICTIONARY_ENTRIES_H

#include <map>
#include <string>
#include <vector>

#include "picker/encoding.h"
#include "picker/set.h"

namespace kigou {

struct DictionaryEntry {
    Sjis code;
    std::string symbol;                /**< UTF-8 */
    std::vector<std::string> readings; /**< hiragana and ー, most used first; may be none */
    std::string comment;               /**< the symbol's name, else the path of its title */
};

/** Symbols that a dictionary does not hold, as text, by what they are or lack. */
using LeftOutSymbols = std::map<std::string, std::string>;

/**
 * Each symbol once, in the order of the set. Its readings are those that the program knows, but
 * for the words of a whole kind of symbols (きごう), and any title that is kana alone. A comment
 * that the encoding lacks is left empty.
 * @param left_out  gets what is no character, and what the encoding lacks
 */
std::vector<DictionaryEntry> dictionary_entries(const SymbolSet &set, Encoding encoding,
                                                LeftOutSymbols &left_out);

} // namespace kigou

#endif
