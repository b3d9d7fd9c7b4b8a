// search.cpp - see search.h.
#include "picker/search/search.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <sstream>

#include "picker/codes.h"
#include "picker/double_byte.h"
#include "picker/search/kana.h"
#include "picker/search/ranks.h"
#include "picker/search/readings.h"
#include "picker/search/terms.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

constexpr std::size_t most_text = 1000; // bytes that are looked for
constexpr std::size_t most_meant = 5;

std::vector<std::string> words_of(const std::string &text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()};
}

/** The symbol that a character is or, for a single-byte one, has the form of. */
std::optional<Sjis> symbol_of(char32_t character) {
    auto symbol = sjis_of(double_byte_form(character));
    if (!symbol) {
        // One that means the same, such as the micro sign for μ.
        const std::u32string same = to_characters(folded(to_utf8(character)));
        if (same.size() == 1) symbol = sjis_of(same.front());
    }
    if (!symbol || symbol->size() != 2) return std::nullopt;
    return symbol;
}

/** Characters of a text that may be symbols, blanks left out. */
std::u32string characters_of(std::string_view text) {
    std::u32string characters;
    for (const char32_t character : to_characters(text)) {
        const auto marked =
            characters.empty() ? std::nullopt : with_mark(characters.back(), character);
        if (marked) {
            characters.back() = *marked;
        } else if (character > U' ') {
            characters += double_byte_form(character);
        }
    }
    return characters;
}

bool is_letter_or_digit(char32_t character) {
    return u_isalnum(static_cast<UChar32>(character)) != 0;
}

/** Titles of a path may be typed with blanks between. */
std::string without_blanks_at_slashes(std::string text) {
    for (const std::string_view blank : {" /", "/ "}) {
        for (auto at = text.find(blank); at != std::string::npos; at = text.find(blank)) {
            text.replace(at, blank.size(), "/");
        }
    }
    return text;
}

class Search {
  public:
    Search(const SearchIndex &index, std::span<const unsigned char> within) : index_(index) {
        if (within.empty()) return;
        searched_.emplace(index.size());
        for (TitleNumber title = 0; title < index.size(); ++title) {
            (*searched_)[title] = index.is_within(title, within);
        }
    }

    SearchResult run(std::string_view text) {
        const std::string typed = without_blanks_at_slashes(folded(text));
        find_codes(typed);
        const std::u32string characters = characters_of(text);
        const bool signs = std::ranges::none_of(characters, is_letter_or_digit);
        if (result_.found.empty() && characters.size() == 1) {
            find_characters(characters);
            find_lookalikes();
        }
        rank(typed);
        find_ranked();
        // Several may be the spelling of one, such as -> for an arrow.
        if (signs && characters.size() > 1) find_characters(characters);
        if (result_.found.empty() && result_.elsewhere.empty()) {
            result_.no_symbols.insert(result_.no_symbols.end(), lacking_.begin(), lacking_.end());
        }
        if (result_.found.empty() && result_.no_symbols.empty() && result_.elsewhere.empty()) {
            result_.meant = near_terms(typed, most_meant);
            add_near_titles(typed);
            // Such as several letters of a foreign alphabet.
            if (all_are_symbols(characters)) find_characters(characters);
        }
        return std::move(result_);
    }

  private:
    /** Titles with a symbol, of those that are searched. */
    std::vector<TitleNumber> titles_with(unsigned short code) const {
        const auto titles = index_.titles_with(code);
        if (!searched_) return {titles.begin(), titles.end()};
        std::vector<TitleNumber> found;
        for (const TitleNumber title : titles) {
            if ((*searched_)[title]) found.push_back(title);
        }
        return found;
    }

    void add(const Sjis &symbol, Match match, const std::string &code = {}) {
        const unsigned short number = code_of(std::span(symbol).first<2>());
        const auto same = std::ranges::find(result_.found, symbol, &FoundSymbol::symbol);
        if (same == result_.found.end()) {
            ranks_.add(number, {Match::itself, 0});
            std::vector<TitleNumber> titles = titles_with(number);
            if (searched_ && titles.empty()) return result_.elsewhere.push_back(symbol);
            result_.found.push_back({symbol, match, code, std::move(titles)});
        } else if (!code.empty()) {
            same->code += ", " + code;
        }
    }

    void find_codes(const std::string &typed) {
        for (const std::string &word : words_of(typed)) {
            for (const TypedCode &code : meanings_of(word)) {
                if (!code.refusal.empty()) {
                    result_.no_symbols.push_back(code.refusal);
                } else if (code.symbol.size() == 1) {
                    add_single_byte(code);
                } else if (repertoire_of(code.symbol) == Repertoire::none) {
                    result_.no_symbols.push_back(unassigned(code));
                } else {
                    add(code.symbol, Match::itself, code.label);
                }
            }
        }
    }

    static std::string unassigned(const TypedCode &code) {
        const std::string kuten = codes_of(code.symbol).kuten;
        if (kuten.empty()) return sentence("{1} is no double-byte code of Shift_JIS", code.label);
        if (code.label == "k:" + kuten) {
            return sentence("no character is assigned to kuten {1}", kuten);
        }
        return sentence("no character is assigned to {1}, which is kuten {2}", code.label, kuten);
    }

    void add_single_byte(const TypedCode &code) {
        const auto symbol =
            symbol_of(code.symbol.front() < 0x80 ? code.symbol.front()
                                                 : to_characters(to_utf8(code.symbol)).front());
        if (!symbol) {
            result_.no_symbols.push_back(sentence("{1} is a single-byte character", code.label));
            return;
        }
        result_.no_symbols.push_back(
            sentence("{1} is a single-byte character; its double-byte form is {2}", code.label,
                     to_utf8(*symbol)));
        add(*symbol, Match::itself, codes_of(*symbol).unicode);
    }

    void find_characters(const std::u32string &characters) {
        for (const char32_t character : characters) {
            if (const auto symbol = symbol_of(character)) {
                add(*symbol, Match::itself);
            } else if (lacking_.size() < most_meant) {
                const std::string utf8 = to_utf8(character);
                lacking_.push_back(
                    sentence("Shift_JIS has no character {1} ({2})", utf8, unicode_names(utf8)));
            }
        }
    }

    /** Whether they are in the sets, and no kana or letters that spell a word. */
    bool all_are_symbols(const std::u32string &characters) const {
        return std::ranges::all_of(characters, [&](char32_t character) {
            const auto symbol = symbol_of(character);
            const std::string plain = folded(to_utf8(character));
            if (plain.front() > 0 || !typed_readings(plain).empty()) return false;
            return symbol && !titles_with(code_of(std::span(*symbol).first<2>())).empty();
        });
    }

    void find_lookalikes() {
        if (result_.found.empty()) return;
        for (const Sjis &other : lookalikes_of(result_.found.front().symbol)) {
            ranks_.add(code_of(std::span(other).first<2>()), {Match::lookalike, 0});
        }
    }

    void rank_words(const std::string &text, Ranks &ranks) {
        rank_by_terms(text, ranks);
        index_.titles_holding(text, [&](const HeldTitle &title) {
            if (searched_ && !(*searched_)[title.number]) return;
            const Rank rank = rank_of_path(title.folded_path, text);
            for (const unsigned short code : title.symbols) ranks.add(code, rank);
        });
    }

    void rank(const std::string &typed) {
        if (typed.empty()) return;
        rank_words(typed, ranks_);
        const std::vector<std::string> words = words_of(typed);
        if (words.size() < 2) return;
        rank_by_words(words, ranks_);
        // A symbol may also answer each word by itself.
        Ranks all;
        rank_words(words.front(), all);
        for (std::size_t i = 1; i < words.size(); ++i) {
            Ranks one;
            rank_words(words[i], one);
            for (unsigned code = 0; code < 0x10000; ++code) {
                const auto number = static_cast<unsigned short>(code);
                all[number] = both(all[number], one[number]);
            }
        }
        for (unsigned code = 0; code < 0x10000; ++code) {
            ranks_.add(static_cast<unsigned short>(code), all[static_cast<unsigned short>(code)]);
        }
    }

    /** Those that were ranked, in the order of the sets where ranks are equal. */
    void find_ranked() {
        struct Candidate {
            Rank rank;
            unsigned short code;
        };
        std::vector<Candidate> candidates;
        for (const unsigned short code : index_.all_symbols()) {
            const Rank rank = ranks_[code];
            if (rank.matches() && rank.match() != Match::itself) candidates.push_back({rank, code});
        }
        std::ranges::stable_sort(candidates, {}, &Candidate::rank);
        std::vector<Candidate> absent;
        for (const Candidate &candidate : candidates) {
            auto titles = titles_with(candidate.code);
            if (titles.empty()) {
                absent.push_back(candidate);
                continue;
            }
            result_.found.push_back(
                {pair_of(candidate.code), candidate.rank.match(), {}, std::move(titles)});
        }
        for (const SymbolNames &symbol : all_names()) {
            const Rank rank = ranks_[symbol.code];
            if (rank.matches() && index_.titles_with(symbol.code).empty()) {
                absent.push_back({rank, symbol.code});
            }
        }
        std::ranges::stable_sort(absent, {}, &Candidate::rank);
        const Rank best = result_.found.empty()
                              ? Rank(Match::inside, 0)
                              : ranks_[code_of(std::span(result_.found.front().symbol).first<2>())];
        for (const Candidate &candidate : absent) {
            const bool better = candidate.rank < best && candidate.rank.match() != Match::itself &&
                                candidate.rank.match() != Match::lookalike;
            if (better) result_.elsewhere.push_back(pair_of(candidate.code));
        }
    }

    void add_near_titles(const std::string &typed) {
        if (!is_long_for_a_slip(typed)) return;
        for (TitleNumber title = 0; title < index_.size() && result_.meant.size() < most_meant;
             ++title) {
            const std::string_view path = index_.folded_path(title);
            const auto slash = path.rfind('/');
            if (differ_by_one(path.substr(slash + 1), typed))
                result_.meant.push_back(index_.path(title));
        }
    }

    const SearchIndex &index_;
    std::optional<std::vector<bool>> searched_;
    Ranks ranks_;
    SearchResult result_;
    std::vector<std::string> lacking_; /**< of what was typed and can be no symbol */
};

} // namespace

SearchResult search(const SearchIndex &index, std::string_view text,
                    std::span<const unsigned char> within) {
    if (text.size() > most_text) return {};
    return Search(index, within).run(text);
}

} // namespace kigou
