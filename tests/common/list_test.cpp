#include <gtest/gtest.h>

#include "common/acccom.h"
#include "common/item_header.h"
#include "tests/common/bytes.h"

namespace {

TEST(Items, headers) {
    struct Case {
        unsigned short mode, number;
        const char *text, *item;
        const char *cut; // by CM_CutHeader
    };
    for (const Case &c : {
             Case{0, 7, "ABC", "ABC", "ABC"},
             {1, 7, "ABC", "ABC", "ABC"},
             {2, 7, "ABC", "7ABC", "ABC"},
             {2, 17, "ABC", "17ABC", "7ABC"},
             {3, 7, "ABC", "7:ABC", "ABC"},
             {3, 10, "ABC", "10:ABC", ":ABC"},
             {4, 7, "\x82\xA0", "7: \x82\xA0", "\x82\xA0"},
             {4, 12, "ABC", "12:ABC", "ABC"},
             {4, 100, "ABC", "100:ABC", ":ABC"},
             {6, 5, "", "5:   ", ""},
             {6, 65535, "A", "65535:A", ":A"},
         }) {
        SCOPED_TRACE("mode " + std::to_string(c.mode) + " number " + std::to_string(c.number));
        const Bytes item = c.item;
        const Bytes text = c.text;
        const std::size_t size = item.size() + (c.mode == 0 ? 0 : 1);
        GuardedMemory memory;
        unsigned char *const out = memory.block(item.size() + 1);
        EXPECT_EQ(CM_LBMakeHeaderF(c.mode, u(text), c.number, out, 0), static_cast<int>(size));
        EXPECT_EQ(hex(text_of(out)), hex(item));
        EXPECT_EQ(text_of(CM_CutHeaderF(out, c.mode, 0)), c.cut);
        EXPECT_EQ(acc::item_header_bytes(c.mode, c.number), item.size() - text.size());
        EXPECT_EQ(acc::item_bytes(c.mode, static_cast<unsigned>(text.size()), c.number), size);

        // Wide: the header as the Unicode conversion gives it, then the text.
        const Bytes header = item.substr(0, item.size() - text.size());
        const Bytes wide_text = bytes("\x30\x42\x30\0");
        Bytes wide(header.size() + 2, '\0');
        wide.resize(static_cast<std::size_t>(
            CM_SjisToUnicode(reinterpret_cast<unsigned char *>(wide.data()), 0, u(header), static_cast<unsigned short>(header.size()))));
        wide += wide_text;
        unsigned char *const wide_out = memory.block(wide.size() + 1);
        EXPECT_EQ(CM_LBMakeHeaderF(c.mode, u(wide_text), c.number, wide_out, 1), static_cast<int>(wide.size()) + (c.mode == 0 ? 0 : 1));
        EXPECT_EQ(hex(Bytes(wide_out, wide_out + wide.size() + 1)), hex(wide + '\0'));
        EXPECT_EQ(CM_CutHeaderF(wide_out, c.mode, 1) - wide_out, c.mode <= 1 ? 0 : (c.mode - 1) * 4);
    }
}

TEST(Items, sizes_are_cut_to_16_bits) {
    Bytes out(70000, 'x');
    auto *const buffer = reinterpret_cast<unsigned char *>(out.data());
    EXPECT_EQ(CM_LBMakeHeader(65535, u("ab"), 1, buffer), 1);
    EXPECT_EQ(CM_lstrlen(buffer), 65536);
    EXPECT_EQ(acc::item_bytes(65535, 2, 1), 65537U);
    EXPECT_EQ(CM_LBMakeHeader(40000, u(""), 1, buffer), 40000 - 65536);
}

TEST(Items, fixed_width_items_take_16_bytes_of_text) {
    for (const auto &[mode, header] : {std::pair<unsigned short, Bytes>{0, ""}, {1, ""}, {2, "1"}, {4, "1: "}}) {
        const Bytes text = bytes(
            "0123\0"
            "567890abcdef");
        GuardedMemory memory;
        unsigned char *const out = memory.block(header.size() + 17);
        EXPECT_EQ(CM_LBMakeHeaderXKP(mode, u(text), 1, out), static_cast<int>(header.size()) + (mode == 0 ? 16 : 17));
        EXPECT_EQ(hex(Bytes(out, out + header.size() + 17)), hex(header + text.substr(0, 16) + '\0'));
    }
}

TEST(Items, packed_lists) {
    const Bytes narrow = bytes("ab\0cd\0\0ef");
    const Bytes wide = bytes("a\0\0b\0\0\0c\0");
    struct Case {
        int n, narrow, wide;
    };
    for (const Case &c : {Case{-1, 0, 0}, {0, 0, 0}, {1, 0, 0}, {2, 3, 3}, {3, 7, 7}}) {
        EXPECT_EQ(CM_GetStringF(u(narrow), c.n, 0), u(narrow) + c.narrow) << c.n;
        EXPECT_EQ(CM_GetStringF(u(wide), c.n, 1), u(wide) + c.wide) << c.n;
    }
    EXPECT_EQ(CM_GetStringF(nullptr, 1, 0), nullptr);
    EXPECT_EQ(CM_GetStringF(nullptr, 1, 1), nullptr);
}

TEST(Items, separated_lists) {
    const Bytes two = "\x82\x60\x82\x61\xA5\x82\x62\x82\x63";
    struct Case {
        const char *name;
        Bytes list;
        int n, start, length;
    };
    for (const Case &c : {
             Case{"first", two, 1, 0, 4},
             {"below the first", two, -3, 0, 4},
             {"second", two, 2, 5, 4},
             {"beyond the last", two, 3, -1, 0},
             {"empty list", "", 1, 0, 0},
             {"separator at the end", "ab\xA5", 2, 3, 0},
             {"behind a separator at the end", "ab\xA5", 3, -1, 0},
             {"empty item",
              "\xA5"
              "ab",
              1, 0, 0},
             {"trail byte like a separator",
              "\x83\xA5\xA5"
              "ab",
              2, 3, 2},
             {"odd last item counts its NUL",
              "ab\xA5"
              "cde",
              2, 3, 4},
             {"beyond an odd last item",
              "ab\xA5"
              "cde",
              3, -1, 0},
         }) {
        GuardedMemory memory;
        const unsigned char *const list = memory.text(c.list);
        int length = 99;
        EXPECT_EQ(CM_GetString2(list, c.n, &length), c.start < 0 ? nullptr : list + c.start) << c.name;
        EXPECT_EQ(length, c.length) << c.name;
    }
    int length = 99;
    EXPECT_EQ(CM_GetString2(nullptr, 1, &length), nullptr);
    EXPECT_EQ(length, 0);
}

TEST(Items, search_in_separated_lists) {
    const Bytes two = "\x82\x60\x82\x61\xA5\x82\x62\x82\x63";
    const Bytes long_item(200, 'a');
    struct Case {
        const char *name;
        Bytes list, key;
        int start;
    };
    for (const Case &c : {
             Case{"start of the second", two, "\x82\x62", 5},
             {"key longer than the item", two, "\x82\x62\x82\x63\x82\x64", -1},
             {"inside an item", two, "\x82\x61", -1},
             {"key longer than the list", "ab", "abcd", -1},
             {"empty key", two, "", 0},
             {"empty list and key", "", "", -1},
             {"odd last item",
              "ab\xA5"
              "cde",
              "cde", 3},
             {"127 bytes of an item", long_item, long_item.substr(0, 127), 0},
             {"128 bytes of an item", long_item, long_item.substr(0, 128), -1},
         }) {
        GuardedMemory memory;
        const unsigned char *const list = memory.text(c.list);
        EXPECT_EQ(CM_Bsistrpbrk(list, u(c.key)), c.start < 0 ? nullptr : list + c.start) << c.name;
    }
}

} // namespace
