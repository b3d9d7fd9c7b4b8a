// terms.cpp - see terms.h.
#include "picker/search/terms.h"

#include <algorithm>
#include <string>

#include "picker/codes.h"
#include "picker/search/kana.h"
#include "picker/search/readings.h"

namespace kigou {
namespace {

constexpr std::size_t group_word_detail = 1000; // behind every other reading
constexpr std::size_t same_sound_detail = 50;   // behind the same kana
constexpr std::size_t word_start_detail = 100;  // behind every whole word
constexpr std::size_t word_letter_detail = 10;  // for each letter that is lacking
constexpr std::size_t other_start_detail = 200; // behind the beginnings of names
constexpr std::size_t phrase_detail = 4;        // behind names that have the words in a row
constexpr std::size_t other_word_detail = 20;   // for each word of a name that was not typed
constexpr std::size_t least_near = 4;           // characters of a text that may be a slip

struct ReadingTerm {
    unsigned short code;
    std::size_t place; /**< among the readings of the symbol, less is more used */
    std::string text;
    std::string spoken;
    std::size_t length; /**< of spoken, in characters */
};

struct NameTerm {
    unsigned short code;
    std::string japanese; /**< folded */
    std::string english;  /**< blanks for hyphens */
    std::vector<std::string> others;
    std::string spelling; /**< of several characters in place of the symbol: (株), km, 10 */
};

std::size_t length_of(std::string_view utf8) {
    return static_cast<std::size_t>(std::ranges::count_if(
        utf8, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

/** Whether a text is looked for within others: one letter or kana is in too many. */
bool is_long_enough(std::string_view text) {
    const std::u32string characters = to_characters(text);
    return characters.size() > 1 || (characters.size() == 1 && characters.front() >= U'一');
}

std::string without_hyphens(std::string_view text) {
    std::string words(text);
    std::ranges::replace(words, '-', ' ');
    return words;
}

struct Terms {
    Terms() {
        for (const SymbolNames &symbol : all_names()) {
            const unsigned short code = symbol.code;
            std::size_t place = 0;
            for (std::string &reading : readings_of(pair_of(code))) {
                std::string sound = spoken(reading);
                const std::size_t length = length_of(sound);
                const std::size_t group =
                    place > 0 && is_group_word(reading) ? group_word_detail : 0;
                readings.push_back(
                    {code, group + place++, std::move(reading), std::move(sound), length});
            }
            const std::string character = to_utf8(pair_of(code));
            std::string spelling = folded(character);
            if (spelling == character) spelling.clear();
            std::vector<std::string> others;
            for (const std::string_view other : listed(symbol.also)) {
                others.push_back(folded(other));
            }
            names.push_back({code, folded(symbol.name), without_hyphens(symbol.english),
                             std::move(others), std::move(spelling)});
        }
    }
    std::vector<ReadingTerm> readings;
    std::vector<NameTerm> names;
};

const Terms &terms() {
    static const Terms all;
    return all;
}

/** Readings by their places, with room before the first and between two. */
constexpr std::size_t detail_of_place(std::size_t place) {
    return 2 * place + 1;
}

bool is_kana(std::string_view text) {
    return std::ranges::all_of(to_characters(text), [](char32_t character) {
        return character >= U'ぁ' && character <= U'ー';
    });
}

Rank rank_of_reading(const ReadingTerm &term, const TypedReading &typed, std::size_t length) {
    const auto at = term.spoken.find(typed.spoken);
    if (at == std::string::npos) return {};
    const std::size_t more = term.length - length;
    if (at == 0 && more == 0 && !typed.unfinished) {
        return {Match::reading,
                detail_of_place(term.place) + (term.text == typed.kana ? 0 : same_sound_detail)};
    }
    if (at == 0) return {Match::reading_start, term.place + more};
    if (typed.unfinished || !is_long_enough(typed.spoken)) return {};
    return {Match::inside, term.place + more};
}

/** What a symbol stands for in several characters, such as km; with a full stop behind or not. */
Rank rank_of_spelling(std::string_view spelling, std::string_view text) {
    if (text.ends_with('.')) text.remove_suffix(1);
    if (spelling.empty() || text.empty() || !spelling.starts_with(text)) return {};
    if (spelling != text) return {Match::reading_start, same_sound_detail + length_of(spelling)};
    // ㌫ is ぱーせんと in other characters, but who types that wants ％.
    return {Match::reading, is_kana(spelling) ? detail_of_place(1) : 0};
}

Rank rank_of_name(std::string_view name, std::string_view text) {
    if (name == text) return {Match::name_word, 0};
    const bool phrase = text.find(' ') != std::string_view::npos;
    for (auto at = name.find(text); at != std::string_view::npos; at = name.find(text, at + 1)) {
        if (at != 0 && name[at - 1] != ' ') continue;
        const std::size_t behind = at + text.size();
        const std::size_t end = std::min(name.find(' ', behind), name.size());
        // The last word says what it is, the first of which kind; a phrase begins a name.
        const bool last = end == name.size(), first = at == 0;
        const std::size_t order = (phrase ? first : last) ? 1 : (first || last) ? 2 : 3;
        const bool japanese = static_cast<unsigned char>(name.front()) >= 0x80;
        const std::size_t more = japanese ? 0 : end - behind;
        if (end == behind) return {Match::name_word, order};
        return {Match::name_word, word_start_detail + word_letter_detail * more + order};
    }
    if (!is_long_enough(text) || name.find(text) == std::string_view::npos) return {};
    return {Match::inside, length_of(name)};
}

/** One of the other names, most used first: many symbols share a word. */
Rank rank_of_other(std::string_view name, std::size_t place, std::string_view text) {
    if (name == text) return {Match::name_word, place};
    const Rank rank = rank_of_name(name, text);
    if (!rank.matches() || rank.match() != Match::name_word) return rank;
    return {Match::name_word, other_start_detail + place};
}

/** How well a name answers several words, each of which begins one of its own. */
Rank rank_of_words(std::string_view name, const std::vector<std::string> &words) {
    std::vector<std::string_view> own;
    for (std::string_view rest = name; !rest.empty();) {
        const auto end = std::min(rest.find(' '), rest.size());
        own.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    std::size_t more = 0;
    for (const std::string &word : words) {
        const auto found = std::ranges::find_if(
            own, [&](std::string_view other) { return other.starts_with(word); });
        if (found == own.end()) return {};
        more += length_of(*found) - length_of(word);
        own.erase(found);
    }
    return {Match::name_word, phrase_detail + other_word_detail * own.size() + more};
}

} // namespace

void rank_by_words(const std::vector<std::string> &folded_words, Ranks &ranks) {
    for (const NameTerm &term : terms().names) {
        ranks.add(term.code, rank_of_words(term.english, folded_words));
        for (const std::string &other : term.others) {
            ranks.add(term.code, rank_of_words(other, folded_words));
        }
    }
}

void rank_by_terms(std::string_view folded_text, Ranks &ranks) {
    for (const TypedReading &typed : typed_readings(folded_text)) {
        const std::size_t length = length_of(typed.spoken);
        if (length == 0) continue;
        for (const ReadingTerm &term : terms().readings) {
            ranks.add(term.code, rank_of_reading(term, typed, length));
        }
        if (typed.unfinished) continue;
        for (const NameTerm &term : terms().names) {
            if (term.spelling == typed.kana)
                ranks.add(term.code, {Match::reading, detail_of_place(1)});
        }
    }
    const std::string words = without_hyphens(folded_text);
    for (const NameTerm &term : terms().names) {
        ranks.add(term.code, rank_of_name(term.japanese, folded_text));
        ranks.add(term.code, rank_of_name(term.english, words));
        for (std::size_t place = 0; place < term.others.size(); ++place) {
            ranks.add(term.code, rank_of_other(term.others[place], place, folded_text));
        }
        ranks.add(term.code, rank_of_spelling(term.spelling, folded_text));
    }
}

Rank rank_of_path(std::string_view path, std::string_view folded_text) {
    constexpr std::size_t above_detail =
        10; // for each title between the one that answers and the last
    Rank best;
    std::size_t titles_behind = 0;
    for (auto end = path.size();; ++titles_behind) {
        const auto slash = path.substr(0, end).rfind('/');
        const std::size_t begin = slash == std::string_view::npos ? 0 : slash + 1;
        const auto at = path.find(folded_text, begin);
        const std::string_view title = path.substr(begin, end - begin);
        if (at < end) {
            const std::size_t more =
                std::max(length_of(title), length_of(folded_text)) - length_of(folded_text);
            const std::size_t detail = more + above_detail * titles_behind;
            if (at == begin) {
                best = std::min(best, Rank(Match::title, detail));
            } else if (is_long_enough(folded_text)) {
                best = std::min(best, Rank(Match::inside, detail));
            }
        }
        if (slash == std::string_view::npos) return best;
        end = slash;
    }
}

bool is_long_for_a_slip(std::string_view folded_text) {
    const std::u32string characters = to_characters(folded_text);
    const bool kanji =
        std::ranges::all_of(characters, [](char32_t character) { return character >= U'一'; });
    return characters.size() >= least_near - (kanji ? 1 : 0);
}

std::vector<std::string> near_terms(std::string_view folded_text, std::size_t most) {
    std::vector<std::string> near;
    const auto add = [&](std::string word) {
        if (near.size() < most && std::ranges::find(near, word) == near.end()) {
            near.push_back(std::move(word));
        }
    };
    if (!is_long_for_a_slip(folded_text)) return near;
    const std::string sound = spoken(folded_text), letters = in_letters(folded_text);
    for (const ReadingTerm &term : terms().readings) {
        if (differ_by_one(term.spoken, sound)) add(term.text);
    }
    static const std::vector<std::string> readings_in_letters = [] {
        std::vector<std::string> all;
        for (const ReadingTerm &term : terms().readings) all.push_back(in_letters(term.text));
        return all;
    }();
    for (std::size_t i = 0; i < readings_in_letters.size(); ++i) {
        const bool near_enough =
            readings_in_letters[i] == letters || differ_by_one(readings_in_letters[i], letters);
        if (near_enough && letters.size() > least_near) add(terms().readings[i].text);
    }
    for (const NameTerm &term : terms().names) {
        std::string_view rest = term.english;
        while (!rest.empty()) {
            const auto end = std::min(rest.find(' '), rest.size());
            if (differ_by_one(rest.substr(0, end), folded_text))
                add(std::string(rest.substr(0, end)));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    return near;
}

} // namespace kigou
