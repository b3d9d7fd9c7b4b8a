// Symbols to the dictionaries of input methods and back, and text in other encodings.
#include "picker/dictionary/dictionary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "fuzz/choice.h"
#include "picker/codes.h"
#include "picker/search/kana.h"
#include "picker/search/readings.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

constexpr Encoding encodings[] = {Encoding::utf_8, Encoding::euc_jp, Encoding::shift_jis};

Sjis bytes_of(const std::string &text) {
    return {text.begin(), text.end()};
}

SymbolSet set_with(const std::string &title, const std::vector<Sjis> &symbols) {
    SymbolSet set{to_sjis("例"), {{to_sjis(title), {}}}};
    append_lines(set.blocks.front().data, symbols);
    return set;
}

TEST(encoding, gives_every_symbol_back_or_says_that_it_lacks_it) {
    std::array<std::size_t, std::size(encodings)> lacking{};
    for (unsigned code = 0x8140; code < 0xFD00; ++code) {
        const Sjis symbol = pair_of(static_cast<unsigned short>(code));
        if (repertoire_of(symbol) == Repertoire::none) continue;
        const std::string text = to_utf8(symbol);
        if (sjis_of(to_characters(text).front()) != symbol) continue; // one of two codes
        for (std::size_t i = 0; i < std::size(encodings); ++i) {
            if (const auto bytes = encoded(text, encodings[i])) {
                EXPECT_EQ(decoded(bytes_of("a" + *bytes + "b"), encodings[i]), "a" + text + "b") << i << text;
            } else {
                ++lacking[i];
            }
        }
    }
    EXPECT_EQ(lacking[0], 0U);
    EXPECT_GT(lacking[1], 0U); // the vendor's characters
    EXPECT_EQ(lacking[2], 0U);
}

TEST(encoding, names_by_line_what_it_lacks) {
    TextEncoder encoder(Encoding::euc_jp);
    EXPECT_EQ(encoder.encode("a①\nｱ"), "a{8740}\n\x8E\xB1");
    EXPECT_EQ(encoder.encode("€Ⅰ①\n"), "{U+20AC}{8754}{8740}\n");
    EXPECT_EQ(encoder.lacking(), (std::map<std::size_t, std::string>{{1, "①"}, {2, "€Ⅰ①"}}));
    EXPECT_EQ(decoded(bytes_of("\xA1\xF9\x8F\xB0\xA1\xA1\xF9\xAD\xA1\x8F\xA1"), Encoding::euc_jp), "☆�☆①�");
}

TEST(dictionary, is_typed_in_letters) {
    const struct {
        const char *reading, *letters;
    } rows[] = {
        {"ほし", "hoshi hosi"},
        {"しゃつ", "shatsu syatu"},
        {"じょうふ", "joufu zyouhu"},
        {"まっち", "macchi matti"},
        {"こんな", "konna"},
        {"すぺーす", "supe-su"},
        {"ゔぃ", "vi"},
        {"ちゅう", "chuu tyuu"},
        {"あっ", "axtu"},
        {"いんふぃにてぃ", "infinithi"},
    };
    for (const auto &[reading, letters] : rows) {
        std::string joined;
        for (const std::string &one : letters_to_type(reading)) joined += (joined.empty() ? "" : " ") + one;
        EXPECT_EQ(joined, letters) << reading;
    }
}

TEST(dictionary, is_read_line_by_line) {
    const struct {
        const char *name, *text, *symbols, *left_out;
    } rows[] = {
        {"mozc", "# 注\r\nほし\t☆\t記号\t白星\r\n\r\nほし\t★\t記号\nほし\t☆\t記号\t\n", "☆★", ""},
        {"CR alone", "ほし\t☆\t記号\rや\t→\t記号\r", "☆→", ""},
        {"head of another", "!Microsoft IME\nや\t→\t記号\tx\n", "→", ""},
        {"no symbols", "き\t東京\t名詞\nえ\ta\t記号\nえ\t😀\t記号\n\tｱ\t\nあ\n", "", "1 2 3 4 5"},
        {"skk", ";; okuri-ari entries.\nおs /惜/\n;; okuri-nasi entries.\nほし /☆;白/★/星/\n", "☆★星", "2"},
        {"skk without a head", "かず /＃;/#1/〇/(concat \"\\057\")/[い/井/]/＝/\n", "＃〇＝", "1 1"},
        {"skk, broken", ";;\nほし\nほし ☆/\nほし /☆\n", "☆", "2 3"},
    };
    for (const auto &row : rows) {
        const auto format = dictionary_format_of(row.text).value_or(DictionaryFormat::mozc);
        LeftOutList left_out;
        std::string symbols, places;
        for (const Sjis &symbol : symbols_in(read_dictionary(row.text, format, left_out))) symbols += to_utf8(symbol);
        for (const LeftOut &one : left_out.first()) places += (places.empty() ? "" : " ") + one.place.substr(5, 1);
        EXPECT_EQ(symbols, row.symbols) << row.name;
        EXPECT_EQ(places, row.left_out) << row.name;
    }
}

TEST(dictionary, holds_each_symbol_or_names_it) {
    for (std::uint64_t round = 0; round < 60; ++round) {
        Choice choice(13, round);
        // ヶ and ヴ are hiragana that EUC-JP and Shift_JIS lack.
        const std::string title = std::array{"やじるし", "字", "ヶヴ"}[round % 3];
        std::vector<Sjis> symbols;
        for (unsigned i = 0; i < 40; ++i) {
            const Sjis kanji{0x88, static_cast<unsigned char>(0x9F + choice.below(80))};
            symbols.push_back(choice.one_in(3) ? kanji : pair_of(choice.of(all_names()).code));
        }
        std::ranges::sort(symbols);
        symbols.erase(std::unique(symbols.begin(), symbols.end()), symbols.end());
        for (const Encoding encoding : encodings) {
            for (const auto format : {DictionaryFormat::mozc, DictionaryFormat::skk}) {
                LeftOutSymbols left_out;
                const std::string text = write_dictionary(set_with(title, symbols), format, encoding, left_out);
                TextEncoder encoder(encoding);
                const std::string bytes = encoder.encode(text);
                EXPECT_TRUE(encoder.lacking().empty());
                LeftOutList unread;
                const std::string back = decoded(bytes_of(bytes), encoding);
                std::vector<Sjis> all = symbols_in(read_dictionary(back, format, unread));
                EXPECT_EQ(unread.count(), 0U);
                for (const auto &[reason, named] : left_out) {
                    for (const char32_t one : to_characters(named)) all.push_back(sjis_of(one).value());
                    EXPECT_FALSE(reason == "no reading" && title == "やじるし");
                }
                std::ranges::sort(all);
                EXPECT_EQ(all, symbols) << round << name_of(encoding);
            }
        }
    }
}

TEST(dictionary, of_mozc_takes_no_longer_fields) {
    for (const std::size_t length : {std::size_t{100}, std::size_t{101}}) {
        std::string title;
        while (title.size() < 3 * length) title += "ほ";
        LeftOutSymbols left_out;
        const std::string text = write_dictionary(set_with(title, {to_sjis("亜")}), DictionaryFormat::mozc, Encoding::utf_8, left_out);
        EXPECT_EQ(text, length == 100 ? title + "\t亜\t記号\t" + title + "\n" : "");
        EXPECT_EQ(left_out.size(), length - 100);
    }
}

} // namespace
} // namespace kigou
