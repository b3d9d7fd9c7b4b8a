// quick_phrase.cpp - fcitx5's quick phrases: a line is what is typed, a blank, and what it
// becomes. A digit chooses what is offered, so codes cannot be typed; a comment has no place.
#include "picker/dictionary/dictionary.h"
#include "picker/search/kana.h"

namespace kigou {

std::string quick_phrases(const std::vector<DictionaryEntry> &entries, LeftOutSymbols &left_out) {
    std::string text;
    for (const DictionaryEntry &entry : entries) {
        if (entry.readings.empty()) left_out["no reading"] += entry.symbol;
        for (const std::string &reading : entry.readings) {
            for (const std::string &letters : letters_to_type(reading)) {
                text += letters + " " + entry.symbol + "\n";
            }
        }
    }
    return text;
}

} // namespace kigou
