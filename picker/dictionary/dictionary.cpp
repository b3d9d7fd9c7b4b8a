// dictionary.cpp - see dictionary.h; mozc.cpp, skk.cpp, xcompose.cpp and quick_phrase.cpp have
// a format each.
#include "picker/dictionary/dictionary.h"

#include <algorithm>
#include <set>

#include "picker/symbol_data.h"

namespace kigou {
namespace {

std::string symbol_list(const std::vector<DictionaryEntry> &entries) {
    std::string text;
    for (const DictionaryEntry &entry : entries) text += entry.symbol + "\n";
    return text;
}

} // namespace

std::string write_dictionary(const SymbolSet &set, DictionaryFormat format, Encoding encoding,
                             LeftOutSymbols &left_out) {
    const std::vector<DictionaryEntry> entries = dictionary_entries(set, encoding, left_out);
    switch (format) {
        case DictionaryFormat::mozc:
            return mozc_dictionary(entries, encoding, left_out);
        case DictionaryFormat::skk:
            return skk_dictionary(entries, encoding, left_out);
        case DictionaryFormat::xcompose:
            return compose_sequences(entries, left_out);
        case DictionaryFormat::quick_phrase:
            return quick_phrases(entries, left_out);
        case DictionaryFormat::list:
            break;
    }
    return symbol_list(entries);
}

Sjis read_dictionary(std::string_view text, DictionaryFormat format, LeftOutList &left_out) {
    std::string utf8(text);
    if (utf8.find('\n') == std::string::npos) std::ranges::replace(utf8, '\r', '\n');
    std::vector<Sjis> symbols;
    std::set<Sjis> known;
    for (const DictionaryWord &word :
         format == DictionaryFormat::mozc ? words_of_mozc(utf8) : words_of_skk(utf8)) {
        const std::string place = "line " + std::to_string(word.line);
        if (!word.reason.empty() || to_characters(word.text).size() != 1) {
            left_out.add(place, "'" + shortened(word.text) + "' " +
                                    (word.reason.empty() ? "is no single character" : word.reason));
            continue;
        }
        for (Sjis &symbol : read_symbols(word.text, Reading::plain, place, left_out)) {
            if (known.insert(symbol).second) symbols.push_back(std::move(symbol));
        }
    }
    Sjis data;
    append_lines(data, symbols);
    return data;
}

std::optional<DictionaryFormat> dictionary_format_of(std::string_view utf8) {
    if (utf8.starts_with(";;")) return DictionaryFormat::skk;
    for (const std::string &line : lines_of(utf8)) {
        if (line.empty() || line.starts_with('#') || line.starts_with('!')) continue;
        const auto tab = line.find('\t');
        if (tab != std::string::npos && tab > 0 && line.find('\t', tab + 1) != std::string::npos) {
            return DictionaryFormat::mozc;
        }
        if (line.ends_with('/') && line.find(" /") != std::string::npos) {
            return DictionaryFormat::skk;
        }
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace kigou
