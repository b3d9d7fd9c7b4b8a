// Japanese codes against a second implementation, slow and of its own.
#include <map>

#include "common/acccom.h"
#include "common/heap_block.h"
#include "common/jisx0208.h"
#include "common/sjis_text.h"
#include "common/unicode.h"
#include "support/faults.h"
#include "tests/common/bytes.h"

namespace {

bool between(int byte, int first, int last) {
    return first <= byte && byte <= last;
}
bool is_lead_byte(int byte) {
    return between(byte, 0x81, 0x9F) || between(byte, 0xE0, 0xFC);
}
bool is_trail_byte(int byte) {
    return between(byte, 0x40, 0x7E) || between(byte, 0x80, 0xFC);
}

/** Shift_JIS codes with valid bytes, in order: the 188 of a lead byte are two rows of 94 cells. */
const std::vector<int> codes = [] {
    std::vector<int> all;
    for (int code = 0; code < 65536; ++code)
        if (is_lead_byte(code / 256) && is_trail_byte(code % 256)) all.push_back(code);
    return all;
}();

/** Row and cell, both from 0; the cells of invalid trail bytes lie before, between and behind the valid. */
std::pair<int, int> cell_of(int lead, int trail) {
    const int valid = std::clamp(trail, 0x40, 0xFC);
    const auto index = static_cast<int>(std::lower_bound(codes.begin(), codes.end(), lead * 256 + valid) - codes.begin());
    return {index / 94, index % 94 + trail - valid};
}

/** The other way, also for cells before and behind the 94 of a row. */
int code_of(int row, int cell) {
    const int valid = std::clamp(cell, 0, 93);
    return codes[static_cast<std::size_t>(row * 94 + valid)] + cell - valid;
}

/** Shift_JIS to EUC-JP. */
Bytes expected_euc(const unsigned char *text) {
    if (*text == 0) return "";
    const int byte = *text++;
    if (between(byte, 0xA1, 0xDF)) return pair(0x8E, byte) + expected_euc(text);
    if (!is_lead_byte(byte) && byte != '\r') return static_cast<char>(byte) + expected_euc(text);
    if (*text == 0) return "";
    if (byte == '\r') return static_cast<char>(*text) + expected_euc(text + 1);
    const auto [row, cell] = cell_of(byte, *text);
    return pair((row + 0x21) | 0x80, (cell + 0x21) | 0x80) + expected_euc(text + 1);
}

/** The other way. */
Bytes expected_sjis(const unsigned char *text) {
    if (*text == 0) return "";
    const int byte = *text++;
    if (byte == '\n') return "\r\n" + expected_sjis(text);
    if (!between(byte, 0xA1, 0xFE) && byte != 0x8E) return static_cast<char>(byte) + expected_sjis(text);
    if (*text == 0) return "";
    if (byte == 0x8E) return static_cast<char>(*text) + expected_sjis(text + 1);
    const int code = code_of(byte - 0xA1, (*text & 0x7F) - 0x21);
    return pair(code / 256, code % 256) + expected_sjis(text + 1);
}

Bytes converted(unsigned char *(*convert)(const unsigned char *), const unsigned char *in) {
    return text(acc::HeapBlock<unsigned char>(convert(in)).get());
}

TEST(Codes, every_pair_of_bytes_converts_as_counted_out) {
    GuardedMemory memory;
    for (int code = 0; code < 65536; ++code) {
        const unsigned char *const in = memory.copy(pair(code / 256, code % 256).c_str() + "\0"s); // up to a NUL
        ASSERT_EQ(converted(CM_sjis2euc, in), expected_euc(in)) << code;
        ASSERT_EQ(converted(CM_euc2sjis, in), expected_sjis(in)) << code;
    }
    const Bytes sjis = "A\x82\xA0\xB1\r\n\x8F\x9F.", euc = "A\xA4\xA2\x8E\xB1\n\xBE\xA1.";
    EXPECT_EQ(converted(CM_sjis2euc, bytes(sjis)), euc);
    EXPECT_EQ(converted(CM_euc2sjis, bytes(euc)), sjis);
}

TEST(Codes, no_text_and_no_memory_give_null) {
    const Bytes a = "a";
    Fault no_memory(1, true);
    for (const unsigned char *const in : {static_cast<const unsigned char *>(nullptr), bytes(a)}) {
        EXPECT_EQ(CM_sjis2euc(in), nullptr);
        EXPECT_EQ(CM_euc2sjis(in), nullptr);
        EXPECT_EQ(CM_ShiftjisToJis(nullptr, in), 0);
        EXPECT_EQ(CM_ShiftjisToUshortEuc(nullptr, in), 0);
        no_memory.arm();
    }
}

TEST(Codes, classes_of_bytes) {
    EXPECT_EQ(___kanjitbl[0], 0);
    for (int byte = 0; byte < 256; ++byte) {
        const int euc = between(byte, 0xA1, 0xFE), katakana = between(byte, 0xA1, 0xDF);
        EXPECT_EQ(acc::is_lead(static_cast<unsigned char>(byte)), is_lead_byte(byte)) << byte;
        EXPECT_EQ(___kanjitbl[byte + 1], is_lead_byte(byte) + 2 * is_trail_byte(byte) + 4 * euc + 8 * katakana) << byte;
    }
}

TEST(Codes, jis_bytes_elements_of_two_bytes_and_compound_text) {
    const auto elements = [](unsigned char *out, const unsigned char *in) {
        return CM_ShiftjisToUshortEuc(reinterpret_cast<unsigned short *>(out), in);
    };
    static constexpr unsigned short borders[] = {0x20, 0x7F, 0x80, 0xFF, 0x100, 0xFF, 0xFFFF, 0x21, 0};
    static constexpr unsigned short controls[] = {0x1F, '\t', '\r', '\n', 'A', 0};
    expect({
        {"katakana keeps its high bit", CM_euc2jis, "A\xA4\xA2\x8E\xB1z", "A$\"\xB1z", 4},
        {"JIS X 0212 shift is a first byte", CM_euc2jis, "\x8F\xA4\xA2\xA1", "\x0F$\"!", 2},
        {"first byte at the end", CM_euc2jis, "A\xA4", "A", 1},
        {"katakana shift at the end", CM_euc2jis, "A\x8E", "A", 1},
        {"Shift_JIS", CM_ShiftjisToJis, "\r\n\x82\xA0\xB1", "\n$\"\xB1", 3},
        {"whole elements", elements, "ab", "ab", 1},
        {"half an element", elements, "a\x82\xA0", "a\xA4\xA2\0"s, 2},
        {"borders", [](auto *out, auto *) { return CM_EUC_To_CompoundText(out, borders, 99); }, "",
         "\x1B(J \x7F\x1B)I\x80\xFF\x1B$)B\x01\x00\x1B)I\xFF\x1B$)B\xFF\xFF!\0"s, 27},
        {"dropped ones count", [](auto *out, auto *) { return CM_EUC_To_CompoundText(out, controls, 4); }, "", "\t\n\0"s, 2},
        {"negative maximum", [](auto *out, auto *) { return CM_EUC_To_CompoundText(out, controls, -1); }, "", "\0"s, 0},
    });
}

/** Both numbers, separated by a blank. */
std::string numbers(int code) {
    unsigned char jis[8], kuten[8];
    EXPECT_EQ(CM_SjisToJis(static_cast<unsigned short>(code), jis), 4);
    const int length = CM_SjisToKuten(static_cast<unsigned short>(code), kuten);
    EXPECT_EQ(length, CM_strlen(kuten));
    return text(jis) + " " + text(kuten);
}

TEST(Codes, numbers_of_a_character) {
    for (unsigned index = 0; index < 94 * 94; ++index) {
        const unsigned row = index / 94, cell = index % 94;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%02X%02X %02u%02u", row + 0x21, cell + 0x21, row + 1, cell + 1);
        ASSERT_EQ(numbers(codes[index]), expected);
    }
    const std::pair<int, const char *> no_characters[] = {{0x817F, "0000 0164"},  {0x4141, "0000 12901"}, {0x8040, "0000 25500"},
                                                          {0xA040, "0000 19100"}, {0xDF40, "0000 6101"},  {0xF240, "8321 9901"},
                                                          {0xF29F, "8421 10001"}};
    for (const auto &[code, expected] : no_characters) EXPECT_EQ(numbers(code), expected) << code;
}

int expected_unicode(int sjis) {
    const int lead = sjis / 256;
    if (lead < 0x80 || between(lead, 0xA0, 0xDF)) return sjis;
    if (lead == 0x80 || lead >= 0xF0) return 0x3013;
    const auto [row, cell] = cell_of(lead, sjis % 256);
    const int unicode = between(cell, 0, 93) ? m_usUnicode[static_cast<std::size_t>(row * 94 + cell)] : 0;
    return unicode != 0 ? unicode : 0x3013;
}

/** Converts between exactly sized buffers and checks result and NUL. */
Bytes converted(decltype(CM_SjisToUnicode) convert, const Bytes &source) {
    static GuardedMemory in, out;
    const std::size_t even_size = (source.size() + 1) / 2 * 2;
    unsigned char *const destination = out.copy(Bytes(even_size + 1, '\xEE'));
    EXPECT_EQ(convert(destination, 0, in.copy(source), static_cast<unsigned short>(source.size())), static_cast<int>(even_size));
    const Bytes all(destination, destination + even_size + 1);
    return all.substr(0, all.rfind('\0')); // what lies behind the NUL is untouched
}

TEST(Unicode, every_code_converts_both_ways_as_counted_out) {
    std::map<int, int> sjis_of;
    for (const int code : codes)
        if (expected_unicode(code) != 0x3013 || code == 0x81AC) sjis_of.emplace(expected_unicode(code), code);
    for (int code = 0; code < 65536; ++code) {
        const int unicode = expected_unicode(code);
        ASSERT_EQ(SjisToUniCode(static_cast<unsigned short>(code)), unicode) << code;
        const Bytes source = pair(code / 256, code % 256);
        ASSERT_EQ(converted(CM_SjisToUnicode, source), unicode < 0x100 ? "" : pair(unicode / 256, unicode % 256)) << code;

        const auto found = code < 0x100 ? sjis_of.end() : sjis_of.find(code);
        const Bytes sjis = found != sjis_of.end() ? pair(found->second / 256, found->second % 256) : pair(code % 256, code / 256);
        ASSERT_EQ(UniCodeToSjis(static_cast<unsigned short>(code)), bytes(sjis)[0] + bytes(sjis)[1] * 256) << code;
        ASSERT_EQ(converted(CM_UnicodeToSjis, source), code < 0x100 ? "" : sjis) << code;
    }
}

TEST(Unicode, text_of_other_than_one_character) {
    EXPECT_EQ(converted(CM_SjisToUnicode, "\x81\x7E\x82\xA0\xB1\xB2Z"), "\x30\x42\xB1\xB2Z\0"s) << "U+00D7 vanishes";
    EXPECT_EQ(converted(CM_UnicodeToSjis, "\0A\x4E\x9C\x20\xAC\x30"s), "\x88\x9F\xAC\x20\x81\x40") << "ASCII vanishes";
    const Bytes source(65535, 'A');
    Bytes out(65537, '.');
    auto *const destination = reinterpret_cast<unsigned char *>(out.data());
    EXPECT_EQ(CM_UnicodeToSjis(destination, 0, bytes(source), 32768), -32768) << "cut to 16 bits";
    EXPECT_EQ(CM_SjisToUnicode(destination, 0, bytes(source), 65535), 0);
    EXPECT_EQ(out, source + "\0\0"s);
}

TEST(Unicode, table_agrees_with_the_platform) {
    EXPECT_EQ(std::count(m_usUnicode.begin(), m_usUnicode.end(), 0), 94 * 94 - 6879);
    EXPECT_EQ(m_usUnicode[31], '\\'); // where the platform has the full-width one
    for (int index = 0; index < 94 * 94; ++index) {
        const int unicode = m_usUnicode[static_cast<std::size_t>(index)], low = 0x80 | (unicode & 0x3F), middle = unicode >> 6;
        if (unicode == 0 || index == 31) continue;
        const Bytes utf8 =
            middle < 0x20 ? pair(0xC0 | middle, low) : pair(0xE0 | middle >> 6, 0x80 | (middle & 0x3F)) + static_cast<char>(low);
        EXPECT_EQ(to_euc(utf8), pair(index / 94 + 0xA1, index % 94 + 0xA1)) << index;
    }
}

} // namespace
