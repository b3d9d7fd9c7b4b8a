// search.h - the one search of every front end: symbols by what a person types, without modes.
//
// It takes readings in kana of either kind and width and in romaji, finished or not; words of
// names in Japanese and English; titles; symbols themselves; codes.
#ifndef KIGOU_PICKER_SEARCH_SEARCH_H
#define KIGOU_PICKER_SEARCH_SEARCH_H

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "picker/search/index.h"
#include "picker/text.h"

namespace kigou {

/** How a symbol was found, the best first. */
enum class Match {
    itself,        /**< it was typed, or its code */
    reading,       /**< it is read so */
    lookalike,     /**< it is taken for one that was typed */
    reading_start, /**< a reading begins so */
    name_word,     /**< its name is, or begins with, what was typed, or a word of its name does */
    title,         /**< a title that holds it begins so */
    inside         /**< a reading, a name or a title has it somewhere else */
};

struct FoundSymbol {
    Sjis symbol; /**< two bytes */
    Match match;
    std::string code; /**< the code that was typed, with its kind ("j:216E"); else empty */
    std::vector<TitleNumber> titles; /**< that hold it, of those that were searched; none for a
                                        symbol that was typed and is in no set */
};

struct SearchResult {
    std::vector<FoundSymbol> found; /**< best first, each symbol once */

    /** Codes and characters that were typed and stand for no symbol, and why; lines for people. */
    std::vector<std::string> no_symbols;

    /** Symbols that answer better than all that is found, and stand nowhere that was searched. */
    std::vector<Sjis> elsewhere;

    /** When nothing is found: readings, words and titles that differ by one letter. */
    std::vector<std::string> meant;
};

/**
 * @param text    as typed, UTF-8; nothing is found for an empty one
 * @param within  full path of the only title or set to search, with all below; empty: all sets
 */
SearchResult search(const SearchIndex &index, std::string_view text,
                    std::span<const unsigned char> within = {});

} // namespace kigou

#endif
