#include <gtest/gtest.h>

#include <tuple>

#include "common/acccom.h"
#include "common/item_header.h"
#include "tests/common/bytes.h"

namespace {

TEST(Items, headers) {
    using Case = std::tuple<unsigned short, unsigned short, Bytes, Bytes, const char *>;
    for (const auto &[mode, number, text, item, cut] : {
             Case{0, 7, "ABC", "ABC", "ABC"},
             {1, 7, "ABC", "ABC", "ABC"},
             {2, 17, "ABC", "17ABC", "7ABC"},
             {3, 10, "ABC", "10:ABC", ":ABC"},
             {4, 7, "\x82\xA0", "7: \x82\xA0", "\x82\xA0"},
             {4, 12, "ABC", "12:ABC", "ABC"},
             {6, 5, "", "5:   ", ""},
             {6, 65535, "A", "65535:A", ":A"},
         }) {
        SCOPED_TRACE("mode " + std::to_string(mode) + " number " + std::to_string(number));
        const int end_bytes = mode == 0 ? 0 : 1;
        const auto size = static_cast<int>(item.size()) + end_bytes;
        GuardedMemory memory;
        unsigned char *out = memory.block(item.size() + 1);
        EXPECT_EQ(CM_LBMakeHeaderF(mode, u(text), number, out, 0), size);
        EXPECT_EQ(hex(text_of(out)), hex(item));
        EXPECT_EQ(text_of(CM_CutHeaderF(out, mode, 0)), cut);
        EXPECT_EQ(static_cast<int>(acc::item_bytes(mode, static_cast<unsigned>(text.size()), number)), size);

        // Two bytes of the header to a unit.
        const Bytes wide_text = "\x30\x42\x30\0"s;
        Bytes wide = item.substr(0, item.size() - text.size());
        wide.resize((wide.size() + 1) / 2 * 2);
        wide += wide_text;
        out = memory.block(wide.size() + 1);
        EXPECT_EQ(CM_LBMakeHeaderF(mode, u(wide_text), number, out, 1), static_cast<int>(wide.size()) + end_bytes);
        EXPECT_EQ(hex(Bytes(out, out + wide.size() + 1)), hex(wide + '\0'));
        EXPECT_EQ(CM_CutHeaderF(out, mode, 1) - out, mode <= 1 ? 0 : (mode - 1) * 4);

        const Bytes fixed = item.substr(0, item.size() - text.size()) + "0123\000567890abcde"s;
        out = memory.block(fixed.size() + 1);
        EXPECT_EQ(CM_LBMakeHeaderXKP(mode, u("0123\000567890abcdef"), number, out), static_cast<int>(fixed.size()) + end_bytes);
        EXPECT_EQ(hex(Bytes(out, out + fixed.size() + 1)), hex(fixed + '\0'));
    }
}

TEST(Items, sizes_are_cut_to_16_bits) {
    Bytes out(70000, 'x');
    auto *const buffer = reinterpret_cast<unsigned char *>(out.data());
    EXPECT_EQ(CM_LBMakeHeader(65535, u("ab"), 1, buffer), 1);
    EXPECT_EQ(CM_lstrlen(buffer), 65536);
    EXPECT_EQ(acc::item_bytes(65535, 2, 1), 65537U);
}

TEST(Items, packed_lists) {
    const Bytes narrow = "ab\0cd\0\0ef"s;
    const Bytes wide = "a\0\0b\0\0\0c\0"s;
    for (const auto &[n, at] : {std::pair{-1, 0}, {0, 0}, {1, 0}, {2, 3}, {3, 7}}) {
        EXPECT_EQ(CM_GetStringF(u(narrow), n, 0), u(narrow) + at) << n;
        EXPECT_EQ(CM_GetStringF(u(wide), n, 1), u(wide) + at) << n;
    }
    EXPECT_EQ(CM_GetStringF(nullptr, 1, 0), nullptr);
    EXPECT_EQ(CM_GetStringF(nullptr, 1, 1), nullptr);
}

const Bytes two = "\x82\x60\x82\x61\xA5\x82\x62\x82\x63";

TEST(Items, separated_lists) {
    using Case = std::tuple<const char *, Bytes, int, int, int>;
    for (const auto &[name, items, n, start, expected_length] : {
             Case{"below the first", two, -3, 0, 4},
             {"second", two, 2, 5, 4},
             {"beyond the last", two, 3, -1, 0},
             {"separator at the end", "ab\xA5", 2, 3, 0},
             {"empty item", "\245ab", 1, 0, 0},
             {"trail byte like a separator", "\x83\xA5\245ab", 2, 3, 2},
             {"odd last item counts its NUL", "ab\245cde", 2, 3, 4},
             {"beyond an odd last item", "ab\245cde", 3, -1, 0},
         }) {
        GuardedMemory memory;
        const unsigned char *const list = memory.text(items);
        int length = 99;
        EXPECT_EQ(index_in(list, CM_GetString2(list, n, &length)), start) << name;
        EXPECT_EQ(length, expected_length) << name;
    }
    int length = 99;
    EXPECT_EQ(CM_GetString2(nullptr, 1, &length), nullptr);
    EXPECT_EQ(length, 0);
}

TEST(Items, search_in_separated_lists) {
    using Case = std::tuple<const char *, Bytes, Bytes, int>;
    for (const auto &[name, items, key, start] : {
             Case{"start of the second", two, "\x82\x62", 5},
             {"key longer than the item", two, "\x82\x62\x82\x63\x82\x64", -1},
             {"inside an item", two, "\x82\x61", -1},
             {"key longer than the list", "ab", "abcd", -1},
             {"empty key", two, "", 0},
             {"odd last item", "ab\245cde", "cde", 3},
             {"127 bytes of an item", Bytes(200, 'a'), Bytes(127, 'a'), 0},
             {"128 bytes of an item", Bytes(200, 'a'), Bytes(128, 'a'), -1},
         }) {
        GuardedMemory memory;
        const unsigned char *const list = memory.text(items);
        EXPECT_EQ(index_in(list, CM_Bsistrpbrk(list, u(key))), start) << name;
    }
}

} // namespace
