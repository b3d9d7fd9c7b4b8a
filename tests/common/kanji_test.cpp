#include "common/kanji.h"

#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "common/acccom.h"
#include "common/faults.h"
#include "common/heap_block.h"
#include "tests/common/bytes.h"
#include "tests/common/sjis_reference.h"

namespace {

bool between(int byte, int first, int last) {
    return first <= byte && byte <= last;
}
bool is_lead_byte(int byte) {
    return between(byte, 0x81, 0x9F) || between(byte, 0xE0, 0xFC);
}

/** A byte and the one after it, which may be the NUL, from Shift_JIS to EUC-JP; sets how many it took. */
Bytes expected_euc(int byte, int next, std::size_t &taken) {
    taken = is_lead_byte(byte) || byte == '\r' ? 2 : 1;
    if (taken == 2 && next == 0) return "";
    if (byte == '\r') return {static_cast<char>(next)};
    if (between(byte, 0xA1, 0xDF)) return pair(0x8E, byte);
    if (!is_lead_byte(byte)) return {static_cast<char>(byte)};
    const auto [row, cell] = sjis_reference().cell_of(byte, next);
    return pair((row + 0x21) | 0x80, (cell + 0x21) | 0x80);
}

/** The other way. */
Bytes expected_sjis(int byte, int next, std::size_t &taken) {
    const bool is_first = between(byte, 0xA1, 0xFE);
    taken = is_first || byte == 0x8E ? 2 : 1;
    if (taken == 2 && next == 0) return "";
    if (byte == 0x8E) return {static_cast<char>(next)};
    if (byte == '\n') return "\r\n";
    if (!is_first) return {static_cast<char>(byte)};
    const int code = sjis_reference().code_of(byte - 0xA1, (next & 0x7F) - 0x21);
    return pair(code / 256, code % 256);
}

/** All of a text by one of these. */
Bytes expected(Bytes (*convert)(int, int, std::size_t &), const unsigned char *text) {
    Bytes result;
    for (std::size_t taken = 0; *text != 0; text += text[1] == 0 ? 1 : taken) result += convert(text[0], text[1], taken);
    return result;
}

Bytes converted(unsigned char *(*convert)(const unsigned char *), const unsigned char *text) {
    return text_of(acc::HeapBlock<unsigned char>(convert(text)).get());
}

TEST(Codes, every_pair_of_bytes_converts_as_counted_out) {
    GuardedMemory memory;
    for (int code = 0; code < 65536; ++code) {
        const unsigned char *const text = memory.text(pair(code / 256, code % 256).c_str()); // up to a NUL
        ASSERT_EQ(hex(converted(CM_sjis2euc, text)), hex(expected(expected_euc, text))) << code;
        ASSERT_EQ(hex(converted(CM_euc2sjis, text)), hex(expected(expected_sjis, text))) << code;
    }
}

TEST(Codes, text_both_ways) {
    EXPECT_EQ(hex(converted(CM_sjis2euc, u("A\x82\xA0\xB1\r\n\x8F\x9F."))), hex("A\xA4\xA2\x8E\xB1\n\xBE\xA1."));
    EXPECT_EQ(hex(converted(CM_sjis2euc, u("\r\x82\x41"))), hex("\x82\x41")) << "a lead byte behind CR stands alone";
    EXPECT_EQ(hex(converted(CM_euc2sjis, u("A\xA4\xA2\x8E\xB1\n\xBE\xA1."))), hex("A\x82\xA0\xB1\r\n\x8F\x9F."));
    EXPECT_EQ(hex(converted(CM_euc2sjis, u("\x8F\xA4\xA2\xA4"))), hex("\x8F\x82\xA0"));
}

TEST(Codes, no_text_and_no_memory_give_null) {
    unsigned char bytes_out[4];
    unsigned short elements_out[4];
    for (const unsigned char *const text : {static_cast<const unsigned char *>(nullptr), u("a")}) {
        EXPECT_EQ(CM_sjis2euc(text), nullptr);
        EXPECT_EQ(CM_euc2sjis(text), nullptr);
        EXPECT_EQ(CM_ShiftjisToJis(bytes_out, text), 0);
        EXPECT_EQ(CM_ShiftjisToUshortEuc(elements_out, text), 0);
        acc::set_fault_hook([](acc::Operation operation) { return operation == acc::Operation::heap; });
    }
    acc::set_fault_hook(nullptr);
}

TEST(Codes, classes_of_bytes) {
    EXPECT_EQ(___kanjitbl[0], 0);
    for (int byte = 0; byte < 256; ++byte) {
        const int expected = (is_lead_byte(byte) ? 1 : 0) | (between(byte, 0x40, 0x7E) || between(byte, 0x80, 0xFC) ? 2 : 0) |
                             (between(byte, 0xA1, 0xFE) ? 4 : 0) | (between(byte, 0xA1, 0xDF) ? 8 : 0);
        EXPECT_EQ(___kanjitbl[byte + 1], expected) << byte;
    }
}

TEST(Codes, jis_bytes) {
    using Convert = unsigned short(unsigned char *, const unsigned char *);
    using Case = std::tuple<const char *, Convert *, Bytes, Bytes, int>;
    for (const auto &[name, convert, text, jis, characters] : {
             Case{"katakana keeps its high bit", CM_euc2jis, "A\xA4\xA2\x8E\xB1z", "A$\"\xB1z", 4},
             {"JIS X 0212 shift is a first byte", CM_euc2jis, "\x8F\xA4\xA2\xA1", "\x0F$\"!", 2},
             {"first byte at the end", CM_euc2jis, "A\xA4", "A", 1},
             {"katakana shift at the end", CM_euc2jis, "A\x8E", "A", 1},
             {"Shift_JIS", CM_ShiftjisToJis, "\r\n\x82\xA0\xB1", "\n$\"\xB1", 3},
         }) {
        GuardedMemory in;
        GuardedMemory out;
        unsigned char *const destination = out.block(jis.size());
        EXPECT_EQ(convert(destination, in.text(text)), characters) << name;
        EXPECT_EQ(hex(Bytes(destination, destination + jis.size())), hex(jis)) << name;
    }
}

TEST(Codes, elements_of_two_bytes) {
    std::array<unsigned short, 3> out{0xEEEE, 0xEEEE, 0xEEEE};
    EXPECT_EQ(CM_ShiftjisToUshortEuc(out.data(), u("ab")), 1);
    EXPECT_EQ(out, (std::array<unsigned short, 3>{0x6261, 0xEEEE, 0xEEEE}));
    EXPECT_EQ(CM_ShiftjisToUshortEuc(out.data(), u("a\x82\xA0")), 2);
    EXPECT_EQ(out, (std::array<unsigned short, 3>{0xA461, 0x00A2, 0xEEEE}));
}

TEST(Codes, compound_text) {
    using Case = std::tuple<const char *, std::array<unsigned short, 5>, short, Bytes>;
    for (const auto &[name, codes, maximum, text] : {
             Case{"all sets", {0x41, 0xA4A2, 0xB1, 0x41}, 9, "\x1B(JA\x1B$)B\xA4\xA2\x1B)I\261A"},
             {"maximum", {0x41, 0xA4A2}, 1, "\x1B(JA"},
             {"negative maximum", {0x41}, -1, ""},
             {"control characters", {0x1F, 0x09, 0x0D, 0x0A}, 9, "\t\n"},
             {"dropped ones count", {0x01, 0x09, 0x0A}, 2, "\t"},
             {"borders", {0x20, 0x7F, 0x80, 0xFF}, 9, "\x1B(J \x7F\x1B)I\x80\xFF"},
             {"kanji borders and back", {0x100, 0xFF, 0xFFFF, 0x21}, 9, "\x1B$)B\x01\x00\x1B)I\xFF\x1B$)B\xFF\xFF\x1B(J!"s},
         }) {
        GuardedMemory memory;
        unsigned char *const out = memory.block(text.size() + 1);
        EXPECT_EQ(CM_EUC_To_CompoundText(out, codes.data(), maximum), text.size()) << name;
        EXPECT_EQ(hex(Bytes(out, out + text.size() + 1)), hex(text + '\0')) << name;
    }
}

/** Both numbers, separated by a blank. */
std::string numbers(int code) {
    unsigned char jis[8], kuten[8];
    EXPECT_EQ(CM_SjisToJis(static_cast<unsigned short>(code), jis), 4);
    const int length = CM_SjisToKuten(static_cast<unsigned short>(code), kuten);
    EXPECT_EQ(length, CM_strlen(kuten));
    return text_of(jis) + " " + text_of(kuten);
}

TEST(Codes, numbers_of_a_character) {
    for (const auto &[code, cell] : sjis_reference().cells) {
        const auto [row, column] = cell;
        if (row >= 94) break;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%02X%02X %02d%02d", static_cast<unsigned>(row) + 0x21U,
                      static_cast<unsigned>(column) + 0x21U, row + 1, column + 1);
        ASSERT_EQ(numbers(code), expected) << code;
    }
    // Codes that are no character.
    EXPECT_EQ(numbers(0x817F), "0000 0164");
    EXPECT_EQ(numbers(0x4141), "0000 12901");
    EXPECT_EQ(numbers(0x8040), "0000 25500");
    EXPECT_EQ(numbers(0xA040), "0000 19100");
    EXPECT_EQ(numbers(0xDF40), "0000 6101");
    EXPECT_EQ(numbers(0xF240), "8321 9901");
    EXPECT_EQ(numbers(0xF29F), "8421 10001");
}

} // namespace
