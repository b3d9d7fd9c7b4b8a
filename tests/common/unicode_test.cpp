#include "common/unicode.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <algorithm>
#include <map>

#include "common/acccom.h"
#include "common/jisx0208.h"
#include "tests/common/bytes.h"
#include "tests/common/sjis_reference.h"

namespace {

unsigned short expected_unicode(int sjis) {
    const int lead = sjis / 256;
    if (lead < 0x80 || (lead >= 0xA0 && lead <= 0xDF)) return static_cast<unsigned short>(sjis);
    if (lead == 0x80 || lead >= 0xF0) return 0x3013;
    const auto [row, cell] = sjis_reference().cell_of(lead, sjis % 256);
    if (cell < 0 || cell > 93) return 0x3013;
    const unsigned short unicode = m_usUnicode[static_cast<std::size_t>(row * 94 + cell)];
    return unicode != 0 ? unicode : 0x3013;
}

Bytes big_endian(int code) {
    return {static_cast<char>(code / 256), static_cast<char>(code % 256)};
}

using Conversion = int(unsigned char *, unsigned short, const unsigned char *, unsigned short);

/** Converts between exactly sized buffers and checks result and NUL. */
Bytes converted(Conversion convert, const Bytes &source) {
    static GuardedMemory in;
    static GuardedMemory out;
    const std::size_t even_size = (source.size() + 1) / 2 * 2;
    unsigned char *const destination = out.block(even_size + 1);
    EXPECT_EQ(convert(destination, 0, in.copy(source), static_cast<unsigned short>(source.size())), static_cast<int>(even_size));
    // What lies behind the NUL is untouched, so the last NUL ends the result.
    const Bytes all(destination, destination + even_size + 1);
    const std::size_t end = all.find_last_of('\0');
    EXPECT_NE(end, Bytes::npos);
    return all.substr(0, end);
}

TEST(Unicode, every_code_converts_both_ways_as_counted_out) {
    std::map<int, int> sjis_of;
    for (const auto &[code, cell] : sjis_reference().cells) {
        const unsigned short unicode = expected_unicode(code);
        if (unicode != 0x3013 || code == 0x81AC) sjis_of.emplace(unicode, code);
    }
    for (int code = 0; code < 65536; ++code) {
        const unsigned short unicode = expected_unicode(code);
        ASSERT_EQ(SjisToUniCode(static_cast<unsigned short>(code)), unicode) << code;
        ASSERT_EQ(hex(converted(CM_SjisToUnicode, big_endian(code))), hex(unicode < 0x100 ? "" : big_endian(unicode))) << code;

        const auto found = code < 0x100 ? sjis_of.end() : sjis_of.find(code);
        const bool known = found != sjis_of.end();
        const int swapped = code % 256 * 256 + code / 256;
        const int sjis = known ? found->second : swapped;
        ASSERT_EQ(UniCodeToSjis(static_cast<unsigned short>(code)), known ? sjis % 256 * 256 + sjis / 256 : code) << code;
        ASSERT_EQ(hex(converted(CM_UnicodeToSjis, big_endian(code))), hex(code < 0x100 ? "" : big_endian(sjis))) << code;
    }
}

TEST(Unicode, text) {
    struct Case {
        const char *name;
        Conversion *convert;
        Bytes source, result;
    };
    for (const Case &c : {
             Case{"kana", CM_SjisToUnicode, "\x82\xA0", "\x30\x42"},
             {"wave dash", CM_SjisToUnicode, "\x81\x60", "\x30\x1C"},
             {"multiplication sign vanishes", CM_SjisToUnicode, "\x81\x7E\x82\xA0", "\x30\x42"},
             {"ASCII pair", CM_SjisToUnicode, "AB", "AB"},
             {"odd length", CM_SjisToUnicode, "ABC", bytes("ABC\0")},
             {"katakana pair", CM_SjisToUnicode, "\xB1\xB2", "\xB1\xB2"},
             {"empty row", CM_SjisToUnicode, "\x85\x40", "\x30\x13"},
             {"lead byte beyond the table", CM_SjisToUnicode, "\xF0\x40", "\x30\x13"},
             {"trail byte too low", CM_SjisToUnicode, "\x88\x20", "\x30\x13"},
             {"vendor rows", CM_SjisToUnicode, "\x87\x40\xED\x40", "\x30\x13\x30\x13"},
             {"nothing", CM_SjisToUnicode, "", ""},
             {"kana", CM_UnicodeToSjis, "\x30\x42", "\x82\xA0"},
             {"geta mark", CM_UnicodeToSjis, "\x30\x13", "\x81\xAC"},
             {"ASCII vanishes", CM_UnicodeToSjis, bytes("\0A\x4E\x9C"), "\x88\x9F"},
             {"not in the table", CM_UnicodeToSjis, "\x20\xAC\xFF\x5E", "\xAC\x20\x5E\xFF"},
             {"last cell", CM_UnicodeToSjis, "\x71\x99", "\xEA\xA4"},
             {"odd length", CM_UnicodeToSjis, "\x30\x42\x30", bytes("\x82\xA0\x81\x40")},
             {"ASCII pair comes back swapped", CM_UnicodeToSjis, "AB", "BA"},
             {"nothing", CM_UnicodeToSjis, "", ""},
         }) {
        EXPECT_EQ(hex(converted(c.convert, c.source)), hex(c.result)) << c.name;
    }
}

TEST(Unicode, result_is_cut_to_16_bits) {
    const Bytes source(65535, 'A');
    Bytes out(65537, '\0');
    auto *const destination = reinterpret_cast<unsigned char *>(out.data());
    EXPECT_EQ(CM_SjisToUnicode(destination, 0, u(source), 65535), 0);
    EXPECT_EQ(out, source + bytes("\0\0"));
    EXPECT_EQ(CM_UnicodeToSjis(destination, 0, u(source), 32768), -32768);
}

TEST(Unicode, search_answers_row_and_cell) {
    short row = 9;
    short cell = 9;
    EXPECT_EQ(UniCodeSearch(0x7199, &row, &cell), 1);
    EXPECT_EQ(row * 94 + cell, 83 * 94 + 5);
    EXPECT_EQ(UniCodeSearch(0x20AC, &row, &cell), 0);
    EXPECT_EQ(row * 94 + cell, 0 * 94 + 0);
    EXPECT_EQ(UniCodeSearch(0, &row, &cell), 1);
    EXPECT_EQ(row * 94 + cell, 1 * 94 + 14);
}

TEST(Unicode, table_agrees_with_the_platform) {
    EXPECT_EQ(std::count(m_usUnicode.begin(), m_usUnicode.end(), 0), 94 * 94 - 6879);
    const iconv_t converter = iconv_open("UCS-4BE", "EUC-JP");
    if (converter == iconv_t(-1)) GTEST_SKIP() << "no EUC-JP on this platform";
    std::map<std::pair<int, int>, unsigned> differences;
    for (int row = 0; row < 94; ++row) {
        for (int cell = 0; cell < 94; ++cell) {
            char euc[] = {static_cast<char>(row + 0xA1), static_cast<char>(cell + 0xA1)};
            unsigned char out[4] = {};
            char *in_next = euc;
            char *out_next = reinterpret_cast<char *>(out);
            std::size_t in_left = sizeof euc;
            std::size_t out_left = sizeof out;
            iconv(converter, nullptr, nullptr, nullptr, nullptr);
            const bool valid = iconv(converter, &in_next, &in_left, &out_next, &out_left) == 0;
            const unsigned platform = valid ? static_cast<unsigned>(out[0] << 24 | out[1] << 16 | out[2] << 8 | out[3]) : 0;
            if (m_usUnicode[static_cast<std::size_t>(row * 94 + cell)] != platform) {
                differences[{row + 1, cell + 1}] = platform;
            }
        }
    }
    iconv_close(converter);
    // The reverse solidus, which the platform takes for the full-width one.
    const std::map<std::pair<int, int>, unsigned> known{{{1, 32}, 0xFF3C}};
    EXPECT_EQ(differences, known);
    EXPECT_EQ(m_usUnicode[31], 0x5C);
}

} // namespace
