/*
 * acccom_kanji.cpp - the exported conversions between Shift_JIS, EUC-JP, JIS and Compound
 * Text.
 *
 * Every walk takes a first byte together with the byte after it, and ends when that one is
 * the NUL: nothing behind the NUL is read.
 */
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "common/acccom.h"
#include "common/heap_block.h"
#include "common/kanji.h"
#include "common/sjis_arithmetic.h"
#include "common/text_conversion.h"

// clang-format off
extern const unsigned char ___kanjitbl[257] = {
    0, // end of file
     0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0, // 0x00
     0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0, // 0x10
     0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0, // 0x20
     0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0, // 0x30
     2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2, // 0x40
     2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2, // 0x50
     2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2, // 0x60
     2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  2,  0, // 0x70
     2,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3, // 0x80
     3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3,  3, // 0x90
     2, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, // 0xA0
    14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, // 0xB0
    14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, // 0xC0
    14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, 14, // 0xD0
     7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7, // 0xE0
     7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  4,  4,  0, // 0xF0
};
// clang-format on

namespace {

constexpr std::size_t shortest_for_vectors = 32;

/** The conversion in a zero-filled block that holds that of any text as long as this one. */
unsigned char *converted(const unsigned char *text, acc::ConvertText acc::TextConversion::*way) {
    if (text == nullptr) return nullptr;
    const std::size_t length = std::strlen(reinterpret_cast<const char *>(text));
    if (length >= UINT_MAX / 2) return nullptr;
    auto *const result =
        static_cast<unsigned char *>(CM_malloc(static_cast<unsigned int>((length + 1) * 2)));
    const bool is_short = length < shortest_for_vectors;
    const acc::TextConversion &level = is_short ? acc::portable_conversion : acc::text_conversion();
    if (result != nullptr) (level.*way)(text, length, result);
    return result;
}

/** The same code with its halves exchanged. */
constexpr unsigned short swap_halves(unsigned short code) {
    return static_cast<unsigned short>(code << 8 | code >> 8);
}

/** Prints into a buffer whose size only the caller knows. */
template <typename... Numbers>
int print(unsigned char *destination, const char *format, Numbers... numbers) {
    return std::sprintf(reinterpret_cast<char *>(destination), format, numbers...);
}

} // namespace

unsigned short sjis2jis(unsigned short sjis) {
    const acc::JisPair jis = acc::jis_pair(static_cast<unsigned char>(sjis & 0xFF),
                                           static_cast<unsigned char>(sjis >> 8));
    return static_cast<unsigned short>(jis.cell * 256 + jis.row);
}

unsigned short Ascii2Short(unsigned short *destination, const unsigned char *text) {
    unsigned int count = 0;
    for (; text[0] != 0; text += 2) {
        destination[count++] = static_cast<unsigned short>(text[0] | text[1] << 8);
    }
    return static_cast<unsigned short>(count);
}

unsigned char *CM_sjis2euc(const unsigned char *sjis) {
    return converted(sjis, &acc::TextConversion::sjis_to_euc);
}

unsigned char *CM_euc2sjis(const unsigned char *euc) {
    return converted(euc, &acc::TextConversion::euc_to_sjis);
}

unsigned short CM_euc2jis(unsigned char *destination, const unsigned char *euc) {
    unsigned int count = 0;
    while (*euc != 0) {
        const unsigned char byte = *euc++;
        if (byte < 0x80) {
            *destination++ = byte;
        } else {
            if (*euc == 0) break;
            const unsigned char second = *euc++;
            if (byte == acc::katakana_shift) {
                *destination++ = second;
            } else {
                *destination++ = byte & 0x7F;
                *destination++ = second & 0x7F;
            }
        }
        ++count;
    }
    return static_cast<unsigned short>(count);
}

unsigned short CM_ShiftjisToJis(unsigned char *destination, const unsigned char *sjis) {
    const acc::HeapBlock<unsigned char> euc(CM_sjis2euc(sjis));
    return euc ? CM_euc2jis(destination, euc.get()) : 0;
}

unsigned short CM_ShiftjisToUshortEuc(unsigned short *destination, const unsigned char *sjis) {
    const acc::HeapBlock<unsigned char> euc(CM_sjis2euc(sjis));
    return euc ? Ascii2Short(destination, euc.get()) : 0;
}

unsigned short CM_EUC_To_CompoundText(unsigned char *destination, const unsigned short *codes,
                                      short maximum) {
    enum class Designation { none, roman, katakana, kanji };
    Designation g0 = Designation::none;
    Designation g1 = Designation::none;
    unsigned char *out = destination;
    const auto designate = [&out](Designation &current, Designation wanted, const char *escape) {
        if (current == wanted) return;
        current = wanted;
        for (; *escape != 0; ++escape) *out++ = static_cast<unsigned char>(*escape);
    };

    for (short converted = 0; converted < maximum && codes[converted] != 0; ++converted) {
        const unsigned short code = codes[converted];
        if (code < 0x20) {
            if (code != '\t' && code != '\n') continue;
        } else if (code < 0x80) {
            designate(g0, Designation::roman, "\x1B(J");
        } else if (code < 0x100) {
            designate(g1, Designation::katakana, "\x1B)I");
        } else {
            designate(g1, Designation::kanji, "\x1B$)B");
            *out++ = static_cast<unsigned char>(code >> 8);
        }
        *out++ = static_cast<unsigned char>(code & 0xFF);
    }
    *out = 0;
    return static_cast<unsigned short>(out - destination);
}

int CM_SjisToJis(unsigned short sjis, unsigned char *destination) {
    const unsigned lead = sjis >> 8;
    const unsigned trail = sjis & 0xFF;
    const bool refused = lead <= 0x80 || (lead >= 0xA0 && lead <= 0xDF) || trail == 0x7F;
    const unsigned jis = refused ? 0 : swap_halves(sjis2jis(swap_halves(sjis)));
    return print(destination, "%04X", jis);
}

int CM_SjisToKuten(unsigned short sjis, unsigned char *destination) {
    const int kuten = static_cast<unsigned short>(sjis2jis(swap_halves(sjis)) - 0x2020);
    const int row = kuten & 0xFF;
    const int cell = kuten >> 8;
    return print(destination, row <= 99 ? "%02d%02d" : "%03d%02d", row, cell);
}
