// skk.cpp - SKK dictionaries: on each line a reading, a blank, and words with slashes around
// them, each with an annotation behind a semicolon. Readers look a reading up by halving, so
// those without okurigana stand in the order of their bytes.
#include <algorithm>
#include <map>

#include "picker/dictionary/dictionary.h"

namespace kigou {
namespace {

constexpr std::string_view head_of_okurigana = ";; okuri-ari entries.";
constexpr std::string_view head_of_others = ";; okuri-nasi entries.";

/** As Emacs calls it, which reads the header. */
std::string emacs_name_of(Encoding encoding) {
    std::string name = name_of(encoding);
    std::ranges::transform(name, name.begin(), [](char one) {
        return static_cast<char>(one >= 'A' && one <= 'Z' ? one - 'A' + 'a' : one);
    });
    return name;
}

std::string replaced(std::string text, std::string_view part, std::string_view by) {
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + by.size())) {
        text.replace(at, part.size(), by);
    }
    return text;
}

/** A comment without what would end it. */
std::string annotation(const std::string &comment) {
    return comment.empty() ? comment : ";" + replaced(replaced(comment, "/", "／"), ";", "；");
}

void add_words(std::string_view words, std::size_t line, bool with_okurigana,
               std::vector<DictionaryWord> &all) {
    bool in_block = false; // [る/.../] tells words of one ending again
    while (!words.empty()) {
        const auto end = std::min(words.find('/'), words.size());
        std::string_view word = words.substr(0, end);
        words.remove_prefix(std::min(end + 1, words.size()));
        if (word.starts_with('[')) in_block = true;
        const bool told_again = in_block;
        if (word == "]") in_block = false;
        if (told_again || word.empty()) continue;
        word = word.substr(0, word.find(';'));
        std::string reason;
        if (with_okurigana) reason = "is the stem of a word with okurigana";
        if (word.starts_with('(')) reason = "is reckoned by the input method";
        all.push_back({std::string(word), line, reason});
    }
}

} // namespace

std::string skk_dictionary(const std::vector<DictionaryEntry> &entries, Encoding encoding,
                           LeftOutSymbols &left_out) {
    struct Line {
        std::string reading, words;
    };
    std::map<std::string, Line> lines; // by the bytes of the reading
    for (const DictionaryEntry &entry : entries) {
        bool held = false;
        for (const std::string &reading : entry.readings) {
            const std::string spelled = replaced(reading, "ゔ", "う゛"); // as SKK has it
            const auto bytes = encoded(spelled, encoding);
            if (!bytes) continue; // ゕ, of a title with ヵ, is in UTF-8 alone
            held = true;
            Line &line = lines[*bytes];
            line.reading = spelled;
            line.words += entry.symbol + annotation(entry.comment) + "/";
        }
        if (!held) left_out["no reading"] += entry.symbol;
    }
    std::string text = ";; -*- mode: fundamental; coding: " + emacs_name_of(encoding) + " -*-\n";
    text.append(head_of_okurigana).append("\n").append(head_of_others).append("\n");
    for (const auto &[bytes, line] : lines) text += line.reading + " /" + line.words + "\n";
    return text;
}

std::vector<DictionaryWord> words_of_skk(std::string_view utf8) {
    std::vector<DictionaryWord> words;
    std::size_t number = 0;
    bool with_okurigana = false;
    for (const std::string &line : lines_of(utf8)) {
        ++number;
        if (line.starts_with(head_of_okurigana)) with_okurigana = true;
        if (line.starts_with(head_of_others)) with_okurigana = false;
        if (line.empty() || line.starts_with(';')) continue;
        const auto begin = line.find(" /");
        if (begin == std::string::npos) {
            words.push_back({line, number, "has no words between slashes"});
        } else {
            add_words(std::string_view(line).substr(begin + 2), number, with_okurigana, words);
        }
    }
    return words;
}

std::optional<Encoding> encoding_of_dictionary(std::span<const unsigned char> bytes) {
    const std::string_view text(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    std::string line(text.substr(0, text.find('\n')));
    if (!line.starts_with(";")) return std::nullopt;
    for (const Encoding encoding : {Encoding::euc_jp, Encoding::shift_jis, Encoding::utf_8}) {
        if (line.find("coding: " + emacs_name_of(encoding)) != std::string::npos) return encoding;
    }
    return std::nullopt;
}

} // namespace kigou
