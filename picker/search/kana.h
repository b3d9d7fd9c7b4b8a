// kana.h - what is typed and what it is compared with, brought to one spelling: width, case,
// katakana and hiragana, long vowels, romaji. All texts are UTF-8.
#ifndef KIGOU_PICKER_SEARCH_KANA_H
#define KIGOU_PICKER_SEARCH_KANA_H

#include <string>
#include <string_view>
#include <vector>

namespace kigou {

/**
 * Text for comparing: compatibility forms and letter case folded (NFKC_Casefold of Unicode),
 * katakana as hiragana, blanks around dropped and those within made one.
 */
std::string folded(std::string_view utf8);

/**
 * Folded kana as it sounds: long vowels as vowels, so that すたー and すたあ, とう and とお are
 * the same, and ぢ づ を as じ ず お. The start of a text stays a start. Other characters pass.
 */
std::string spoken(std::string_view folded_text);

/** Readings that may be meant by what is typed. */
struct TypedReading {
    std::string kana;        /**< hiragana */
    std::string spoken;      /**< the same as spoken() spells it */
    bool unfinished = false; /**< letters of an unfinished syllable were taken for this one */
};

/**
 * The readings of folded text in kana, romaji (Hepburn or Kunrei, as an input method takes it,
 * macrons too) or both, with numbers up to 99 in figures. Each n may be a syllable of its own.
 * The letters of an unfinished syllable stand for each that begins so.
 * @return none for other text
 */
std::vector<TypedReading> typed_readings(std::string_view folded_text);

/** Folded kana or romaji in romaji of one spelling, for comparing letter by letter. */
std::string in_letters(std::string_view folded_text);

/**
 * The letters that type a reading in an input method: in Hepburn, and where it differs in Kunrei
 * behind it. ん is n, ー a hyphen.
 * @param reading  hiragana and ー
 */
std::vector<std::string> letters_to_type(std::string_view reading);

/** Whether two texts differ by one character: another one, one too many, or two exchanged. */
bool differ_by_one(std::string_view a, std::string_view b);

} // namespace kigou

#endif
