// Strings, and lists made of them.
#include <tuple>

#include "common/acccom.h"
#include "common/item_header.h"
#include "common/sjis_text.h"
#include "tests/common/bytes.h"

namespace {

constexpr int none = -1;

TEST(Strings, comparisons_differ_in_what_they_do_at_the_end_of_a_string) {
    using Case = std::tuple<Bytes, Bytes, short, int, int, int, int>;
    for (const auto &[a, b, n, whole, common, exact, wide] : {
             Case{"ab", "abc", 3, -1, 0, -1, -1},
             {"abc", "ab", 3, 1, 0, 1, 1},
             {"\x81", "z", 1, 1, 1, 1, 1},
             {"ab", "ab", 3, 0, 0, 1, 0},
             {"abc", "abd", 2, -1, 0, 0, -1},
             {"abc", "abd", 3, -1, -1, -1, -1},
             {"a", "b", -1, -1, 0, 0, -1},
             {"2\0003"s, "2\0004"s, 1, 0, 0, 0, -1},
         }) {
        const Bytes x = a + "\0\0"s, y = b + "\0\0"s;
        const std::tuple results(CM_strcmp(bytes(x), bytes(y)), CM_strncmp(bytes(x), bytes(y), n), CM_strncmp2(bytes(x), bytes(y), n),
                                 CM_strcmpF(bytes(x), bytes(y), 1));
        EXPECT_EQ(results, std::tuple(whole, common, exact, wide)) << a << " against " << b << " n " << n;
        EXPECT_EQ(CM_strcmpF(bytes(x), bytes(y), 0), whole);
    }
    EXPECT_EQ(CM_GetUnicodeOs(), 0);
}

TEST(Strings, compare_without_case_neither_orders_nor_stops_at_a_nul) {
    EXPECT_EQ(CM_strnicmp(bytes("abz"), bytes("ABZ"), 3), 0);
    EXPECT_EQ(CM_strnicmp(bytes("abd"), bytes("abc"), 3), -1);
    EXPECT_EQ(CM_strnicmp(bytes("a\0b"s), bytes("a\0c"s), 3), -1);
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
        const unsigned char *const in = bytes(text), *const of = bytes(key);
        const std::tuple results(CM_strpbrk2(in, of), index_in(in, CM_strpbrk(in, of)), index_in(in, CM_strpbrke(in, of)));
        EXPECT_EQ(results, std::tuple(first, first, last)) << text << " key " << key;
    }
}

TEST(Strings, write_to_the_byte) {
    const auto ended = [](unsigned char *out, const unsigned char *in) { return CM_strcpy(out, in), CM_PathEndChk(out), 0; };
    const auto file_name = [](unsigned char *out, const unsigned char *in) { return CM_GetFullPathToFileName(in, out), 0; };
    expect({
        {"past a NUL", [](auto *out, auto *in) { return CM_strncpy(out, in, 3), 0; }, "ab\0z"s, "ab\0\0\xEE"s, 0},
        {"no byte", [](auto *out, auto *in) { return CM_strncpy(out, in, -1), 0; }, "xyz", "\0\xEE"s, 0},
        {"joined", [](auto *out, auto *in) { return CM_strcpy(out, in), CM_strcat(out, in), 0; }, "cd", "cdcd\0\xEE"s, 0},
        {"cut", [](auto *out, auto *in) { return CM_strcpy(out, in), CM_strncat(out, in, 1), 0; }, "cd", "cdc\0\xEE"s, 0},
        {"wide", [](auto *out, auto *in) { return CM_strcpyF(out, in, 1), CM_strlenF(out, 1); }, "1:2\0\x30\x42\0z"s, "1:2\0\x30\x42\0"s,
         6},
        {"no wide", [](auto *out, auto *in) { return CM_strcpyF(out, in, 2), CM_strlenF(out, 2); }, "1:2\0\x30"s, "1:2\0\xEE"s, 3},
        {"no path", ended, "", "\0"s, 0},
        {"ended path", ended, "/usr/", "/usr/\0"s, 0},
        {"path", ended, "/usr", "/usr/\0"s, 0},
        {"last name", file_name, "a\\b\\c.kig", "c.kig\0"s, 0},
        {"root", file_name, "\\abc", "\\abc\0"s, 0},
        {"trail byte like a separator", file_name, "\x83\\b", "b\0"s, 0},
    });
}

TEST(Strings, sizes_are_cut_to_16_bits_but_for_lstrlen) {
    Bytes out(70000, 'x');
    EXPECT_EQ(CM_LBMakeHeader(65535, bytes("ab"), 1, reinterpret_cast<unsigned char *>(out.data())), 1);
    EXPECT_EQ(CM_lstrlen(bytes(out)), 65536);
    EXPECT_EQ(acc::item_bytes(65535, 2, 1), 65537U);
    for (const auto &[size, length] : {std::pair{0, 0}, {32767, 32767}, {32768, -32768}, {65537, 1}}) {
        const Bytes text(static_cast<std::size_t>(size), 'a');
        EXPECT_EQ(CM_strlen(bytes(text)), length);
        EXPECT_EQ(CM_lstrlen(bytes(text)), size);
    }
}

TEST(Strings, numbers_are_not_checked) {
    EXPECT_EQ(CM_atol(bytes("")), 0);
    EXPECT_EQ(CM_atol(bytes("-5a\xFF")), -3000 + 500 + 490 + 207);
    EXPECT_EQ(CM_atol(bytes("4295007296")), 40000);
    EXPECT_EQ(CM_atos(bytes("40000")), -25536);
}

TEST(Items, headers) {
    const struct {
        unsigned short mode, number;
        Bytes header;
    } cases[] = {{0, 7, ""},    {1, 7, ""},     {2, 7, "7"},     {2, 17, "17"},       {3, 10, "10:"},
                 {4, 7, "7: "}, {4, 12, "12:"}, {6, 5, "5:   "}, {6, 65535, "65535:"}};
    for (const auto &c : cases) {
        SCOPED_TRACE("mode " + std::to_string(c.mode) + " number " + std::to_string(c.number));
        const Bytes narrow = c.header + "ABC\0"s, fixed = c.header + "0123\000567890abcde\0"s;
        const Bytes wide = c.header + Bytes(c.header.size() % 2, '\0') + "\x30\x42\x30\0\0"s; // two bytes of the header to a unit
        const auto size = [&](const Bytes &item) { return static_cast<int>(item.size()) - (c.mode == 0 ? 1 : 0); };
        expect({
            {"narrow", [&](auto *out, auto *in) { return CM_LBMakeHeaderF(c.mode, in, c.number, out, 0); }, "ABC", narrow, size(narrow)},
            {"wide", [&](auto *out, auto *in) { return CM_LBMakeHeaderF(c.mode, in, c.number, out, 1); }, "\x30\x42\x30\0"s, wide,
             size(wide)},
            {"fixed", [&](auto *out, auto *in) { return CM_LBMakeHeaderXKP(c.mode, in, c.number, out); }, "0123\000567890abcdef"s, fixed,
             size(fixed)},
        });
        EXPECT_EQ(acc::item_bytes(c.mode, 3, c.number), static_cast<unsigned>(size(narrow)));
        const int text_at = c.mode <= 1 ? 0 : c.mode - 1;
        EXPECT_EQ(index_in(bytes(narrow), CM_CutHeaderF(bytes(narrow), c.mode, 0)), text_at);
        EXPECT_EQ(index_in(bytes(narrow), CM_CutHeaderF(bytes(narrow), c.mode, 1)), text_at * 4);
    }
}

TEST(Items, packed_lists) {
    const Bytes narrow = "ab\0cd\0\0ef"s, wide = "a\0\0b\0\0\0c\0"s;
    for (const auto &[n, at] : {std::pair{-1, 0}, {0, 0}, {1, 0}, {2, 3}, {3, 7}}) {
        EXPECT_EQ(CM_GetStringF(bytes(narrow), n, 0), bytes(narrow) + at) << n;
        EXPECT_EQ(CM_GetStringF(bytes(wide), n, 1), bytes(wide) + at) << n;
        EXPECT_EQ(CM_GetStringF(nullptr, n, 0), nullptr);
        EXPECT_EQ(CM_GetStringF(nullptr, n, 1), nullptr);
    }
}

TEST(Items, separated_lists) {
    const auto last_separator = [](auto *, auto *in) { return index_in(in, acc::find_last_char(in, 0x815E)); };
    const auto separator = [](auto *, auto *in) { return index_in(in, acc::find_char(in, 0x815E)); };
    // Where an item starts, and its length behind that.
    const auto item = [](int n) {
        return [=](auto *out, auto *in) {
            int length = 99;
            const int at = index_in(in, CM_GetString2(in, n, &length));
            return out[0] = static_cast<unsigned char>(length), at;
        };
    };
    const auto find = [](const Bytes &key) { return [=](auto *, auto *in) { return index_in(in, CM_Bsistrpbrk(in, bytes(key))); }; };
    const Bytes two = "\x82\x60\x82\x61\xA5\x82\x62\x82\x63";
    expect({
        {"first, not a trail byte", separator, "a\x82\x81\x5E\x81\x5E\x81\x5E", "", 4},
        {"last, not a trail byte", last_separator, "a\x81\x5E\x82\x81\x5E\x81\x5E\x82\x81\x5E", "", 6},
        {"half-width katakana is a byte of its own", last_separator, "\xB1\x81\x5E", "", 1},
        {"half a character", separator, "ab\x81", "", none},
        {"below the first", item(-3), two, "\4", 0},
        {"beyond the last", item(3), two, "\0"s, none},
        {"separator at the end", item(2), "ab\xA5", "\0"s, 3},
        {"trail byte like a separator", item(2), "\x83\xA5\245ab", "\2", 3},
        {"odd last item counts its NUL", item(2), "ab\245cde", "\4", 3},
        {"beyond an odd last item", item(3), "ab\245cde", "\0"s, none},
        {"key longer than the item", find("\x82\x62\x82\x63\x82\x64"), two, "", none},
        {"inside an item", find("\x82\x61"), two, "", none},
        {"key longer than the list", find("abcd"), "ab", "", none},
        {"empty key", find(""), two, "", 0},
        {"odd last item", find("cde"), "ab\245cde", "", 3},
        {"127 bytes of an item", find(Bytes(127, 'a')), Bytes(200, 'a'), "", 0},
        {"128 bytes of an item", find(Bytes(128, 'a')), Bytes(200, 'a'), "", none},
    });
    int length = 99;
    EXPECT_EQ(CM_GetString2(nullptr, 1, &length), nullptr);
    EXPECT_EQ(length, 0);
}

} // namespace
