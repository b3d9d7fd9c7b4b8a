// terms.h - the readings and names of all symbols, ready to be compared with what is typed.
#ifndef KIGOU_PICKER_SEARCH_TERMS_H
#define KIGOU_PICKER_SEARCH_TERMS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "picker/search/ranks.h"

namespace kigou {

/** Ranks the symbols whose readings or names answer a folded text. */
void rank_by_terms(std::string_view folded_text, Ranks &ranks);

/** Ranks those of whose names each of several words begins a word. */
void rank_by_words(const std::vector<std::string> &folded_words, Ranks &ranks);

/** How well a folded path answers a folded text: by its last title, or one above. */
Rank rank_of_path(std::string_view path, std::string_view folded_text);

/** Whether a text is long enough to be a slip of something: short ones are near to everything. */
bool is_long_for_a_slip(std::string_view folded_text);

/**
 * Readings, and words of English names, that differ by one letter or kana from a folded text;
 * each once, the likeliest first, so many at most. None for a short text.
 */
std::vector<std::string> near_terms(std::string_view folded_text, std::size_t most);

} // namespace kigou

#endif
