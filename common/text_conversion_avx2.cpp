/*
 * text_conversion_avx2.cpp - the conversions in vectors of 32 bytes. Compiled with -mavx2.
 */
#include "common/text_conversion.h"

#ifdef ACC_VECTOR_CONVERSIONS
#include <immintrin.h>

#include "common/text_conversion_blocks.h"

namespace acc {
namespace {

/** 32 bytes; a test gives bytes of all ones or zeros. */
struct Vector {
    static constexpr std::size_t size = 32;
    __m256i value;

    static Vector load(const unsigned char *from) {
        return {_mm256_loadu_si256(reinterpret_cast<const __m256i *>(from))};
    }
    void store(unsigned char *to) const {
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(to), value);
    }
    static Vector all(unsigned char byte) { return {_mm256_set1_epi8(static_cast<char>(byte))}; }
    /** Bytes of ones for the lowest bits that are set. */
    static Vector spread(std::uint64_t bits) {
        const __m256i bytes = _mm256_shuffle_epi8(
            _mm256_set1_epi32(static_cast<int>(bits)),
            _mm256_setr_epi64x(0, 0x0101010101010101, 0x0202020202020202, 0x0303030303030303));
        const __m256i bit = _mm256_set1_epi64x(static_cast<long long>(0x8040201008040201));
        return {_mm256_cmpeq_epi8(_mm256_and_si256(bytes, bit), bit)};
    }
    /** The highest bit of each byte. */
    std::uint32_t bits() const { return static_cast<std::uint32_t>(_mm256_movemask_epi8(value)); }

    Vector operator+(Vector other) const { return {_mm256_add_epi8(value, other.value)}; }
    Vector operator-(Vector other) const { return {_mm256_sub_epi8(value, other.value)}; }
    Vector operator&(Vector other) const { return {_mm256_and_si256(value, other.value)}; }
    Vector operator|(Vector other) const { return {_mm256_or_si256(value, other.value)}; }
    Vector operator^(Vector other) const { return {_mm256_xor_si256(value, other.value)}; }
    Vector operator==(Vector other) const { return {_mm256_cmpeq_epi8(value, other.value)}; }
    /** Without a sign. */
    Vector at_most(unsigned char most) const {
        return {_mm256_cmpeq_epi8(_mm256_min_epu8(value, all(most).value), value)};
    }
    /** For bytes below 0x80. */
    Vector above(unsigned char least) const { return {_mm256_cmpgt_epi8(value, all(least).value)}; }
    /** The lowest bit of each byte as its highest; the others are of no use. */
    Vector lowest_as_highest() const { return {_mm256_slli_epi16(value, 7)}; }
    /** Half of each byte, rounded up. */
    Vector half_up() const { return {_mm256_avg_epu8(value, _mm256_setzero_si256())}; }
    /** Bytes of one vector where the highest bit is set here, of the other elsewhere. */
    Vector choose(Vector then, Vector otherwise) const {
        return {_mm256_blendv_epi8(otherwise.value, then.value, value)};
    }
};

} // namespace

constinit const TextConversion avx2_conversion{"AVX2", convert<Vector, EucToSjis>,
                                               convert<Vector, SjisToEuc>};

} // namespace acc
#endif
