/*
 * acccom_unicode.cpp - the exported conversions between Shift_JIS and Unicode units.
 */
#include <algorithm>

#include "common/acccom.h"
#include "common/jisx0208.h"
#include "common/sjis_arithmetic.h"
#include "common/unicode.h"

namespace {

constexpr unsigned short geta_mark = 0x3013;

/** The 16-bit code at source[at], high byte first; a missing last byte counts as 0. */
unsigned short code_at(const unsigned char *source, unsigned at, unsigned source_bytes) {
    const int low = at + 1 < source_bytes ? source[at + 1] : 0;
    return static_cast<unsigned short>(source[at] << 8 | low);
}

} // namespace

unsigned short SjisToUniCode(unsigned short sjis) {
    if (sjis < 0x8000 || (sjis >= 0xA000 && sjis <= 0xDFFF)) return sjis;
    const acc::JisPair jis = acc::jis_pair(static_cast<unsigned char>(sjis >> 8),
                                           static_cast<unsigned char>(sjis & 0xFF));
    // As bytes: a row or cell below 0 wraps to one beyond the table.
    const auto row = static_cast<unsigned char>(jis.row - 0x21);
    const auto cell = static_cast<unsigned char>(jis.cell - 0x21);
    if (row >= acc::jisx0208_side || cell >= acc::jisx0208_side) return geta_mark;
    const unsigned short unicode = m_usUnicode.data()[row * acc::jisx0208_side + cell];
    return unicode != 0 ? unicode : geta_mark;
}

unsigned short UniCodeToSjis(unsigned short unicode) {
    short row = 0;
    short cell = 0;
    if (unicode < 0x100 || UniCodeSearch(unicode, &row, &cell) == 0) return unicode;
    const unsigned sjis =
        acc::sjis_pair(static_cast<unsigned>(row) + 0x21, static_cast<unsigned>(cell) + 0x21);
    return static_cast<unsigned short>(sjis << 8 | sjis >> 8);
}

int UniCodeSearch(unsigned short unicode, short *row, short *cell) {
    const auto place = std::find(m_usUnicode.begin(), m_usUnicode.end(), unicode);
    const bool found = place != m_usUnicode.end();
    const auto index = found ? static_cast<unsigned>(place - m_usUnicode.begin()) : 0;
    *row = static_cast<short>(index / acc::jisx0208_side);
    *cell = static_cast<short>(index % acc::jisx0208_side);
    return found ? 1 : 0;
}

int CM_SjisToUnicode(unsigned char *destination, unsigned short, const unsigned char *source,
                     unsigned short source_bytes) {
    unsigned at = 0;
    for (; at < source_bytes; at += 2) {
        const unsigned short unicode = SjisToUniCode(code_at(source, at, source_bytes));
        if (unicode < 0x100) continue;
        *destination++ = static_cast<unsigned char>(unicode >> 8);
        *destination++ = static_cast<unsigned char>(unicode & 0xFF);
    }
    *destination = 0;
    return static_cast<short>(at);
}

int CM_UnicodeToSjis(unsigned char *destination, unsigned short, const unsigned char *source,
                     unsigned short source_bytes) {
    unsigned at = 0;
    for (; at < source_bytes; at += 2) {
        const unsigned short sjis = UniCodeToSjis(code_at(source, at, source_bytes));
        if (sjis < 0x100) continue;
        *destination++ = static_cast<unsigned char>(sjis & 0xFF);
        *destination++ = static_cast<unsigned char>(sjis >> 8);
    }
    *destination = 0;
    return static_cast<short>(at);
}
