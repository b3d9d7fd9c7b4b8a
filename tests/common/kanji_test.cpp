#include <gtest/gtest.h>

#include <array>

#include "common/acccom.h"
#include "common/faults.h"
#include "common/heap_block.h"
#include "common/kanji.h"
#include "tests/common/bytes.h"
#include "tests/common/sjis_reference.h"

namespace {

bool is_lead_byte(int byte) {
    return (0x81 <= byte && byte <= 0x9F) || (0xE0 <= byte && byte <= 0xFC);
}
bool is_katakana(int byte) {
    return 0xA1 <= byte && byte <= 0xDF;
}

Bytes expected_euc(const Bytes &sjis) {
    Bytes euc;
    for (std::size_t i = 0; i < sjis.size(); ++i) {
        const int byte = static_cast<unsigned char>(sjis[i]);
        const bool last = i + 1 == sjis.size();
        if (is_lead_byte(byte)) {
            if (last) break;
            const int trail = static_cast<unsigned char>(sjis[++i]);
            const auto [row, cell] = sjis_reference().cell_of(byte, trail);
            euc += static_cast<char>((row + 0x21) | 0x80);
            euc += static_cast<char>((cell + 0x21) | 0x80);
        } else if (is_katakana(byte)) {
            euc += '\x8E';
            euc += static_cast<char>(byte);
        } else if (byte == '\r') {
            if (last) break;
            euc += sjis[++i];
        } else {
            euc += static_cast<char>(byte);
        }
    }
    return euc;
}

Bytes expected_sjis(const Bytes &euc) {
    Bytes sjis;
    for (std::size_t i = 0; i < euc.size(); ++i) {
        const int byte = static_cast<unsigned char>(euc[i]);
        const bool last = i + 1 == euc.size();
        if (0xA1 <= byte && byte <= 0xFE) {
            if (last) break;
            const int second = static_cast<unsigned char>(euc[++i]) & 0x7F;
            const int code = sjis_reference().code_of(byte - 0xA1, second - 0x21);
            sjis += static_cast<char>(code / 256);
            sjis += static_cast<char>(code % 256);
        } else if (byte == 0x8E) {
            if (last) break;
            sjis += euc[++i];
        } else if (byte == '\n') {
            sjis += "\r\n";
        } else {
            sjis += static_cast<char>(byte);
        }
    }
    return sjis;
}

Bytes converted(unsigned char *(*convert)(const unsigned char *), GuardedMemory &memory, const Bytes &text) {
    const acc::HeapBlock<unsigned char> result(convert(memory.text(text)));
    return text_of(result.get());
}

TEST(Codes, every_pair_of_bytes_converts_as_counted_out) {
    GuardedMemory memory;
    for (int code = 0; code < 65536; ++code) {
        Bytes pair{static_cast<char>(code / 256), static_cast<char>(code % 256)};
        pair = pair.c_str(); // up to a NUL
        ASSERT_EQ(hex(converted(CM_sjis2euc, memory, pair)), hex(expected_euc(pair))) << code;
        ASSERT_EQ(hex(converted(CM_euc2sjis, memory, pair)), hex(expected_sjis(pair))) << code;
    }
}

TEST(Codes, text_both_ways) {
    struct Case {
        const char *name;
        Bytes sjis, euc, back;
    };
    for (const Case &c : {
             Case{"kana", "\x82\xA0", "\xA4\xA2", "\x82\xA0"},
             {"half-width katakana", "\xB1", "\x8E\xB1", "\xB1"},
             {"CR LF", "a\r\nb", "a\nb", "a\r\nb"},
             {"LF alone", "a\nb", "a\nb", "a\r\nb"},
             {"lead byte behind CR stands alone", "\r\x82\x41", "\x82\x41", "\x82\x41"},
             {"CR at the end", "a\r", "a", "a"},
             {"lead byte at the end", "a\x82", "a", "a"},
             {"JIS X 0212 shift", "\x8F\x9F", "\xBE\xA1", "\x8F\x9F"},
             {"empty", "", "", ""},
         }) {
        GuardedMemory memory;
        EXPECT_EQ(hex(converted(CM_sjis2euc, memory, c.sjis)), hex(c.euc)) << c.name;
        EXPECT_EQ(hex(converted(CM_euc2sjis, memory, c.euc)), hex(c.back)) << c.name;
    }
    GuardedMemory memory;
    EXPECT_EQ(hex(converted(CM_euc2sjis, memory, "\x8F\xA4\xA2\xA4")), hex("\x8F\x82\xA0"));
}

TEST(Codes, no_text_and_no_memory_give_null) {
    unsigned char bytes_out[4];
    unsigned short elements_out[4];
    EXPECT_EQ(CM_sjis2euc(nullptr), nullptr);
    EXPECT_EQ(CM_euc2sjis(nullptr), nullptr);
    EXPECT_EQ(CM_ShiftjisToJis(bytes_out, nullptr), 0);
    EXPECT_EQ(CM_ShiftjisToUshortEuc(elements_out, nullptr), 0);

    acc::set_fault_hook([](acc::Operation operation) { return operation == acc::Operation::heap; });
    EXPECT_EQ(CM_sjis2euc(u("a")), nullptr);
    EXPECT_EQ(CM_euc2sjis(u("a")), nullptr);
    EXPECT_EQ(CM_ShiftjisToJis(bytes_out, u("a")), 0);
    EXPECT_EQ(CM_ShiftjisToUshortEuc(elements_out, u("a")), 0);
    acc::set_fault_hook(nullptr);
}

TEST(Codes, classes_of_bytes) {
    const auto between = [](int byte, int first, int last) { return first <= byte && byte <= last; };
    EXPECT_EQ(___kanjitbl[0], 0);
    for (int byte = 0; byte < 256; ++byte) {
        const int expected = (is_lead_byte(byte) ? 1 : 0) | (between(byte, 0x40, 0x7E) || between(byte, 0x80, 0xFC) ? 2 : 0) |
                             (between(byte, 0xA1, 0xFE) ? 4 : 0) | (is_katakana(byte) ? 8 : 0);
        EXPECT_EQ(___kanjitbl[byte + 1], expected) << byte;
    }
}

TEST(Codes, jis_bytes) {
    struct Case {
        const char *name;
        Bytes euc, jis;
        int characters;
    };
    for (const Case &c : {
             Case{"ASCII and kana", "A\xA4\xA2", "A$\"", 2},
             {"katakana keeps its high bit", "\x8E\xB1z", "\xB1z", 2},
             {"JIS X 0212 shift is a first byte", "\x8F\xA4\xA2\xA1", "\x0F$\"!", 2},
             {"first byte at the end", "A\xA4", "A", 1},
             {"katakana shift at the end", "A\x8E", "A", 1},
         }) {
        GuardedMemory in;
        GuardedMemory out;
        unsigned char *const jis = out.block(c.jis.size());
        EXPECT_EQ(CM_euc2jis(jis, in.text(c.euc)), c.characters) << c.name;
        EXPECT_EQ(hex(Bytes(jis, jis + c.jis.size())), hex(c.jis)) << c.name;
    }
    GuardedMemory out;
    unsigned char *const jis = out.block(4);
    EXPECT_EQ(CM_ShiftjisToJis(jis, u("\r\n\x82\xA0\xB1")), 3);
    EXPECT_EQ(hex(Bytes(jis, jis + 4)), hex("\n$\"\xB1"));
}

TEST(Codes, elements_of_two_bytes) {
    std::array<unsigned short, 3> out{};
    out.fill(0xEEEE);
    EXPECT_EQ(CM_ShiftjisToUshortEuc(out.data(), u("ab")), 1);
    EXPECT_EQ(out, (std::array<unsigned short, 3>{0x6261, 0xEEEE, 0xEEEE}));
    EXPECT_EQ(CM_ShiftjisToUshortEuc(out.data(), u("a\x82\xA0")), 2);
    EXPECT_EQ(out, (std::array<unsigned short, 3>{0xA461, 0x00A2, 0xEEEE}));
}

TEST(Codes, compound_text) {
    struct Case {
        const char *name;
        std::array<unsigned short, 5> codes;
        short maximum;
        Bytes text;
    };
    for (const Case &c : {
             Case{"all sets",
                  {0x41, 0xA4A2, 0xB1, 0x41, 0},
                  9,
                  "\x1B(JA\x1B$)B\xA4\xA2\x1B)I\xB1"
                  "A"},
             {"maximum", {0x41, 0xA4A2, 0xB1, 0x41, 0}, 1, "\x1B(JA"},
             {"maximum of 0", {0x41, 0}, 0, ""},
             {"negative maximum", {0x41, 0}, -1, ""},
             {"control characters", {0x1F, 0x09, 0x0D, 0x0A, 0}, 9, "\t\n"},
             {"dropped ones count", {0x01, 0x09, 0x0A, 0}, 2, "\t"},
             {"borders", {0x20, 0x7F, 0x80, 0xFF, 0}, 9, "\x1B(J \x7F\x1B)I\x80\xFF"},
             {"kanji borders and back", {0x100, 0xFF, 0xFFFF, 0x21, 0}, 9, bytes("\x1B$)B\x01\x00\x1B)I\xFF\x1B$)B\xFF\xFF\x1B(J!")},
         }) {
        GuardedMemory memory;
        unsigned char *const out = memory.block(c.text.size() + 1);
        EXPECT_EQ(CM_EUC_To_CompoundText(out, c.codes.data(), c.maximum), c.text.size()) << c.name;
        EXPECT_EQ(hex(Bytes(out, out + c.text.size() + 1)), hex(c.text + '\0')) << c.name;
    }
}

TEST(Codes, numbers_of_a_character) {
    struct Case {
        unsigned short sjis;
        const char *jis, *kuten;
    };
    for (const Case &c : {
             Case{0x8140, "2121", "0101"},
             {0x889F, "3021", "1601"},
             {0x82A0, "2422", "0402"},
             {0xEAA4, "7426", "8406"},
             {0x817F, "0000", "0164"},
             {0x4141, "0000", "12901"},
             {0x8040, "0000", "25500"},
             {0xA040, "0000", "19100"},
             {0xDF40, "0000", "6101"},
             {0xF240, "8321", "9901"},
             {0xF29F, "8421", "10001"},
             {0xFC9F, "9821", "12001"},
         }) {
        unsigned char out[8];
        EXPECT_EQ(CM_SjisToJis(c.sjis, out), 4);
        EXPECT_EQ(text_of(out), c.jis) << c.sjis;
        EXPECT_EQ(CM_SjisToKuten(c.sjis, out), static_cast<int>(Bytes(c.kuten).size()));
        EXPECT_EQ(text_of(out), c.kuten) << c.sjis;
    }
    for (const auto &[code, cell] : sjis_reference().cells) {
        if (cell.first >= 94) continue;
        unsigned char out[8];
        char expected[8];
        std::snprintf(expected, sizeof expected, "%02X%02X", static_cast<unsigned char>(cell.first + 0x21),
                      static_cast<unsigned char>(cell.second + 0x21));
        CM_SjisToJis(static_cast<unsigned short>(code), out);
        ASSERT_EQ(text_of(out), expected) << code;
        std::snprintf(expected, sizeof expected, "%02d%02d", static_cast<unsigned char>(cell.first + 1),
                      static_cast<unsigned char>(cell.second + 1));
        CM_SjisToKuten(static_cast<unsigned short>(code), out);
        ASSERT_EQ(text_of(out), expected) << code;
    }
}

} // namespace
