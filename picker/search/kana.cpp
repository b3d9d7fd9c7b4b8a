// kana.cpp - see kana.h.
#include "picker/search/kana.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

#include <algorithm>
#include <array>
#include <map>
#include <new>
#include <optional>
#include <utility>

#include "picker/text.h"

namespace kigou {
namespace {

constexpr char32_t long_mark = U'ー';
constexpr char32_t katakana_above_hiragana = 0x60; // code points
constexpr std::u32string_view vowels = U"あいうえお";

/** Kana by their vowels. */
constexpr std::array<std::u32string_view, 5> kana_of_vowel{
    U"あかさたなはまやらわがざだばぱぁゃゎゕ", U"いきしちにひみりゐぎじぢびぴぃ",
    U"うくすつぬふむゆるぐずづぶぷぅゅゔ", U"えけせてねへめれゑげぜでべぺぇゖ",
    U"おこそとのほもよろをごぞどぼぽぉょ"};

/** Number of the vowel that a kana ends in; nothing for one without. */
std::optional<std::size_t> vowel_of(char32_t kana) {
    for (std::size_t i = 0; i < kana_of_vowel.size(); ++i) {
        if (kana_of_vowel[i].find(kana) != std::u32string_view::npos) return i;
    }
    return std::nullopt;
}

bool is_hiragana(char32_t character) {
    return character >= U'ぁ' && character <= U'ゖ';
}

char32_t hiragana_of(char32_t character) {
    const bool katakana = character >= U'ァ' && character <= U'ヶ';
    return katakana ? character - katakana_above_hiragana : character;
}

std::string utf8_of(std::u32string_view characters) {
    std::string utf8;
    for (const char32_t character : characters) utf8 += to_utf8(character);
    return utf8;
}

/** Letters before a vowel, and the kana of the five syllables with it. */
struct Syllables {
    std::string_view letters;
    std::array<std::u32string_view, 5> kana; /**< empty where there is none */
};

// Of several spellings of a kana the first is taken to write it.
constexpr Syllables syllables[] = {
    {"", {U"あ", U"い", U"う", U"え", U"お"}},
    {"k", {U"か", U"き", U"く", U"け", U"こ"}},
    {"s", {U"さ", U"し", U"す", U"せ", U"そ"}},
    {"t", {U"た", U"ち", U"つ", U"て", U"と"}},
    {"n", {U"な", U"に", U"ぬ", U"ね", U"の"}},
    {"h", {U"は", U"ひ", U"ふ", U"へ", U"ほ"}},
    {"m", {U"ま", U"み", U"む", U"め", U"も"}},
    {"y", {U"や", U"", U"ゆ", U"いぇ", U"よ"}},
    {"r", {U"ら", U"り", U"る", U"れ", U"ろ"}},
    {"w", {U"わ", U"うぃ", U"", U"うぇ", U"を"}},
    {"g", {U"が", U"ぎ", U"ぐ", U"げ", U"ご"}},
    {"z", {U"ざ", U"じ", U"ず", U"ぜ", U"ぞ"}},
    {"d", {U"だ", U"ぢ", U"づ", U"で", U"ど"}},
    {"b", {U"ば", U"び", U"ぶ", U"べ", U"ぼ"}},
    {"p", {U"ぱ", U"ぴ", U"ぷ", U"ぺ", U"ぽ"}},
    {"v", {U"ゔぁ", U"ゔぃ", U"ゔ", U"ゔぇ", U"ゔぉ"}},
    {"f", {U"ふぁ", U"ふぃ", U"ふ", U"ふぇ", U"ふぉ"}},
    {"j", {U"じゃ", U"じ", U"じゅ", U"じぇ", U"じょ"}},
    {"ky", {U"きゃ", U"", U"きゅ", U"きぇ", U"きょ"}},
    {"sy", {U"しゃ", U"", U"しゅ", U"しぇ", U"しょ"}},
    {"sh", {U"しゃ", U"し", U"しゅ", U"しぇ", U"しょ"}},
    {"ty", {U"ちゃ", U"", U"ちゅ", U"ちぇ", U"ちょ"}},
    {"ch", {U"ちゃ", U"ち", U"ちゅ", U"ちぇ", U"ちょ"}},
    {"cy", {U"ちゃ", U"", U"ちゅ", U"ちぇ", U"ちょ"}},
    {"ny", {U"にゃ", U"", U"にゅ", U"にぇ", U"にょ"}},
    {"hy", {U"ひゃ", U"", U"ひゅ", U"ひぇ", U"ひょ"}},
    {"my", {U"みゃ", U"", U"みゅ", U"みぇ", U"みょ"}},
    {"ry", {U"りゃ", U"", U"りゅ", U"りぇ", U"りょ"}},
    {"gy", {U"ぎゃ", U"", U"ぎゅ", U"ぎぇ", U"ぎょ"}},
    {"zy", {U"じゃ", U"", U"じゅ", U"じぇ", U"じょ"}},
    {"jy", {U"じゃ", U"", U"じゅ", U"じぇ", U"じょ"}},
    {"dy", {U"ぢゃ", U"", U"ぢゅ", U"ぢぇ", U"ぢょ"}},
    {"by", {U"びゃ", U"", U"びゅ", U"びぇ", U"びょ"}},
    {"py", {U"ぴゃ", U"", U"ぴゅ", U"ぴぇ", U"ぴょ"}},
    {"fy", {U"ふゃ", U"", U"ふゅ", U"", U"ふょ"}},
    {"ts", {U"つぁ", U"つぃ", U"つ", U"つぇ", U"つぉ"}},
    {"th", {U"てゃ", U"てぃ", U"てゅ", U"てぇ", U"てょ"}},
    {"dh", {U"でゃ", U"でぃ", U"でゅ", U"でぇ", U"でょ"}},
    {"tw", {U"とぁ", U"とぃ", U"とぅ", U"とぇ", U"とぉ"}},
    {"dw", {U"どぁ", U"どぃ", U"どぅ", U"どぇ", U"どぉ"}},
    {"kw", {U"くぁ", U"くぃ", U"", U"くぇ", U"くぉ"}},
    {"q", {U"くぁ", U"くぃ", U"く", U"くぇ", U"くぉ"}},
    {"gw", {U"ぐぁ", U"ぐぃ", U"", U"ぐぇ", U"ぐぉ"}},
    {"wh", {U"うぁ", U"うぃ", U"う", U"うぇ", U"うぉ"}},
    {"wy", {U"", U"ゐ", U"", U"ゑ", U""}},
    {"x", {U"ぁ", U"ぃ", U"ぅ", U"ぇ", U"ぉ"}},
    {"l", {U"ぁ", U"ぃ", U"ぅ", U"ぇ", U"ぉ"}},
    {"xy", {U"ゃ", U"", U"ゅ", U"", U"ょ"}},
    {"ly", {U"ゃ", U"", U"ゅ", U"", U"ょ"}},
    {"xt", {U"", U"", U"っ", U"", U""}},
    {"lt", {U"", U"", U"っ", U"", U""}},
    {"xts", {U"", U"", U"っ", U"", U""}},
    {"lts", {U"", U"", U"っ", U"", U""}},
    {"xw", {U"ゎ", U"", U"", U"", U""}},
    {"lw", {U"ゎ", U"", U"", U"", U""}},
    {"xk", {U"ゕ", U"", U"", U"ゖ", U""}},
    {"lk", {U"ゕ", U"", U"", U"ゖ", U""}},
};
constexpr std::string_view vowel_letters = "aiueo";
constexpr std::size_t most_letters = 3; // before a vowel
constexpr std::size_t most_readings = 64;
constexpr std::size_t most_steps = 2000; // of reading one text, which may branch at every n

/** Letters with macrons or circumflexes become the vowel and a long mark. */
std::u32string with_long_marks(std::u32string_view text) {
    constexpr std::u32string_view macron = U"āīūēō", circumflex = U"âîûêô";
    std::u32string plain;
    for (const char32_t character : text) {
        const auto at = std::min(macron.find(character), circumflex.find(character));
        if (at == std::u32string_view::npos) {
            plain += character == U'-' ? long_mark : character;
        } else {
            plain += static_cast<char32_t>(vowel_letters[at]);
            plain += long_mark;
        }
    }
    return plain;
}

bool is_vowel(char32_t character) {
    return character < 0x80 &&
           vowel_letters.find(static_cast<char>(character)) != std::string_view::npos;
}

bool is_letter(char32_t character) {
    return (character >= U'a' && character <= U'z') || character == U'\'';
}

/** Numbers up to 99 as they are read. */
std::u32string with_numbers(std::u32string_view text) {
    static constexpr std::u32string_view readings[] = {
        U"ぜろ", U"いち", U"に", U"さん", U"よん", U"ご", U"ろく", U"なな", U"はち", U"きゅう"};
    constexpr std::u32string_view digits = U"0123456789";
    std::u32string kana;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t end = std::min(text.find_first_not_of(digits, i), text.size());
        if (end == i || end > i + 2) {
            kana += text.substr(i, std::max<std::size_t>(end - i, 1));
            i = std::max(end, i + 1);
            continue;
        }
        const std::size_t tens = end == i + 2 ? text[i] - U'0' : 0, ones = text[end - 1] - U'0';
        if (tens > 1) kana += readings[tens];
        if (tens > 0) kana += U"じゅう";
        if (ones > 0 || tens == 0) kana += readings[ones];
        i = end;
    }
    return kana;
}

/** Kana of typed letters, all of the ways to read them. */
class RomajiReader {
  public:
    std::vector<TypedReading> read(const std::u32string &text) {
        text_ = text;
        go_on(0, {});
        return std::move(found_);
    }

  private:
    void add(const std::u32string &kana, bool unfinished) {
        if (found_.size() >= most_readings) return;
        std::string reading = utf8_of(kana);
        for (const TypedReading &other : found_) {
            if (other.kana == reading) return;
        }
        std::string sound = spoken(reading);
        found_.push_back({std::move(reading), std::move(sound), unfinished});
    }

    char32_t at(std::size_t place) const { return place < text_.size() ? text_[place] : 0; }

    /** Reads on from a place, behind the kana so far. */
    void go_on(std::size_t place, const std::u32string &kana) {
        if (++steps_ > most_steps) return;
        if (place >= text_.size()) return add(kana, false);
        const char32_t first = text_[place];
        if (is_hiragana(first) || first == long_mark || first == U' ') {
            const bool blank = first == U' ';
            return go_on(place + 1, blank ? kana : kana + first);
        }
        if (!is_letter(first)) return;
        const char32_t next = at(place + 1);
        const bool lips = next == U'b' || next == U'p' || next == U'm';
        if (first == U'm' && lips) return go_on(place + 1, kana + U'ん');
        if (first == U'n') read_n(place, kana);
        const bool doubled = first == next && first != U'n' && !is_vowel(first);
        const bool tch = first == U't' && next == U'c' && at(place + 2) == U'h';
        if (doubled || tch) return go_on(place + 1, kana + U'っ');
        read_syllable(place, kana);
    }

    /** An n as a syllable of its own, also where its mark before a vowel was left out. */
    void read_n(std::size_t place, const std::u32string &kana) {
        const std::u32string longer = kana + U'ん';
        const char32_t next = at(place + 1);
        if (next == U'\'') return go_on(place + 2, longer);
        // konna is こんな to most people, and こんあ to some input methods.
        if (next == U'n' && at(place + 2) != U'n') go_on(place + 2, longer);
        go_on(place + 1, longer);
    }

    void read_syllable(std::size_t place, const std::u32string &kana) {
        std::string letters;
        for (std::size_t i = place; i < text_.size() && is_letter(text_[i]); ++i) {
            const auto letter = static_cast<char>(text_[i]);
            if (const auto vowel = vowel_letters.find(letter); vowel != std::string_view::npos) {
                for (const Syllables &row : syllables) {
                    if (row.letters != letters || row.kana[vowel].empty()) continue;
                    go_on(i + 1, kana + std::u32string(row.kana[vowel]));
                }
                return;
            }
            letters += letter;
            if (letters.size() > most_letters) return;
        }
        if (place + letters.size() == text_.size()) read_unfinished(letters, kana);
    }

    void read_unfinished(const std::string &letters, const std::u32string &kana) {
        if (letters.size() == 1 && letters != "n") add(kana + U'っ', true);
        for (const Syllables &row : syllables) {
            if (!row.letters.starts_with(letters)) continue;
            for (const std::u32string_view syllable : row.kana) {
                if (!syllable.empty()) add(kana + std::u32string(syllable), true);
            }
        }
    }

    std::u32string text_;
    std::vector<TypedReading> found_;
    std::size_t steps_ = 0;
};

/** The letters of each kana, and of two that make one syllable. */
using Spelling = std::map<std::u32string_view, std::string>;

/** Of the spellings of a kana those of Hepburn, or those of Kunrei. */
Spelling spelling(bool in_hepburn) {
    static constexpr std::string_view of_hepburn[] = {"sh", "ch", "ts", "f", "j"};
    Spelling letters{{U"ん", "n"}};
    for (const bool wanted : {in_hepburn, !in_hepburn}) { // the rest has the kana of one alone
        for (const Syllables &row : syllables) {
            if ((std::ranges::find(of_hepburn, row.letters) != std::end(of_hepburn)) != wanted)
                continue;
            for (std::size_t i = 0; i < row.kana.size(); ++i) {
                letters.emplace(row.kana[i], std::string(row.letters) + vowel_letters[i]);
            }
        }
    }
    return letters;
}

const Spelling &hepburn() {
    static const Spelling letters = spelling(true);
    return letters;
}

const Spelling &kunrei() {
    static const Spelling letters = spelling(false);
    return letters;
}

/** Letters of the syllable at the start of a text, and how many of its characters they are. */
std::pair<std::string, std::size_t> first_letters(std::u32string_view text,
                                                  const Spelling &spelling) {
    for (const std::size_t length : {2U, 1U}) {
        const auto found = spelling.find(text.substr(0, length));
        if (found != spelling.end() && !found->first.empty()) {
            return {found->second, found->first.size()};
        }
    }
    return {to_utf8(text.front()), 1};
}

/** Kana in letters. @param long_vowel  what a long mark becomes; empty: the vowel before it */
std::string spelled(std::u32string_view rest, const Spelling &spelling,
                    std::string_view long_vowel) {
    std::string letters;
    bool doubled = false;
    while (!rest.empty()) {
        auto [syllable, length] = first_letters(rest, spelling);
        if (rest.front() == long_mark && !long_vowel.empty()) {
            syllable = long_vowel;
        } else if (rest.front() == long_mark && !letters.empty()) {
            syllable = letters.back();
        }
        const bool double_next = rest.front() == U'っ' && rest.size() > 1;
        if (std::exchange(doubled, double_next)) letters += syllable.front();
        if (!double_next) letters += syllable;
        rest.remove_prefix(length);
    }
    return letters;
}

/** Hepburn letters as Kunrei has them, long vowels doubled. */
std::string in_kunrei(std::string letters) {
    static constexpr std::pair<std::string_view, std::string_view> spellings[] = {
        {"tch", "tty"}, {"sh", "sy"}, {"ch", "ty"}, {"ts", "t"},  {"j", "zy"},
        {"fu", "hu"},   {"mb", "nb"}, {"mp", "np"}, {"mm", "nm"}, {"yi", "i"},
        {"yy", "y"},    {"ei", "ee"}, {"ou", "oo"}};
    for (const auto &[hepburn, kunrei] : spellings) {
        for (auto at = letters.find(hepburn); at != std::string::npos;
             at = letters.find(hepburn, at + kunrei.size())) {
            letters.replace(at, hepburn.size(), kunrei);
        }
    }
    return letters;
}

} // namespace

std::string folded(std::string_view utf8) {
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2 *const normalizer = icu::Normalizer2::getNFKCCasefoldInstance(error);
    if (U_FAILURE(error)) throw std::bad_alloc();
    std::string normal;
    icu::StringByteSink<std::string> sink(&normal);
    normalizer->normalizeUTF8(0, {utf8.data(), static_cast<std::int32_t>(utf8.size())}, sink,
                              nullptr, error);
    if (U_FAILURE(error)) throw std::bad_alloc();
    std::string text;
    for (const char32_t character : to_characters(normal)) {
        const bool blank =
            character == U' ' || character == U'\t' || character == U'\n' || character == U'\r';
        if (!blank) {
            text += to_utf8(hiragana_of(character));
        } else if (!text.empty() && text.back() != ' ') {
            text += ' ';
        }
    }
    if (text.ends_with(' ')) text.pop_back();
    return text;
}

std::string spoken(std::string_view folded_text) {
    std::u32string text;
    std::optional<std::size_t> before; // vowel of the last kana
    for (const char32_t character : to_characters(folded_text)) {
        char32_t kana = character;
        if (kana == U'ぢ') kana = U'じ';
        if (kana == U'づ') kana = U'ず';
        if (kana == U'を') kana = U'お';
        if (before && kana == long_mark) kana = vowels[*before];
        if (before == 3 && kana == U'い') kana = U'え';
        if (before == 4 && kana == U'う') kana = U'お';
        before = vowel_of(kana);
        text += kana;
    }
    return utf8_of(text);
}

std::vector<TypedReading> typed_readings(std::string_view folded_text) {
    return RomajiReader().read(with_long_marks(with_numbers(to_characters(folded_text))));
}

std::string in_letters(std::string_view folded_text) {
    return in_kunrei(spelled(with_long_marks(to_characters(folded_text)), kunrei(), {}));
}

std::vector<std::string> letters_to_type(std::string_view reading) {
    const std::u32string kana = to_characters(reading);
    std::vector<std::string> letters{spelled(kana, hepburn(), "-")};
    std::string other = spelled(kana, kunrei(), "-");
    if (other != letters.front()) letters.push_back(std::move(other));
    return letters;
}

bool differ_by_one(std::string_view a, std::string_view b) {
    std::u32string longer = to_characters(a), shorter = to_characters(b);
    if (longer.size() < shorter.size()) std::swap(longer, shorter);
    if (longer.size() - shorter.size() > 1 || longer == shorter) return false;
    const auto from = static_cast<std::size_t>(
        std::mismatch(shorter.begin(), shorter.end(), longer.begin()).first - shorter.begin());
    const std::u32string_view rest = std::u32string_view(longer).substr(from);
    const std::u32string_view other = std::u32string_view(shorter).substr(from);
    if (longer.size() > shorter.size()) return rest.substr(1) == other;
    const bool exchanged = rest.size() > 1 && rest[0] == other[1] && rest[1] == other[0] &&
                           rest.substr(2) == other.substr(2);
    return exchanged || rest.substr(1) == other.substr(1);
}

} // namespace kigou
