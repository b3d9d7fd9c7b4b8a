// text.cpp - see text.h. One character at a time goes through iconv, so that an undefined one
// never takes its neighbours with it; what it made of a pair of Shift_JIS is kept. Each thread
// has converters of its own.
#include "picker/text.h"

#include <iconv.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>

#include "picker/disk_form.h"
#include "picker/failure.h"

namespace kigou {
namespace {

/** One direction of the platform's converter. */
class Converter {
  public:
    Converter(const char *to, const char *from) : handle_(iconv_open(to, from)) {
        if (handle_ == reinterpret_cast<iconv_t>(-1)) {
            throw Failure(FailureKind::failed,
                          std::string("this system cannot convert from ") + from + " to " + to);
        }
    }
    ~Converter() { iconv_close(handle_); }
    Converter(const Converter &) = delete;
    Converter &operator=(const Converter &) = delete;

    /** The converted character; nothing when it has no counterpart. */
    std::optional<Sjis> convert(std::string_view bytes) {
        std::string input(bytes);
        std::array<char, 16> output{};
        char *in = input.data();
        char *out = output.data();
        std::size_t in_left = input.size();
        std::size_t out_left = output.size();
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle_, &in, &in_left, &out, &out_left) != 0 || in_left != 0) {
            return std::nullopt;
        }
        return Sjis(output.data(), out);
    }

  private:
    iconv_t handle_;
};

std::string_view as_chars(std::span<const unsigned char> bytes) {
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

bool is_lead(unsigned char byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

bool is_trail(unsigned char byte) {
    return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

bool is_half_width_katakana(unsigned char byte) {
    return byte >= 0xA1 && byte <= 0xDF;
}

bool is_euc_pair(const Sjis &euc) {
    return euc.size() == 2 && euc[0] >= 0xA1 && euc[0] <= 0xFE && euc[1] >= 0xA1 && euc[1] <= 0xFE;
}

/** Reads one character at offset and steps past it; nothing (and one byte) when malformed. */
std::optional<char32_t> next_character(std::string_view utf8, std::size_t &offset) {
    const auto byte = [&](std::size_t at) -> char32_t {
        return at < utf8.size() ? static_cast<unsigned char>(utf8[at]) : 0;
    };
    const char32_t first = byte(offset);
    const std::size_t length = first < 0x80                    ? 1
                               : first >= 0xC2 && first < 0xE0 ? 2
                               : first >= 0xE0 && first < 0xF0 ? 3
                               : first >= 0xF0 && first < 0xF5 ? 4
                                                               : 0;
    static constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    static constexpr std::array<char32_t, 5> first_bits{0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t character = first & first_bits[length];
    bool whole = length != 0;
    for (std::size_t i = 1; whole && i < length; ++i) {
        const char32_t more = byte(offset + i);
        whole = (more & 0xC0) == 0x80;
        character = character << 6 | (more & 0x3F);
    }
    if (!whole || character < least[length] || character > 0x10FFFF ||
        (character >= 0xD800 && character <= 0xDFFF)) {
        ++offset;
        return std::nullopt;
    }
    offset += length;
    return character;
}

struct Decoded {
    Repertoire repertoire = Repertoire::none;
    char32_t character = replacement_character;
};

/** Both bytes of the pair are in range. */
Decoded convert_pair(const std::array<unsigned char, 2> &pair) {
    static thread_local Converter from_euc("UTF-8", "EUC-JP");
    static thread_local Converter from_vendor("UTF-8", "CP932");
    const auto decoded = [](Repertoire repertoire, const Sjis &utf8) -> Decoded {
        std::size_t offset = 0;
        return {repertoire, next_character(as_chars(utf8), offset).value_or(replacement_character)};
    };
    const Sjis euc = disk_form(pair);
    if (is_euc_pair(euc)) {
        if (const auto utf8 = from_euc.convert(as_chars(euc))) {
            return decoded(Repertoire::jis_x_0208, *utf8);
        }
    }
    if (const auto utf8 = from_vendor.convert(as_chars(pair))) {
        return decoded(Repertoire::vendor, *utf8);
    }
    return {};
}

/** The same, and asked only once: a converter takes a hundred times as long as a look-up. */
Decoded decode_pair(unsigned char lead, unsigned char trail) {
    constexpr unsigned repertoire_shift = 24; // above every character
    constexpr std::uint32_t asked = 1U << 31;
    static std::array<std::atomic<std::uint32_t>, 0x10000> known{};
    std::atomic<std::uint32_t> &slot = known[static_cast<std::size_t>(lead << 8 | trail)];
    std::uint32_t value = slot.load(std::memory_order_relaxed);
    if (value == 0) {
        const Decoded decoded = convert_pair({lead, trail});
        value = asked | static_cast<std::uint32_t>(decoded.repertoire) << repertoire_shift |
                decoded.character;
        slot.store(value, std::memory_order_relaxed);
    }
    return {static_cast<Repertoire>((value & ~asked) >> repertoire_shift), value & 0x1FFFFF};
}

/** The double-byte code of a character beyond ASCII; nothing when there is none. */
std::optional<Sjis> encode_pair(char32_t character) {
    static thread_local Converter to_euc("EUC-JP", "UTF-8");
    static thread_local Converter to_vendor("CP932", "UTF-8");
    // Both converters would make these two an ASCII byte.
    if (character == 0x00A5) character = 0xFFE5;
    if (character == 0x203E) character = 0xFFE3;
    const std::string utf8 = to_utf8(character);
    if (const auto euc = to_euc.convert(utf8); euc && is_euc_pair(*euc)) return text_form(*euc);
    auto vendor = to_vendor.convert(utf8);
    if (vendor && vendor->size() == 2) return vendor;
    return std::nullopt;
}

std::string hex(const char *format, unsigned value) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

} // namespace

std::string to_utf8(char32_t character) {
    std::string utf8;
    const auto add = [&](char32_t byte) { utf8.push_back(static_cast<char>(byte)); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | character >> 6);
        add(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        add(0xE0 | character >> 12);
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    } else {
        add(0xF0 | character >> 18);
        add(0x80 | (character >> 12 & 0x3F));
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    }
    return utf8;
}

std::string to_utf8(std::span<const unsigned char> sjis) {
    std::string utf8;
    for (std::size_t i = 0; i < sjis.size(); ++i) {
        const unsigned char byte = sjis[i];
        if (byte < 0x80) {
            utf8.push_back(static_cast<char>(byte));
        } else if (is_half_width_katakana(byte)) {
            utf8 += to_utf8(static_cast<char32_t>(0xFF61 + byte - 0xA1));
        } else if (is_lead(byte) && i + 1 < sjis.size() && is_trail(sjis[i + 1])) {
            utf8 += to_utf8(decode_pair(byte, sjis[++i]).character);
        } else {
            utf8 += to_utf8(replacement_character);
        }
    }
    return utf8;
}

Sjis to_sjis(std::string_view utf8) {
    Sjis sjis;
    std::size_t position = 1;
    for (std::size_t offset = 0; offset < utf8.size(); ++position) {
        const std::size_t start = offset;
        const auto character = next_character(utf8, offset);
        const std::string where = " at position " + std::to_string(position);
        if (!character) {
            throw Failure(FailureKind::refused,
                          "byte " + hex("0x%02X", static_cast<unsigned char>(utf8[start])) + where +
                              " is not UTF-8");
        }
        const auto encoded = sjis_of(*character);
        if (!encoded) {
            throw Failure(FailureKind::refused, "Shift_JIS has no character " +
                                                    to_utf8(*character) + " (" +
                                                    hex("U+%04X", *character) + ")" + where);
        }
        sjis.insert(sjis.end(), encoded->begin(), encoded->end());
    }
    return sjis;
}

std::optional<Sjis> sjis_of(char32_t character) {
    if (character < 0x80) return Sjis{static_cast<unsigned char>(character)};
    if (character >= 0xFF61 && character <= 0xFF9F) {
        return Sjis{static_cast<unsigned char>(character - 0xFF61 + 0xA1)};
    }
    return encode_pair(character);
}

Repertoire repertoire_of(std::span<const unsigned char> pair) {
    if (pair.size() != 2 || !is_lead(pair[0]) || !is_trail(pair[1])) return Repertoire::none;
    return decode_pair(pair[0], pair[1]).repertoire;
}

std::u32string to_characters(std::string_view utf8) {
    std::u32string characters;
    for (std::size_t offset = 0; offset < utf8.size();) {
        characters.push_back(next_character(utf8, offset).value_or(replacement_character));
    }
    return characters;
}

std::string unicode_names(std::string_view utf8) {
    std::string names;
    for (const char32_t character : to_characters(utf8)) {
        if (!names.empty()) names += ' ';
        names += hex("U+%04X", character);
    }
    return names;
}

std::string without_last(std::string_view utf8) {
    std::size_t end = utf8.size();
    while (end > 0 && (static_cast<unsigned char>(utf8[--end]) & 0xC0) == 0x80) {
    }
    return std::string(utf8.substr(0, end));
}

std::string on_one_line(std::string_view utf8) {
    std::string line(utf8);
    while (line.ends_with('\n') || line.ends_with('\r')) line.pop_back();
    for (char &character : line) {
        if (character == '\n' || character == '\r' || character == '\t') character = ' ';
    }
    return line;
}

std::string printable(std::string_view utf8) {
    std::string text;
    for (const char32_t character : to_characters(utf8)) {
        const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
        text += to_utf8(control ? replacement_character : character);
    }
    return text;
}

std::string beginning_of(std::string_view utf8, std::size_t characters) {
    std::size_t end = 0;
    for (; end < utf8.size(); ++end) {
        const bool begins = (static_cast<unsigned char>(utf8[end]) & 0xC0) != 0x80;
        if (begins && characters-- == 0) break;
    }
    return std::string(utf8.substr(0, end));
}

std::string shortened(std::string_view utf8) {
    constexpr std::size_t shown = 60;
    if (utf8.size() <= shown) return std::string(utf8);
    std::size_t end = shown;
    while (end > 0 && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) --end;
    return std::string(utf8.substr(0, end)) + "...";
}

std::string utf8_of_file(std::span<const unsigned char> bytes) {
    const auto starts = [&](std::initializer_list<unsigned char> mark) {
        return bytes.size() >= mark.size() && std::equal(mark.begin(), mark.end(), bytes.begin());
    };
    const bool big = starts({0xFE, 0xFF}), little = starts({0xFF, 0xFE});
    if (starts({0xEF, 0xBB, 0xBF})) bytes = bytes.subspan(3);
    if (!big && !little) return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
    std::string text;
    char32_t high = 0;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto unit = static_cast<char32_t>(big ? bytes[i] << 8 | bytes[i + 1]
                                                    : bytes[i + 1] << 8 | bytes[i]);
        const bool is_low = unit >= 0xDC00 && unit < 0xE000;
        if (high != 0)
            text += to_utf8(is_low ? 0x10000 + ((high & 0x3FF) << 10 | (unit & 0x3FF))
                                   : replacement_character);
        const bool joined = std::exchange(high, 0) != 0 && is_low;
        if (unit >= 0xD800 && unit < 0xDC00) {
            high = unit;
        } else if (!joined) {
            text += to_utf8(is_low ? replacement_character : unit);
        }
    }
    // Half a pair, or half a unit, is no character.
    if (high != 0 || bytes.size() % 2 != 0) text += to_utf8(replacement_character);
    return text;
}

} // namespace kigou
