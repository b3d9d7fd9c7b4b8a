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
    EXPECT_NE(all.find('\0'), Bytes::npos);
    return all.substr(0, all.rfind('\0'));
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
        const Bytes source = pair(code / 256, code % 256);
        ASSERT_EQ(hex(converted(CM_SjisToUnicode, source)), hex(unicode < 0x100 ? "" : pair(unicode / 256, unicode % 256))) << code;

        const auto found = code < 0x100 ? sjis_of.end() : sjis_of.find(code);
        const bool known = found != sjis_of.end();
        const Bytes sjis = known ? pair(found->second / 256, found->second % 256) : pair(code % 256, code / 256);
        ASSERT_EQ(UniCodeToSjis(static_cast<unsigned short>(code)), u(sjis)[0] + u(sjis)[1] * 256) << code;
        ASSERT_EQ(hex(converted(CM_UnicodeToSjis, source)), hex(code < 0x100 ? "" : sjis)) << code;
    }
}

TEST(Unicode, text_of_other_than_one_character) {
    EXPECT_EQ(hex(converted(CM_SjisToUnicode, "")), "");
    EXPECT_EQ(hex(converted(CM_SjisToUnicode, "\x81\x7E\x82\xA0\xB1\xB2")), hex("\x30\x42\xB1\xB2")) << "U+00D7 vanishes";
    EXPECT_EQ(hex(converted(CM_SjisToUnicode, "ABC")), hex("ABC\0"s));
    EXPECT_EQ(hex(converted(CM_UnicodeToSjis, "")), "");
    EXPECT_EQ(hex(converted(CM_UnicodeToSjis, "\0A\x4E\x9C\x20\xAC"s)), hex("\x88\x9F\xAC\x20")) << "ASCII vanishes";
    EXPECT_EQ(hex(converted(CM_UnicodeToSjis, "\x30\x42\x30")), hex("\x82\xA0\x81\x40"s));

    const Bytes source(65535, 'A');
    Bytes out(65537, '.');
    auto *const destination = reinterpret_cast<unsigned char *>(out.data());
    EXPECT_EQ(CM_UnicodeToSjis(destination, 0, u(source), 32768), -32768) << "cut to 16 bits";
    EXPECT_EQ(CM_SjisToUnicode(destination, 0, u(source), 65535), 0);
    EXPECT_EQ(out, source + "\0\0"s);
}

TEST(Unicode, search_answers_no_place_and_the_place_of_0) {
    short at[2] = {9, 9};
    EXPECT_EQ(UniCodeSearch(0x20AC, &at[0], &at[1]), 0);
    EXPECT_EQ(at[0] * 94 + at[1], 0);
    EXPECT_EQ(UniCodeSearch(0, &at[0], &at[1]), 1);
    EXPECT_EQ(at[0] * 94 + at[1], 1 * 94 + 14);
}

TEST(Unicode, table_agrees_with_the_platform) {
    EXPECT_EQ(std::count(m_usUnicode.begin(), m_usUnicode.end(), 0), 94 * 94 - 6879);
    const iconv_t converter = iconv_open("UCS-2BE", "EUC-JP");
    if (converter == iconv_t(-1)) GTEST_SKIP() << "no EUC-JP on this platform";
    std::map<int, int> differences; // from the number of a cell to the platform's character
    for (int index = 0; index < 94 * 94; ++index) {
        Bytes euc = pair(index / 94 + 0xA1, index % 94 + 0xA1);
        unsigned char out[2] = {};
        char *in_next = euc.data();
        char *out_next = reinterpret_cast<char *>(out);
        std::size_t in_left = 2;
        std::size_t out_left = 2;
        const bool valid = iconv(converter, &in_next, &in_left, &out_next, &out_left) == 0;
        const int platform = valid ? out[0] * 256 + out[1] : 0;
        if (m_usUnicode[static_cast<std::size_t>(index)] != platform) differences[index] = platform;
    }
    iconv_close(converter);
    // The reverse solidus, 1-32, which the platform takes for the full-width one.
    EXPECT_EQ(differences, (std::map<int, int>{{31, 0xFF3C}}));
    EXPECT_EQ(m_usUnicode[31], 0x5C);
}

} // namespace
