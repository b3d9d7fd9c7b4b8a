// symbol_input.cpp - see symbol_input.h.
#include "cli/symbol_input.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>
#include <iterator>
#include <memory>
#include <new>
#include <optional>

#include "cli/failure.h"
#include "cli/output.h"
#include "cli/storable.h"
#include "common/acccom.h"

namespace kigou {
namespace {

constexpr std::size_t symbols_per_line = 10;
constexpr std::u32string_view katakana =
    U"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノ"
    U"ハヒフヘホマミムメモヤユヨラリルレロワン゛゜";
constexpr char32_t first_half_width = 0xFF61;
constexpr char32_t half_width_dakuten = 0xFF9E;
constexpr char32_t half_width_handakuten = 0xFF9F;
static_assert(katakana.size() == half_width_handakuten - first_half_width + 1);

bool is_half_width(char32_t character) {
    return character >= first_half_width && character <= half_width_handakuten;
}

/** The katakana with a mark; nothing when it takes none. */
std::optional<char32_t> with_mark(char32_t kana, char32_t mark) {
    constexpr std::u32string_view take_dakuten = U"カキクケコサシスセソタチツテトハヒフヘホ";
    constexpr std::u32string_view take_handakuten = U"ハヒフヘホ";
    if (mark == half_width_dakuten) {
        if (kana == U'ウ') return U'ヴ';
        if (take_dakuten.find(kana) != std::u32string_view::npos) return kana + 1;
    }
    if (mark == half_width_handakuten && take_handakuten.find(kana) != std::u32string_view::npos) {
        return kana + 2;
    }
    return std::nullopt;
}

/** The double-byte form of a single-byte character; the four that JIS X 0208 spells otherwise. */
char32_t double_byte_form(char32_t character) {
    switch (character) {
        case U'"':
            return U'”';
        case U'\'':
            return U'’';
        case U'-':
            return U'−';
        case U'~':
            return U'〜';
        default:
            break;
    }
    if (character > 0x20 && character < 0x7F) return character + 0xFEE0;
    return is_half_width(character) ? katakana[character - first_half_width] : character;
}

std::string code_of(char32_t character) {
    return unicode_names(to_utf8(character));
}

/** Why a character is no symbol; the code in sjis is what it would be. */
std::optional<std::string> refusal(char32_t character, Sjis &sjis) {
    if (character == replacement_character) return "not UTF-8, or no character";
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    const std::string named =
        control ? code_of(character) : "'" + to_utf8(character) + "' (" + code_of(character) + ")";
    if (control) return named + " is a control character";
    try {
        sjis = to_sjis(to_utf8(character));
    } catch (const Failure &) {
        return named + " is not in Shift_JIS";
    }
    if (sjis.size() != 2) {
        return named + " is a single-byte character; its double-byte form is " +
               to_utf8(double_byte_form(character));
    }
    if (!survives_saving(sjis)) return named + " is a vendor character that a file cannot keep";
    return std::nullopt;
}

std::optional<unsigned> number(std::string_view digits, int base) {
    unsigned value = 0;
    const char *const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, value, base);
    if (digits.empty() || error != std::errc{} || rest != end) return std::nullopt;
    return value;
}

Sjis pair_of(unsigned code) {
    return {static_cast<unsigned char>(code >> 8), static_cast<unsigned char>(code & 0xFF)};
}

/** "{8540}" at a place; steps to its last character. */
std::optional<Sjis> escape_at(const std::u32string &text, std::size_t &at) {
    if (text[at] != U'{' || at + 5 >= text.size() || text[at + 5] != U'}') return std::nullopt;
    std::string digits;
    for (std::size_t i = 1; i <= 4; ++i) {
        digits += text[at + i] < 0x80 ? static_cast<char>(text[at + i]) : '?';
    }
    const auto code = number(digits, 16);
    if (!code || !survives_saving(pair_of(*code))) return std::nullopt;
    at += 5;
    return pair_of(*code);
}

/** "1-33": row and cell. */
std::optional<Sjis> from_kuten(std::string_view text) {
    const auto dash = text.find('-');
    if (dash == std::string_view::npos) return std::nullopt;
    const auto row = number(text.substr(0, dash), 10);
    const auto cell = number(text.substr(dash + 1), 10);
    if (!row || !cell) return std::nullopt;
    if (*row < 1 || *row > 94 || *cell < 1 || *cell > 94) {
        throw Failure(Status::failed, "kuten " + std::string(text) + " is not from 1-1 to 94-94");
    }
    const std::array<unsigned char, 3> euc{static_cast<unsigned char>(*row + 0xA0),
                                           static_cast<unsigned char>(*cell + 0xA0), 0};
    const std::unique_ptr<unsigned char, decltype(&CM_free)> sjis(CM_euc2sjis(euc.data()),
                                                                  &CM_free);
    if (!sjis) throw std::bad_alloc();
    return Sjis{sjis.get()[0], sjis.get()[1]};
}

/** "0x8160": a Shift_JIS code. */
std::optional<Sjis> from_code(std::string_view text) {
    if (text.size() != 6 || !(text.starts_with("0x") || text.starts_with("0X"))) {
        return std::nullopt;
    }
    const auto code = number(text.substr(2), 16);
    if (!code) return std::nullopt;
    return pair_of(*code);
}

/** "U+301C": the UTF-8 of a character; other text as it is. */
std::string from_unicode(const std::string &text) {
    if (!text.starts_with("U+") && !text.starts_with("u+")) return text;
    const auto code = number(std::string_view(text).substr(2), 16);
    if (!code || *code > 0x10FFFF) return text;
    return to_utf8(static_cast<char32_t>(*code));
}

} // namespace

SymbolLine read_symbols(std::string_view utf8, Reading reading) {
    SymbolLine line;
    const std::u32string text = to_characters(utf8);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == U' ' || text[i] == U'\t') continue;
        const std::size_t column = i + 1;
        char32_t character = text[i];
        if (reading == Reading::escaped) {
            if (auto unit = escape_at(text, i)) {
                line.symbols.push_back(std::move(*unit));
                continue;
            }
        }
        if (reading == Reading::folded) {
            const bool half = is_half_width(character);
            character = double_byte_form(character);
            const auto marked =
                half && i + 1 < text.size() ? with_mark(character, text[i + 1]) : std::nullopt;
            if (marked) {
                character = *marked;
                ++i;
            }
        }
        Sjis symbol;
        if (auto reason = refusal(character, symbol)) {
            line.refused.push_back({column, std::move(*reason)});
        } else {
            line.symbols.push_back(std::move(symbol));
        }
    }
    return line;
}

std::vector<Sjis> symbols_of(const std::string &argument) {
    if (auto symbol = from_kuten(argument)) return {*symbol};
    if (auto symbol = from_code(argument)) return {*symbol};
    if (argument.empty()) throw Failure(Status::failed, "an empty argument names no symbol");
    std::vector<Sjis> symbols;
    for (const char32_t character : to_characters(from_unicode(argument))) {
        const std::string utf8 = to_utf8(character);
        Sjis symbol;
        try {
            symbol = to_sjis(utf8);
        } catch (const Failure &) {
            to_sjis(argument); // names the place in the argument as typed
            throw;
        }
        if (symbol.size() != 2) {
            std::vector<std::string> hints;
            if (character > 0x20 && character < 0x7F) {
                hints.push_back("the full-width character is " + to_utf8(character + 0xFEE0));
            }
            throw Failure(Status::failed,
                          "'" + utf8 + "' is a single-byte character; symbols have two bytes",
                          hints);
        }
        symbols.push_back(std::move(symbol));
    }
    return symbols;
}

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

void append_lines(Sjis &data, const std::vector<Sjis> &symbols) {
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        data.insert(data.end(), symbols[i].begin(), symbols[i].end());
        const bool line_full = (i + 1) % symbols_per_line == 0;
        if (line_full || i + 1 == symbols.size()) data.insert(data.end(), {'\r', '\n'});
    }
}

std::vector<Sjis> symbols_in(const Sjis &data) {
    std::vector<Sjis> symbols;
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        if (data[i] == '\r' && data[i + 1] == '\n') continue;
        symbols.push_back({data[i], data[i + 1]});
    }
    return symbols;
}

std::string standard_input(const std::string &awaited) {
    if (isatty(STDIN_FILENO)) complain(awaited + "; end with Ctrl-D on a line of its own");
    std::string text{std::istreambuf_iterator<char>(std::cin), {}};
    if (std::cin.bad()) throw Failure(Status::failed, "the standard input cannot be read");
    return text;
}

} // namespace kigou
