/*
 * text_conversion_sse41.cpp - the conversions in vectors of 16 bytes. Compiled with -msse4.1.
 */
#include "common/text_conversion.h"

#ifdef ACC_VECTOR_CONVERSIONS
#include <smmintrin.h>

#include "common/text_conversion_blocks.h"

namespace acc {
namespace {

/** 16 bytes; a test gives bytes of all ones or zeros. */
struct Vector {
    static constexpr std::size_t size = 16;
    __m128i value;

    static Vector load(const unsigned char *from) {
        return {_mm_loadu_si128(reinterpret_cast<const __m128i *>(from))};
    }
    void store(unsigned char *to) const {
        _mm_storeu_si128(reinterpret_cast<__m128i *>(to), value);
    }
    static Vector all(unsigned char byte) { return {_mm_set1_epi8(static_cast<char>(byte))}; }
    /** Bytes of ones for the lowest bits that are set. */
    static Vector spread(std::uint64_t bits) {
        const __m128i bytes = _mm_shuffle_epi8(_mm_set1_epi16(static_cast<short>(bits)),
                                               _mm_set_epi64x(0x0101010101010101, 0));
        const __m128i bit = _mm_set1_epi64x(static_cast<long long>(0x8040201008040201));
        return {_mm_cmpeq_epi8(_mm_and_si128(bytes, bit), bit)};
    }
    /** The highest bit of each byte. */
    std::uint32_t bits() const { return static_cast<std::uint32_t>(_mm_movemask_epi8(value)); }

    Vector operator+(Vector other) const { return {_mm_add_epi8(value, other.value)}; }
    Vector operator-(Vector other) const { return {_mm_sub_epi8(value, other.value)}; }
    Vector operator&(Vector other) const { return {_mm_and_si128(value, other.value)}; }
    Vector operator|(Vector other) const { return {_mm_or_si128(value, other.value)}; }
    Vector operator^(Vector other) const { return {_mm_xor_si128(value, other.value)}; }
    Vector operator==(Vector other) const { return {_mm_cmpeq_epi8(value, other.value)}; }
    /** Without a sign. */
    Vector at_most(unsigned char most) const {
        return {_mm_cmpeq_epi8(_mm_min_epu8(value, all(most).value), value)};
    }
    /** For bytes below 0x80. */
    Vector above(unsigned char least) const { return {_mm_cmpgt_epi8(value, all(least).value)}; }
    /** The lowest bit of each byte as its highest; the others are of no use. */
    Vector lowest_as_highest() const { return {_mm_slli_epi16(value, 7)}; }
    /** Half of each byte, rounded up. */
    Vector half_up() const { return {_mm_avg_epu8(value, _mm_setzero_si128())}; }
    /** Bytes of one vector where the highest bit is set here, of the other elsewhere. */
    Vector choose(Vector then, Vector otherwise) const {
        return {_mm_blendv_epi8(otherwise.value, then.value, value)};
    }
};

} // namespace

constinit const TextConversion sse41_conversion{"SSE4.1", convert<Vector, EucToSjis>,
                                                convert<Vector, SjisToEuc>};

} // namespace acc
#endif
