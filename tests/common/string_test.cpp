#include <gtest/gtest.h>

#include "common/acccom.h"
#include "common/sjis_literal.h"
#include "common/sjis_text.h"
#include "tests/common/bytes.h"

namespace {

constexpr int no_match = -1;

TEST(Strings, comparisons_differ_in_what_they_do_at_the_end_of_a_string) {
    struct Case {
        const char *a, *b;
        short n;
        int strcmp, strncmp, strncmp2;
    };
    for (const Case &c : {
             Case{"ab", "abc", 3, -1, 0, -1},
             {"abc", "ab", 3, 1, 0, 1},
             {"ab", "abc", 2, -1, 0, 0},
             {"b", "abc", 3, 1, 1, 1},
             {"\x81", "z", 1, 1, 1, 1},
             {"z", "\x81", 1, -1, -1, -1},
             {"", "x", 5, -1, 0, 1},
             {"", "x", 1, -1, 0, -1},
             {"ab", "ab", 3, 0, 0, 1},
             {"abc", "abd", 2, -1, 0, 0},
             {"abc", "abd", 3, -1, -1, -1},
             {"abd", "abc", 0, 1, 0, 0},
             {"a", "b", -1, -1, 0, 0},
         }) {
        SCOPED_TRACE(hex(c.a) + "against " + hex(c.b) + "n " + std::to_string(c.n));
        EXPECT_EQ(CM_strcmp(u(c.a), u(c.b)), c.strcmp);
        EXPECT_EQ(CM_strncmp(u(c.a), u(c.b), c.n), c.strncmp);
        EXPECT_EQ(CM_strncmp2(u(c.a), u(c.b), c.n), c.strncmp2);
    }
}

TEST(Strings, compare_without_case_neither_orders_nor_stops_at_a_nul) {
    EXPECT_EQ(CM_strnicmp(u("abz"), u("ABZ"), 3), 0);
    EXPECT_EQ(CM_strnicmp(u("abc"), u("abd"), 3), -1);
    EXPECT_EQ(CM_strnicmp(u("abd"), u("abc"), 3), -1);
    EXPECT_EQ(CM_strnicmp(u("a\0b"), u("a\0c"), 3), -1);
    EXPECT_EQ(CM_strnicmp(u("x"), u("y"), 0), 0);
    for (int byte = 0; byte < 256; ++byte) {
        const int upper = byte >= 0x61 && byte <= 0x7A ? byte - 32 : byte;
        EXPECT_EQ(CM_CharUpperCnv(static_cast<unsigned char>(byte)), upper);
    }
}

TEST(Strings, searches) {
    const Bytes slash = "\x81\x5E";
    struct Case {
        Bytes text, key;
        int first, last;
    };
    for (const Case &c : {
             Case{"xabc", "bc", 2, 2},
             {"ab", "abc", no_match, no_match},
             {"abc", "abcd", no_match, no_match},
             {"a" + slash + "b" + slash + "c", slash, 1, 4},
             {slash, slash, 0, no_match},
             {slash + "a", slash, 0, 0},
             {"@x", "@", 0, no_match},
             {"x@", "@", 1, 1},
             {"ab\x81", slash, 2, no_match}, // the end of the text begins the key
             {"ab", "", 0, 2},
             {"", "", no_match, no_match},
             {"a", "", 0, no_match},
         }) {
        SCOPED_TRACE(hex(c.text) + "key " + hex(c.key));
        const auto at = [&](int index) { return index < 0 ? nullptr : u(c.text) + index; };
        EXPECT_EQ(CM_strpbrk2(u(c.text), u(c.key)), c.first);
        EXPECT_EQ(CM_strpbrk(u(c.text), u(c.key)), at(c.first));
        EXPECT_EQ(CM_strpbrke(u(c.text), u(c.key)), at(c.last));
    }
}

TEST(Strings, search_for_a_character_does_not_hit_a_trail_byte) {
    struct Case {
        Bytes text;
        int first, last;
    };
    for (const Case &c : {
             Case{"a\x81\x5E\x82\x81\x5E\x81\x5E", 1, 6},
             {"\x82\x81\x5E", no_match, no_match},
             {"\xB1\x81\x5E", 1, 1}, // half-width katakana is a byte of its own
             {"ab\x81", no_match, no_match},
             {"", no_match, no_match},
         }) {
        GuardedMemory memory;
        unsigned char *const text = memory.text(c.text);
        const auto at = [&](int index) { return index < 0 ? nullptr : text + index; };
        EXPECT_EQ(acc::find_char(text, 0x815E), at(c.first)) << hex(c.text);
        EXPECT_EQ(acc::find_last_char(text, 0x815E), at(c.last)) << hex(c.text);
    }
}

TEST(Strings, copies_take_exactly_n_bytes_and_add_a_nul) {
    GuardedMemory memory;
    unsigned char *out = memory.block(5);
    CM_strncpy(out, u("ab\0z"), 3);
    EXPECT_EQ(hex(Bytes(out, out + 5)), hex(bytes("ab\0\0\xEE")));
    CM_strncpy(out, u("xyz"), -1);
    EXPECT_EQ(text_of(out), "");

    out = memory.block(6);
    CM_strcpy(out, u("ab"));
    CM_strcat(out, u("c"));
    CM_strncat(out, u("de"), 1);
    EXPECT_EQ(hex(Bytes(out, out + 6)), hex(bytes("abcd\0\xEE")));
}

TEST(Strings, lengths_are_cut_to_16_bits_but_for_lstrlen) {
    struct Case {
        std::size_t bytes;
        int length;
    };
    for (const Case &c : {Case{0, 0}, {32767, 32767}, {32768, -32768}, {65536, 0}, {65537, 1}}) {
        const Bytes text(c.bytes, 'a');
        EXPECT_EQ(CM_strlen(u(text)), c.length);
        EXPECT_EQ(CM_lstrlen(u(text)), static_cast<int>(c.bytes));
    }
}

TEST(Strings, wide_strings_end_at_a_unit_whose_first_byte_is_0) {
    const Bytes wide = bytes("1:2\0\x30\x42\0z");
    GuardedMemory memory;
    unsigned char *const out = memory.block(7);
    CM_strcpyF(out, u(wide), 1);
    EXPECT_EQ(hex(Bytes(out, out + 7)), hex(wide.substr(0, 7)));
    EXPECT_EQ(CM_strlenF(out, 1), 6);
    EXPECT_EQ(CM_strlenF(out, 2), 3);
    CM_strcpyF(out, u("ab"), 0);
    EXPECT_EQ(hex(Bytes(out, out + 4)), hex(bytes("ab\0\0")));

    struct Case {
        const char *name;
        Bytes a, b;
        int wide, narrow;
    };
    for (const Case &c : {
             Case{"second byte decides behind a 0", bytes("2\0003\0\0"), bytes("2\0004\0\0"), -1, 0},
             {"second byte of a unit", bytes("\x30\x42\0"), bytes("\x30\x41\0"), 1, 1},
             {"prefix is smaller", bytes("ab\0"), bytes("abcd\0"), -1, -1},
             {"equal", bytes("a\0\0"), bytes("a\0\0"), 0, 0},
             {"bytes are unsigned", bytes("\x81\x40\0"), bytes("\x7F\x40\0"), 1, 1},
         }) {
        EXPECT_EQ(CM_strcmpF(u(c.a), u(c.b), 1), c.wide) << c.name;
        EXPECT_EQ(CM_strcmpF(u(c.a), u(c.b), 0), c.narrow) << c.name;
    }
    EXPECT_EQ(CM_GetUnicodeOs(), 0);
}

TEST(Strings, numbers_are_not_checked) {
    struct Case {
        const char *text;
        int in_32_bits, in_16_bits;
    };
    for (const Case &c : {
             Case{"0012", 12, 12},
             {"", 0, 0},
             {"12a", 169, 169},
             {"-5", -25, -25},
             {"40000", 40000, -25536},
             {"4294967297", 1, 1},
             {"\xFF", 0xCF, 0xCF},
         }) {
        EXPECT_EQ(CM_atol(u(c.text)), c.in_32_bits) << c.text;
        EXPECT_EQ(CM_atos(u(c.text)), c.in_16_bits) << c.text;
    }
}

TEST(Strings, paths) {
    GuardedMemory memory;
    for (const auto &[path, ended] : {std::pair<Bytes, Bytes>{"", ""}, {"/usr/", "/usr/"}, {"/usr", "/usr/"}}) {
        unsigned char *const buffer = memory.block(ended.size() + 1);
        CM_strcpy(buffer, u(path));
        CM_PathEndChk(buffer);
        EXPECT_EQ(text_of(buffer), ended);
    }
    for (const auto &[path, name] : {std::pair<Bytes, Bytes>{"a\\b\\c.kig", "c.kig"},
                                     {"abc", "abc"},
                                     {"\\abc", "\\abc"},
                                     {"a\\", ""},
                                     {"\x83\x5C"
                                      "b",
                                      "b"}}) {
        unsigned char *const buffer = memory.block(name.size() + 1);
        CM_GetFullPathToFileName(u(path), buffer);
        EXPECT_EQ(text_of(buffer), name) << path;
    }
}

TEST(Strings, shift_jis_literals_are_made_by_the_compiler) {
    static constexpr auto literal = acc::sjis<"〈記号〉\r\n熙a\\">();
    EXPECT_EQ(hex(text_of(literal.data())), hex("\x81\x71\x8B\x4C\x8D\x86\x81\x72\r\n\xEA\xA4"
                                                "a\\"));
    EXPECT_EQ(literal.size(), 14U);
}

} // namespace
