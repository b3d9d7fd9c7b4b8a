/*
 * acccom_unicode.cpp - the exported conversions between Shift_JIS and Unicode units.
 */
#include <array>

#include "common/acccom.h"
#include "common/jisx0208.h"
#include "common/sjis_arithmetic.h"
#include "common/unicode.h"
#include "common/unicode_tables.h"

namespace {

/** Unicode of a Shift_JIS code, lead byte in the high half. */
constexpr unsigned short reckoned_unicode(unsigned sjis) {
    constexpr unsigned short geta_mark = 0x3013;
    if (sjis < 0x8000 || (sjis >= 0xA000 && sjis <= 0xDFFF))
        return static_cast<unsigned short>(sjis);
    const acc::JisPair jis =
        acc::jis_pair(static_cast<unsigned char>(sjis >> 8), static_cast<unsigned char>(sjis));
    // As bytes: a row or cell below 0 wraps to one beyond the table.
    const auto row = static_cast<unsigned char>(jis.row - 0x21);
    const auto cell = static_cast<unsigned char>(jis.cell - 0x21);
    if (row >= acc::jisx0208_side || cell >= acc::jisx0208_side) return geta_mark;
    const unsigned short unicode = m_usUnicode[row * acc::jisx0208_side + cell];
    return unicode != 0 ? unicode : geta_mark;
}

/** Shift_JIS codes, lead byte in the LOW half, by their Unicode values; the value itself elsewhere.
 */
consteval std::array<unsigned short, 0x10000> reckoned_sjis() {
    std::array<unsigned short, 0x10000> codes{};
    for (unsigned unicode = 0; unicode < codes.size(); ++unicode) {
        codes[unicode] = static_cast<unsigned short>(unicode);
    }
    for (unsigned place = 0; place < m_usUnicode.size(); ++place) {
        if (m_usUnicode[place] < 0x100) continue;
        const unsigned sjis =
            acc::sjis_pair(place / acc::jisx0208_side + 0x21, place % acc::jisx0208_side + 0x21);
        codes[m_usUnicode[place]] = static_cast<unsigned short>(sjis << 8 | sjis >> 8);
    }
    return codes;
}

/** All codes, which the tables are made of by the compiler. */
constexpr std::array<unsigned short, 0x10000> all_sjis = reckoned_sjis();

constexpr acc::PagedCodes<65> unicode_of_sjis(reckoned_unicode);
constexpr acc::PagedCodes<100> sjis_of_unicode([](unsigned unicode) { return all_sjis[unicode]; });
static_assert(unicode_of_sjis.used() <= 65 && sjis_of_unicode.used() <= 100);

/**
 * Converts codes of two bytes, the high half first; a missing last byte counts as 0.
 * @param value  of a code; one below 0x100 is left out
 * @param first  where the value has its first byte: bits to shift by, 8 or 0
 * @return       bytes taken, as 16 bits with a sign
 */
template <class Value>
int convert(unsigned char *destination, const unsigned char *source, unsigned source_bytes,
            Value value, unsigned first) {
    const auto add = [&](unsigned code) {
        const unsigned converted = value(static_cast<unsigned short>(code));
        if (converted < 0x100) return;
        destination[0] = static_cast<unsigned char>(converted >> first);
        destination[1] = static_cast<unsigned char>(converted >> (8 - first));
        destination += 2;
    };
    unsigned at = 0;
    for (; at + 1 < source_bytes; at += 2) {
        add(static_cast<unsigned>(source[at]) << 8 | source[at + 1]);
    }
    if (at < source_bytes) {
        add(static_cast<unsigned>(source[at]) << 8);
        at += 2;
    }
    *destination = 0;
    return static_cast<short>(at);
}

} // namespace

unsigned short SjisToUniCode(unsigned short sjis) {
    return unicode_of_sjis[sjis];
}

unsigned short UniCodeToSjis(unsigned short unicode) {
    return sjis_of_unicode[unicode];
}

int CM_SjisToUnicode(unsigned char *destination, unsigned short, const unsigned char *source,
                     unsigned short source_bytes) {
    return convert(
        destination, source, source_bytes, [](unsigned short sjis) { return SjisToUniCode(sjis); },
        8);
}

int CM_UnicodeToSjis(unsigned char *destination, unsigned short, const unsigned char *source,
                     unsigned short source_bytes) {
    return convert(
        destination, source, source_bytes,
        [](unsigned short unicode) { return UniCodeToSjis(unicode); }, 0);
}
