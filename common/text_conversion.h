/*
 * text_conversion.h - Shift_JIS and EUC-JP text into each other, at the level of vector code
 * that the machine has. All levels give the same, also of text that is neither.
 */
#ifndef ACCSYM_COMMON_TEXT_CONVERSION_H
#define ACCSYM_COMMON_TEXT_CONVERSION_H

#include <cstddef>

namespace acc {

/** EUC-JP byte before a half-width katakana. */
inline constexpr unsigned char katakana_shift = 0x8E;

/**
 * Converts a text up to its NUL, which is not written. Nothing behind the NUL is read.
 * @param text    of that length, a NUL behind it
 * @param result  room for twice the length; nothing is written behind what is returned
 * @return        the end of the result
 */
using ConvertText = unsigned char *(*)(const unsigned char *text, std::size_t length,
                                       unsigned char *result);

struct TextConversion {
    const char *level; /**< "portable", "SSE4.1", "AVX2" */
    ConvertText euc_to_sjis, sjis_to_euc;
};

/** The levels that this machine has, the best one first. */
struct TextConversions {
    static constexpr std::size_t most = 3;
    TextConversion levels[most];
    std::size_t count;
};
TextConversions text_conversions();

/** The best level, chosen when the library is loaded. */
const TextConversion &text_conversion();

extern const TextConversion portable_conversion;
#if defined(__x86_64__) || defined(__i386__)
#define ACC_VECTOR_CONVERSIONS 1
extern const TextConversion sse41_conversion, avx2_conversion;
#endif

} // namespace acc

#endif
