// The codec of kigou: every cell both ways, and the edges of malformed text.
#include "picker/text.h"

#include <gtest/gtest.h>

#include "picker/failure.h"

namespace kigou {
namespace {

using namespace std::string_literals;

Sjis sjis_of_cell(int row, int cell) {
    const int lead = (row + 1) / 2 + (row <= 62 ? 0x80 : 0xC0);
    const int trail = row % 2 == 0 ? cell + 0x9E : cell + (cell <= 63 ? 0x3F : 0x40);
    return {static_cast<unsigned char>(lead), static_cast<unsigned char>(trail)};
}

std::string shown(const Sjis &bytes) {
    std::string text;
    for (const unsigned char byte : bytes) text += "0123456789ABCDEF"[byte >> 4], text += "0123456789ABCDEF"[byte & 15];
    return text;
}

TEST(text_codec, every_character_of_jis_x_0208_comes_back_to_its_own_cell) {
    int characters = 0;
    std::u32string seen;
    for (int row = 1; row <= 94; ++row) {
        for (int cell = 1; cell <= 94; ++cell) {
            const Sjis pair = sjis_of_cell(row, cell);
            if (repertoire_of(pair) != Repertoire::jis_x_0208) continue;
            ++characters;
            const std::string text = to_utf8(pair);
            ASSERT_EQ(to_characters(text).size(), 1U) << row << '-' << cell;
            seen += to_characters(text);
            ASSERT_EQ(shown(to_sjis(text)), shown(pair)) << row << '-' << cell << ' ' << text;
        }
    }
    EXPECT_EQ(characters, 6879);
    std::sort(seen.begin(), seen.end());
    EXPECT_EQ(std::adjacent_find(seen.begin(), seen.end()), seen.end());
}

TEST(text_codec, vendor_row_13_comes_back_unless_it_repeats_a_cell) {
    std::string repeated;
    int characters = 0;
    for (int cell = 1; cell <= 94; ++cell) {
        const Sjis pair = sjis_of_cell(13, cell);
        if (repertoire_of(pair) == Repertoire::none) continue;
        EXPECT_EQ(repertoire_of(pair), Repertoire::vendor) << cell;
        ++characters;
        const std::string text = to_utf8(pair);
        if (to_sjis(text) != pair) repeated += text;
    }
    EXPECT_EQ(characters, 83);
    EXPECT_EQ(repeated, "≒≡∫√⊥∠∵∩∪");
}

TEST(text_codec, knows_each_cell_by_its_own_character_and_what_other_tables_put_there) {
    const struct {
        Sjis sjis;
        std::string utf8, others; /**< what is understood besides */
    } cases[] = {
        {{0x81, 0x5C}, "\u2015", "\u2014"},
        {{0x81, 0x5F}, "\uFF3C", ""},
        {{0x81, 0x60}, "\u301C", "\uFF5E"},
        {{0x81, 0x61}, "\u2016", "\u2225"},
        {{0x81, 0x7C}, "\u2212", "\uFF0D"},
        {{0x81, 0x91}, "\u00A2", "\uFFE0"},
        {{0x81, 0x92}, "\u00A3", "\uFFE1"},
        {{0x81, 0xCA}, "\u00AC", "\uFFE2"},
        {{0x81, 0x8F}, "\uFFE5", "\u00A5"}, // the yen sign is no backslash
        {{0x81, 0x50}, "\uFFE3", "\u203E"}, // the overline is no tilde
        {{0xFA, 0x40}, "ⅰ", ""},
        {{0xFA, 0x5C}, "纊", ""}, // of the vendor, not of JIS X 0212
        {{'A', 0x5C, '~', 0xB1, 0xDF, 0xA1, '\r', '\n'}, "A\\~ｱﾟ｡\r\n", ""},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(to_utf8(c.sjis), c.utf8);
        EXPECT_EQ(to_sjis(c.utf8), c.sjis) << c.utf8;
        EXPECT_EQ(c.others.empty() ? c.sjis : to_sjis(c.others), c.sjis) << c.others;
    }
}

TEST(text_codec, keeps_what_follows_bad_bytes) {
    const std::pair<Sjis, std::string> cases[] = {
        {{0x85, 0x40, 'x'}, "\uFFFDx"}, // a pair that no table has
        {{0x81, '\n', 'x'}, "\uFFFD\nx"},
        {{0x81, 0x7F}, "\uFFFD\x7F"},
        {{0x81, 0xFD, 0x82, 0xA0}, "\uFFFD\uFFFDあ"},
        {{0x82, 0xA0, 0x81}, "あ\uFFFD"},
        {{0x80, 0xA0, 0xFD, 0xFF, 'x'}, "\uFFFD\uFFFD\uFFFD\uFFFDx"},
    };
    for (const auto &[sjis, utf8] : cases) EXPECT_EQ(to_utf8(sjis), utf8) << shown(sjis);
}

TEST(text_codec, names_what_it_cannot_encode) {
    const std::pair<std::string, std::string> cases[] = {
        {"円と€", "Shift_JIS has no character € (U+20AC) at position 3"},
        {"丂", "Shift_JIS has no character 丂 (U+4E02) at position 1"}, // JIS X 0212 alone has it
        {"a😀", "Shift_JIS has no character 😀 (U+1F600) at position 2"},
        {"あ\x82"s, "byte 0x82 at position 2 is not UTF-8"},
        {"\xC0\xAF"s, "byte 0xC0 at position 1 is not UTF-8"}, // overlong
        {"\xE0\x80\xAF"s, "byte 0xE0 at position 1 is not UTF-8"},
        {"\xED\xA0\x80"s, "byte 0xED at position 1 is not UTF-8"},     // a surrogate
        {"あ\xE3\x81"s, "byte 0xE3 at position 2 is not UTF-8"},       // cut off
        {"\xF4\x90\x80\x80"s, "byte 0xF4 at position 1 is not UTF-8"}, // beyond U+10FFFF
    };
    for (const auto &[utf8, reason] : cases) {
        try {
            to_sjis(utf8);
            ADD_FAILURE() << utf8 << " was encoded";
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.what(), reason);
        }
    }
}

} // namespace
} // namespace kigou
