// The codec of kigou: every cell both ways, and the edges of malformed text.
#include "cli/text_codec.h"

#include <gtest/gtest.h>

#include "cli/failure.h"

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

struct Decoding {
    const char *name;
    Sjis sjis;
    std::string utf8;
};

TEST(text_codec, decodes_and_keeps_what_follows_bad_bytes) {
    const Decoding cases[] = {
        {"horizontal bar 1-29", {0x81, 0x5C}, "\u2015"},
        {"backslash 1-32", {0x81, 0x5F}, "\uFF3C"},
        {"wave dash 1-33", {0x81, 0x60}, "\u301C"},
        {"double line 1-34", {0x81, 0x61}, "\u2016"},
        {"minus 1-61", {0x81, 0x7C}, "\u2212"},
        {"cent 1-81", {0x81, 0x91}, "\u00A2"},
        {"not 2-44", {0x81, 0xCA}, "\u00AC"},
        {"IBM extension", {0xFA, 0x40}, "ⅰ"},
        {"ASCII, half-width and CR LF", {'A', 0x5C, 0xB1, 0xDF, 0xA1, '\r', '\n'}, "A\\ｱﾟ｡\r\n"},
        {"undefined pair", {0x85, 0x40, 'x'}, "\uFFFDx"},
        {"lead before a line end", {0x81, '\n', 'x'}, "\uFFFD\nx"},
        {"lead before 0x7F", {0x81, 0x7F}, "\uFFFD\x7F"},
        {"lead before 0xFD", {0x81, 0xFD, 0x82, 0xA0}, "\uFFFD\uFFFDあ"},
        {"lead at the end", {0x82, 0xA0, 0x81}, "あ\uFFFD"},
        {"bytes that start nothing", {0x80, 0xA0, 0xFD, 0xFF, 'x'}, "\uFFFD\uFFFD\uFFFD\uFFFDx"},
        {"nothing", {}, ""},
    };
    for (const Decoding &c : cases) EXPECT_EQ(to_utf8(c.sjis), c.utf8) << c.name;
}

TEST(text_codec, encodes_what_other_tables_put_on_a_cell) {
    const Decoding cases[] = {
        {"fullwidth tilde", {0x81, 0x60}, "\uFF5E"},
        {"em dash", {0x81, 0x5C}, "\u2014"},
        {"fullwidth hyphen-minus", {0x81, 0x7C}, "\uFF0D"},
        {"parallel to", {0x81, 0x61}, "\u2225"},
        {"fullwidth cent", {0x81, 0x91}, "\uFFE0"},
        {"fullwidth pound", {0x81, 0x92}, "\uFFE1"},
        {"fullwidth not", {0x81, 0xCA}, "\uFFE2"},
        {"yen sign is no backslash", {0x81, 0x8F}, "\u00A5"},
        {"overline is no tilde", {0x81, 0x50}, "\u203E"},
        {"vendor kanji, not JIS X 0212", {0xFA, 0x5C}, "纊"},
        {"ASCII and half-width katakana", {'~', '\\', 0xB6, 0xDE}, "~\\ｶﾞ"},
    };
    for (const Decoding &c : cases) EXPECT_EQ(shown(to_sjis(c.utf8)), shown(c.sjis)) << c.name;
}

struct Refusal {
    const char *name;
    std::string utf8;
    std::string reason;
};

TEST(text_codec, names_what_it_cannot_encode) {
    const Refusal cases[] = {
        {"euro", "円と€", "Shift_JIS has no character € (U+20AC) at position 3"},
        {"JIS X 0212 alone", "丂", "Shift_JIS has no character 丂 (U+4E02) at position 1"},
        {"beyond 16 bits", "a😀", "Shift_JIS has no character 😀 (U+1F600) at position 2"},
        {"stray trail byte", "あ\x82"s, "byte 0x82 at position 2 is not UTF-8"},
        {"overlong", "\xC0\xAF"s, "byte 0xC0 at position 1 is not UTF-8"},
        {"overlong in three bytes", "\xE0\x80\xAF"s, "byte 0xE0 at position 1 is not UTF-8"},
        {"surrogate", "\xED\xA0\x80"s, "byte 0xED at position 1 is not UTF-8"},
        {"cut off", "あ\xE3\x81"s, "byte 0xE3 at position 2 is not UTF-8"},
        {"beyond U+10FFFF", "\xF4\x90\x80\x80"s, "byte 0xF4 at position 1 is not UTF-8"},
    };
    for (const Refusal &c : cases) {
        try {
            to_sjis(c.utf8);
            ADD_FAILURE() << c.name << " was encoded";
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.what(), c.reason) << c.name;
        }
    }
}

} // namespace
} // namespace kigou
