/*
 * sjis_literal.h - Shift_JIS constants written as readable text; the compiler converts.
 */
#ifndef ACCSYM_COMMON_SJIS_LITERAL_H
#define ACCSYM_COMMON_SJIS_LITERAL_H

#include <cstddef>
#include <span>

#include "common/jisx0208.h"
#include "common/sjis_arithmetic.h"

namespace acc {

/** Shift_JIS text of N bytes and a NUL. */
template <std::size_t N>
struct SjisText {
    unsigned char bytes[N + 1];

    /** The text with its NUL. */
    constexpr const unsigned char *data() const { return bytes; }

    /** Bytes without the NUL. */
    static constexpr std::size_t size() { return N; }

    /** The bytes without the NUL. */
    constexpr std::span<const unsigned char, N> span() const {
        return std::span<const unsigned char, N>(bytes, N);
    }
};

/** A string literal as a template argument; its characters are UTF-8. */
template <std::size_t N>
struct Utf8Literal {
    char text[N];

    consteval Utf8Literal(const char (&literal)[N]) {
        for (std::size_t i = 0; i < N; ++i) text[i] = literal[i];
    }
};

/** Has no constexpr definition on purpose: calling it is the compile error. */
void character_is_not_in_jisx0208();

/** Code point at text[at], which moves past it. */
constexpr char32_t next_code_point(const char *text, std::size_t &at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) return lead;
    char32_t value = lead & (lead < 0xE0 ? 0x1F : lead < 0xF0 ? 0x0F : 0x07);
    while ((static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) {
        value = value << 6 | (static_cast<unsigned char>(text[at++]) & 0x3F);
    }
    return value;
}

/** Shift_JIS code, lead byte in the high half, of a character of the table. */
constexpr unsigned short sjis_code(char32_t character) {
    for (unsigned index = 0; index < m_usUnicode.size(); ++index) {
        if (m_usUnicode[index] != character) continue;
        return sjis_pair(index / jisx0208_side + 0x21, index % jisx0208_side + 0x21);
    }
    character_is_not_in_jisx0208();
    return 0;
}

/** Bytes of a literal's Shift_JIS form: 1 for ASCII, 2 for anything else. */
template <std::size_t N>
constexpr std::size_t sjis_size(const Utf8Literal<N> &literal) {
    std::size_t size = 0;
    for (std::size_t at = 0; at < N - 1;) size += next_code_point(literal.text, at) < 0x80 ? 1 : 2;
    return size;
}

/**
 * The Shift_JIS form of a literal; ASCII passes through, and a character outside
 * JIS X 0208 does not compile.
 *
 * inline constexpr auto m_ucSymHeader = acc::sjis<"〈記号〉">();
 */
template <Utf8Literal literal>
consteval auto sjis() {
    SjisText<sjis_size(literal)> result{};
    std::size_t size = 0;
    for (std::size_t at = 0; at < sizeof literal.text - 1;) {
        const char32_t character = next_code_point(literal.text, at);
        if (character < 0x80) {
            result.bytes[size++] = static_cast<unsigned char>(character);
        } else {
            const unsigned code = sjis_code(character);
            result.bytes[size++] = static_cast<unsigned char>(code >> 8);
            result.bytes[size++] = static_cast<unsigned char>(code & 0xFF);
        }
    }
    return result;
}

} // namespace acc

#endif
