#include <gtest/gtest.h>

#include <tuple>

#include "common/acccom.h"
#include "common/sjis_text.h"
#include "tests/common/bytes.h"

namespace {

constexpr int none = -1;

TEST(Strings, comparisons_differ_in_what_they_do_at_the_end_of_a_string) {
    using Case = std::tuple<const char *, const char *, short, int, int, int>;
    for (const auto &[a, b, n, whole, common, exact] : {
             Case{"ab", "abc", 3, -1, 0, -1},
             {"abc", "ab", 3, 1, 0, 1},
             {"ab", "abc", 2, -1, 0, 0},
             {"\x81", "z", 1, 1, 1, 1},
             {"", "x", 5, -1, 0, 1},
             {"ab", "ab", 3, 0, 0, 1},
             {"abc", "abd", 2, -1, 0, 0},
             {"abc", "abd", 3, -1, -1, -1},
             {"a", "b", -1, -1, 0, 0},
         }) {
        const std::tuple results(CM_strcmp(u(a), u(b)), CM_strncmp(u(a), u(b), n), CM_strncmp2(u(a), u(b), n));
        EXPECT_EQ(results, std::tuple(whole, common, exact)) << hex(a) << "against " << hex(b) << "n " << n;
    }
}

TEST(Strings, compare_without_case_neither_orders_nor_stops_at_a_nul) {
    EXPECT_EQ(CM_strnicmp(u("abz"), u("ABZ"), 3), 0);
    EXPECT_EQ(CM_strnicmp(u("abd"), u("abc"), 3), -1);
    EXPECT_EQ(CM_strnicmp(u("a\0b"), u("a\0c"), 3), -1);
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(CM_CharUpperCnv(static_cast<unsigned char>(byte)), byte >= 0x61 && byte <= 0x7A ? byte - 32 : byte);
}

TEST(Strings, searches) {
    using Case = std::tuple<Bytes, Bytes, int, int>;
    for (const auto &[text, key, first, last] : {
             Case{"xabc", "bc", 2, 2},
             {"ab", "abc", none, none},
             {"a/-b/-c", "/-", 1, 4},
             {"/-", "/-", 0, none},
             {"/-a", "/-", 0, 0},
             {"@x", "@", 0, none},
             {"ab/", "/-", 2, none}, // the end of the text begins the key
             {"ab", "", 0, 2},
         }) {
        const auto at = [start = u(text)](const unsigned char *found) { return index_in(start, found); };
        const std::tuple results(CM_strpbrk2(u(text), u(key)), at(CM_strpbrk(u(text), u(key))), at(CM_strpbrke(u(text), u(key))));
        EXPECT_EQ(results, std::tuple(first, first, last)) << text << " key " << key;
    }
}

TEST(Strings, search_for_a_character_does_not_hit_a_trail_byte) {
    using Case = std::tuple<Bytes, int, int>;
    for (const auto &[bytes, first, last] : {
             Case{"a\x81\x5E\x82\x81\x5E\x81\x5E", 1, 6},
             {"\xB1\x81\x5E", 1, 1}, // half-width katakana is a byte of its own
             {"ab\x81", none, none},
         }) {
        GuardedMemory memory;
        const unsigned char *const text = memory.text(bytes);
        EXPECT_EQ(index_in(text, acc::find_char(text, 0x815E)), first) << hex(bytes);
        EXPECT_EQ(index_in(text, acc::find_last_char(text, 0x815E)), last) << hex(bytes);
    }
}

TEST(Strings, copies_take_exactly_n_bytes_and_add_a_nul) {
    GuardedMemory memory;
    unsigned char *const out = memory.block(6);
    CM_strncpy(out, u("ab\0z"), 3);
    EXPECT_EQ(hex(Bytes(out, out + 6)), hex("ab\0\0\xEE\xEE"s));
    CM_strcpy(out, u("cd"));
    CM_strcat(out, u("e"));
    CM_strncat(out, u("fg"), 1);
    EXPECT_EQ(hex(Bytes(out, out + 6)), hex("cdef\0\xEE"s));
    CM_strncpy(out, u("xyz"), -1);
    EXPECT_EQ(text_of(out), "");
}

TEST(Strings, lengths_are_cut_to_16_bits_but_for_lstrlen) {
    for (const auto &[size, length] : {std::pair{0, 0}, {32767, 32767}, {32768, -32768}, {65537, 1}}) {
        const Bytes text(static_cast<std::size_t>(size), 'a');
        EXPECT_EQ(CM_strlen(u(text)), length);
        EXPECT_EQ(CM_lstrlen(u(text)), size);
    }
}

TEST(Strings, wide_strings_end_at_a_unit_whose_first_byte_is_0) {
    const Bytes wide = "1:2\0\x30\x42\0z"s;
    GuardedMemory memory;
    unsigned char *const out = memory.block(7);
    CM_strcpyF(out, u(wide), 1);
    EXPECT_EQ(hex(Bytes(out, out + 7)), hex(wide.substr(0, 7)));
    EXPECT_EQ(CM_strlenF(out, 1), 6);
    EXPECT_EQ(CM_strlenF(out, 2), 3);
    CM_strcpyF(out, u("ab"), 0);
    EXPECT_EQ(hex(Bytes(out, out + 4)), hex("ab\0\0"s));

    using Case = std::tuple<Bytes, Bytes, int, int>;
    for (const auto &[a, b, as_wide, as_narrow] : {
             Case{"2\0003\0\0"s, "2\0004\0\0"s, -1, 0},
             {"ab\0"s, "abcd\0"s, -1, -1},
             {"\x81\x40\0"s, "\x7F\x40\0"s, 1, 1},
         }) {
        EXPECT_EQ(CM_strcmpF(u(a), u(b), 1), as_wide) << hex(a);
        EXPECT_EQ(CM_strcmpF(u(a), u(b), 0), as_narrow) << hex(a);
    }
    EXPECT_EQ(CM_GetUnicodeOs(), 0);
}

TEST(Strings, numbers_are_not_checked) {
    EXPECT_EQ(CM_atol(u("")), 0);
    EXPECT_EQ(CM_atol(u("-5a\xFF")), -3000 + 500 + 490 + 207);
    EXPECT_EQ(CM_atol(u("4294967297")), 1);
    EXPECT_EQ(CM_atol(u("40000")), 40000);
    EXPECT_EQ(CM_atos(u("40000")), -25536);
}

TEST(Strings, paths) {
    using Case = std::pair<Bytes, Bytes>;
    GuardedMemory memory;
    for (const auto &[path, ended] : {Case{"", ""}, {"/usr/", "/usr/"}, {"/usr\0"s, "/usr/"}}) {
        unsigned char *const buffer = memory.text(path);
        CM_PathEndChk(buffer);
        EXPECT_EQ(text_of(buffer), ended);
    }
    for (const auto &[path, name] : {Case{"a\\b\\c.kig", "c.kig"}, {"abc", "abc"}, {"\\abc", "\\abc"}, {"a\\", ""}, {"\x83\\b", "b"}}) {
        unsigned char *const buffer = memory.block(name.size() + 1);
        CM_GetFullPathToFileName(u(path), buffer);
        EXPECT_EQ(text_of(buffer), name) << path;
    }
}

} // namespace
