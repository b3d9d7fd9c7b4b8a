// entries.cpp - see entries.h.
#include "picker/dictionary/entries.h"

#include <algorithm>
#include <map>

#include "picker/codes.h"
#include "picker/search/kana.h"
#include "picker/search/readings.h"
#include "picker/symbol_data.h"
#include "picker/title.h"

namespace kigou {
namespace {

/** A title that is kana alone as a reading; else nothing. */
std::string reading_of_title(const std::string &path) {
    std::string reading = folded(last_title(path));
    const auto is_kana = [](char32_t one) {
        return (one >= U'ぁ' && one <= U'ゖ') || one == U'ー';
    };
    return std::ranges::all_of(to_characters(reading), is_kana) ? reading : std::string();
}

class Collector {
  public:
    Collector(Encoding encoding, LeftOutSymbols &left_out)
        : encoding_(encoding), left_out_(left_out) {}

    void add(const Sjis &code, const std::string &path, const std::string &title_reading) {
        const auto [place, is_new] = places_.try_emplace(code, entries_.size());
        if (is_new) entries_.push_back(made(code, path));
        if (!title_reading.empty()) add_reading(entries_[place->second], title_reading);
    }

    std::vector<DictionaryEntry> finish() {
        std::vector<DictionaryEntry> held;
        for (DictionaryEntry &entry : entries_) {
            if (repertoire_of(entry.code) == Repertoire::none) {
                left_out_["no character"] += "{" + codes_of(entry.code).sjis + "}";
            } else if (!encoded(entry.symbol, encoding_)) {
                left_out_["not in " + name_of(encoding_)] += entry.symbol;
            } else {
                held.push_back(std::move(entry));
            }
        }
        return held;
    }

  private:
    DictionaryEntry made(const Sjis &code, const std::string &path) const {
        const SymbolNames *const names = names_of(code);
        DictionaryEntry entry{code, to_utf8(code), {}, names ? std::string(names->name) : path};
        for (std::string &reading : readings_of(code)) {
            if (!is_group_word(reading)) add_reading(entry, std::move(reading));
        }
        if (!encoded(entry.comment, encoding_)) entry.comment.clear();
        return entry;
    }

    static void add_reading(DictionaryEntry &entry, std::string reading) {
        const bool known = std::ranges::find(entry.readings, reading) != entry.readings.end();
        if (!known) entry.readings.push_back(std::move(reading));
    }

    Encoding encoding_;
    LeftOutSymbols &left_out_;
    std::vector<DictionaryEntry> entries_;
    std::map<Sjis, std::size_t> places_;
};

} // namespace

std::vector<DictionaryEntry> dictionary_entries(const SymbolSet &set, Encoding encoding,
                                                LeftOutSymbols &left_out) {
    Collector collector(encoding, left_out);
    for (const SetBlock &block : set.blocks) {
        const std::string path = to_utf8(block.path), reading = reading_of_title(path);
        for (const Sjis &code : symbols_in(block.data)) collector.add(code, path, reading);
    }
    return collector.finish();
}

} // namespace kigou
