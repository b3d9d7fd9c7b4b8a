/*
 * text_conversion.cpp - see text_conversion.h; the portable level, one character at a time.
 */
#include "common/text_conversion.h"

#include "common/acccom.h"
#include "common/sjis_arithmetic.h"

namespace acc {
namespace {

constexpr unsigned char lead_flag = 0x01, euc_flag = 0x04, katakana_flag = 0x08;

bool has_class(unsigned char byte, unsigned char flag) {
    return (___kanjitbl[byte + 1] & flag) != 0;
}

unsigned char *euc_to_sjis(const unsigned char *text, std::size_t length, unsigned char *result) {
    const unsigned char *const end = text + length;
    while (text != end) {
        const unsigned char byte = *text++;
        if (has_class(byte, euc_flag)) {
            if (text == end) break;
            const unsigned short sjis = sjis_pair(byte & 0x7F, *text++ & 0x7F);
            *result++ = static_cast<unsigned char>(sjis >> 8);
            *result++ = static_cast<unsigned char>(sjis & 0xFF);
        } else if (byte == katakana_shift) {
            if (text == end) break;
            *result++ = *text++;
        } else if (byte == '\n') {
            *result++ = '\r';
            *result++ = '\n';
        } else {
            *result++ = byte;
        }
    }
    return result;
}

unsigned char *sjis_to_euc(const unsigned char *text, std::size_t length, unsigned char *result) {
    const unsigned char *const end = text + length;
    while (text != end) {
        const unsigned char byte = *text++;
        if (has_class(byte, lead_flag)) {
            if (text == end) break;
            const JisPair jis = jis_pair(byte, *text++);
            *result++ = static_cast<unsigned char>(jis.row | 0x80);
            *result++ = static_cast<unsigned char>(jis.cell | 0x80);
        } else if (has_class(byte, katakana_flag)) {
            *result++ = katakana_shift;
            *result++ = byte;
        } else if (byte == '\r') {
            if (text == end) break;
            *result++ = *text++;
        } else {
            *result++ = byte;
        }
    }
    return result;
}

constinit TextConversion chosen{"portable", euc_to_sjis, sjis_to_euc};

/** When the library is loaded. */
__attribute__((constructor)) void choose() {
    chosen = text_conversions().levels[0];
}

} // namespace

constinit const TextConversion portable_conversion{"portable", euc_to_sjis, sjis_to_euc};

TextConversions text_conversions() {
    TextConversions all{};
#ifdef ACC_VECTOR_CONVERSIONS
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2")) all.levels[all.count++] = avx2_conversion;
    if (__builtin_cpu_supports("sse4.1")) all.levels[all.count++] = sse41_conversion;
#endif
    all.levels[all.count++] = portable_conversion;
    return all;
}

const TextConversion &text_conversion() {
    return chosen;
}

} // namespace acc
