/*
 * text_conversion_blocks.h - the conversions in blocks of 64 bytes, for vectors of any width.
 *
 * Of a block, masks of 64 bits tell which bytes begin a character of two and which end one; a run
 * of bytes that can begin one is taken by twos from its start, so that is exact for any text. Row
 * and cell are reckoned for all bytes and put where they belong. What changes the length - line
 * ends, half-width katakana - stays as it is in a piece of some kilobytes and is noted by its
 * place; from the piece the result is then copied, run by run.
 *
 * This is included by one source for each level, which is compiled for that level alone. So
 * everything here is that source's own, and no function of a header may be called that the linker
 * could share with other sources.
 */
#ifndef ACCSYM_COMMON_TEXT_CONVERSION_BLOCKS_H
#define ACCSYM_COMMON_TEXT_CONVERSION_BLOCKS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace acc {
namespace {

inline constexpr std::size_t block = 64;
inline constexpr std::size_t piece = 64 * block;

/** What one block hands on to the next. */
struct Carry {
    bool second = false;  /**< its first byte ends a character */
    bool of_lead = false; /**< and that is one of row and cell */
};

/** Of a block, which bytes are what. */
struct BlockMasks {
    std::uint64_t first, second; /**< of characters of two bytes with row and cell */
    std::uint64_t special;       /**< change the length */
    std::uint64_t begins, ends;  /**< take the byte behind along, and are taken, also if dropped */
};

/**
 * Which bytes begin a character of two.
 * @param takes  bytes that take the one behind along unless that one before takes them
 */
inline std::uint64_t beginnings(std::uint64_t takes) {
    constexpr std::uint64_t even = 0x5555555555555555;
    const std::uint64_t starts = takes & ~(takes << 1);
    // Adding the start of a run clears the run.
    const std::uint64_t even_runs = takes & ~(takes + (starts & even));
    return (even_runs & even) | (takes & ~even_runs & ~even);
}

/** The masks behind the beginnings of a block. @param lead  those of takes with row and cell */
inline BlockMasks masks_of(std::uint64_t takes, std::uint64_t lead, Carry &carry) {
    const std::uint64_t carried = carry.second ? 1 : 0, carried_lead = carry.of_lead ? 1 : 0;
    BlockMasks masks{};
    masks.begins = beginnings(takes & ~carried);
    masks.ends = masks.begins << 1 | carried;
    masks.first = masks.begins & lead;
    masks.second = masks.first << 1 | carried_lead;
    carry.second = masks.begins >> 63 != 0;
    carry.of_lead = masks.first >> 63 != 0;
    return masks;
}

/** Bytes of all vectors of a block that a test holds for, as bits. */
template <class V, class Test>
inline std::uint64_t where(const V *vectors, Test test) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < block / V::size; ++i) {
        bits |= static_cast<std::uint64_t>(test(vectors[i]).bits()) << (i * V::size);
    }
    return bits;
}

template <class V>
struct EucToSjis {
    static BlockMasks transform(const unsigned char *text, unsigned char *result, Carry &carry) {
        constexpr std::size_t count = block / V::size;
        V bytes[count];
        for (std::size_t i = 0; i < count; ++i) bytes[i] = V::load(text + i * V::size);
        const auto is = [](unsigned char value) {
            return [value](V one) { return one == V::all(value); };
        };
        const std::uint64_t lead =
            where(bytes, [](V one) { return (one - V::all(0xA1)).at_most(0xFE - 0xA1); });
        const std::uint64_t shift = where(bytes, is(katakana_shift));
        BlockMasks masks = masks_of(lead | shift, lead, carry);
        masks.special = (masks.begins & shift) | (where(bytes, is('\n')) & ~masks.ends);
        for (std::size_t i = 0; i < count; ++i) {
            const V seven = bytes[i] & V::all(0x7F);
            // What a comparison gives is -1 where it holds.
            const V lead_byte = seven.half_up() + V::all(0x70) + (seven.above(0x5E) & V::all(0x40));
            const V of_odd = seven + V::all(0x1F) - seven.above(0x5F);
            const V odd_row = V::load(text + i * V::size - 1).lowest_as_highest();
            const V trail_byte = odd_row.choose(of_odd, seven + V::all(0x7E));
            const V first = V::spread(masks.first >> (i * V::size));
            const V second = V::spread(masks.second >> (i * V::size));
            second.choose(trail_byte, first.choose(lead_byte, bytes[i]))
                .store(result + i * V::size);
        }
        return masks;
    }

    /** Writes what a special byte becomes. */
    static unsigned char *write_special(unsigned char byte, unsigned char *out) {
        if (byte != '\n') return out;
        *out++ = '\r';
        *out++ = '\n';
        return out;
    }
};

template <class V>
struct SjisToEuc {
    static BlockMasks transform(const unsigned char *text, unsigned char *result, Carry &carry) {
        constexpr std::size_t count = block / V::size;
        V bytes[count];
        for (std::size_t i = 0; i < count; ++i) bytes[i] = V::load(text + i * V::size);
        const std::uint64_t katakana =
            where(bytes, [](V one) { return (one - V::all(0xA1)).at_most(0xDF - 0xA1); });
        const std::uint64_t lead = where(bytes, [](V one) {
            // 0x81 to 0x9F and 0xE0 to 0xFC are one run when a bit is turned.
            return ((one ^ V::all(0x20)) - V::all(0xA1)).at_most(0xDC - 0xA1);
        });
        const std::uint64_t dropped = where(bytes, [](V one) { return one == V::all('\r'); });
        BlockMasks masks = masks_of(lead | dropped, lead, carry);
        masks.special = (masks.begins & dropped) | (katakana & ~masks.ends);
        for (std::size_t i = 0; i < count; ++i) {
            const V one = bytes[i];
            const V row = one + one - V::all(0x61) - (one.at_most(0x9F) & V::all(0x80)) +
                          V::all(1) + V::load(text + i * V::size + 1).at_most(0x9E);
            const V low = one - V::all(0x20) - one.at_most(0x7F);
            const V cell = one.at_most(0x9E).choose(low, one - V::all(0x7E));
            const V high = V::all(0x80);
            const V first = V::spread(masks.first >> (i * V::size));
            const V second = V::spread(masks.second >> (i * V::size));
            second.choose(cell | high, first.choose(row | high, one)).store(result + i * V::size);
        }
        return masks;
    }

    static unsigned char *write_special(unsigned char byte, unsigned char *out) {
        if (byte == '\r') return out;
        *out++ = katakana_shift;
        *out++ = byte;
        return out;
    }
};

/** Copies a run. @param roomy  bytes behind it may be overwritten */
template <class V>
inline void copy_run(unsigned char *to, const unsigned char *from, std::size_t size, bool roomy) {
    if (!roomy) {
        std::memcpy(to, from, size);
        return;
    }
    for (std::size_t i = 0; i < size; i += V::size) V::load(from + i).store(to + i);
}

template <class V, template <class> class Direction>
unsigned char *convert(const unsigned char *text, std::size_t length, unsigned char *out) {
    unsigned char transformed[piece + block]; // what is loaded behind a run is never used
    std::uint16_t specials[piece];
    Carry carry;
    for (std::size_t done = 0; done < length;) {
        const std::size_t rest = length - done, size = rest < piece ? rest : piece;
        std::size_t count = 0, end = size;
        for (std::size_t at = 0; at < size; at += block) {
            const std::size_t place = done + at, whole = rest - at;
            unsigned char copy[block + 2] = {}; // a byte before and one behind may be looked at
            const unsigned char *source = text + place;
            if (place == 0 || whole < block) {
                if (place != 0) copy[0] = source[-1];
                std::memcpy(copy + 1, source, whole < block ? whole : block);
                if (whole >= block) copy[block + 1] = source[block];
                source = copy + 1;
            }
            const BlockMasks masks = Direction<V>::transform(source, transformed + at, carry);
            // The end of a text takes a character with it that lacks its second byte.
            if (whole <= block && masks.begins >> (whole - 1) & 1) --end;
            for (std::uint64_t left = masks.special; left != 0; left &= left - 1) {
                specials[count++] = static_cast<std::uint16_t>(
                    at + static_cast<std::size_t>(__builtin_ctzll(left)));
            }
        }
        const bool roomy = rest - size >= 2 * block; // of which at least half is written behind
        std::size_t from = 0;
        for (std::size_t i = 0; i < count; ++i) {
            copy_run<V>(out, transformed + from, specials[i] - from, roomy);
            out = Direction<V>::write_special(transformed[specials[i]], out + (specials[i] - from));
            from = specials[i] + std::size_t{1};
        }
        if (from < end) {
            copy_run<V>(out, transformed + from, end - from, roomy);
            out += end - from;
        }
        done += size;
    }
    return out;
}

} // namespace
} // namespace acc

#endif
