// mozc.cpp - the text form of mozc's user dictionary, as its dictionary tool imports and exports
// it: UTF-8, on each line a reading, a word, a part of speech and a comment with tabs between.
#include "picker/dictionary/dictionary.h"

namespace kigou {
namespace {

constexpr std::size_t most_bytes = 300; // of a reading, and of a comment; a longer one is refused
constexpr std::size_t most_characters = most_bytes / 3;

} // namespace

std::string mozc_dictionary(const std::vector<DictionaryEntry> &entries, Encoding encoding,
                            LeftOutSymbols &left_out) {
    std::string text;
    for (const DictionaryEntry &entry : entries) {
        bool held = false;
        for (const std::string &reading : entry.readings) {
            // ゔ is in UTF-8 alone.
            if (reading.size() > most_bytes || !encoded(reading, encoding)) continue;
            held = true;
            text += reading + "\t" + entry.symbol + "\t記号\t" +
                    beginning_of(entry.comment, most_characters) + "\n";
        }
        if (!held) left_out["no reading"] += entry.symbol;
    }
    return text;
}

std::vector<DictionaryWord> words_of_mozc(std::string_view utf8) {
    std::vector<DictionaryWord> words;
    std::size_t number = 0;
    for (const std::string &line : lines_of(utf8)) {
        ++number;
        // '!' begins the head of a dictionary that another input method exported in this form.
        if (line.empty() || line.starts_with('#') || line.starts_with('!')) continue;
        const auto begin = line.find('\t');
        if (begin == std::string::npos) {
            words.push_back({line, number, "has no word behind a tab"});
            continue;
        }
        words.push_back(
            {line.substr(begin + 1, line.find('\t', begin + 1) - begin - 1), number, {}});
    }
    return words;
}

} // namespace kigou
