// codes.cpp - see codes.h.
#include "picker/codes.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cstdio>

#include "common/acccom.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

/** Row and cell of CM_SjisToKuten, "0210", as "2-10". */
std::string kuten_of(unsigned short code) {
    std::array<unsigned char, 8> digits{};
    CM_SjisToKuten(code, digits.data());
    const std::string text = reinterpret_cast<const char *>(digits.data());
    return std::to_string(std::stoi(text.substr(0, text.size() - 2))) + "-" +
           std::to_string(std::stoi(text.substr(text.size() - 2)));
}

std::string jis_of(unsigned short code) {
    std::array<unsigned char, 8> digits{};
    CM_SjisToJis(code, digits.data());
    return reinterpret_cast<const char *>(digits.data());
}

/** Whether the pair lies in rows 1 to 94, with a character or without. */
bool has_row_and_cell(const Sjis &symbol) {
    return symbol.size() == 2 &&
           ((symbol[0] >= 0x81 && symbol[0] <= 0x9F) || (symbol[0] >= 0xE0 && symbol[0] <= 0xEF)) &&
           symbol[1] >= 0x40 && symbol[1] <= 0xFC && symbol[1] != 0x7F;
}

constexpr unsigned most_row = 94; // rows, and cells of a row, of JIS X 0208
constexpr unsigned jis_offset = 0x20, euc_offset = 0xA0;

bool in_table(unsigned row, unsigned cell) {
    return row >= 1 && row <= most_row && cell >= 1 && cell <= most_row;
}

Sjis cell_of(unsigned row, unsigned cell) {
    const std::array<unsigned char, 2> euc{static_cast<unsigned char>(row + euc_offset),
                                           static_cast<unsigned char>(cell + euc_offset)};
    return text_form(euc);
}

std::string hex(const char *prefix, unsigned code) {
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%s%04X", prefix, code);
    return digits.data();
}

TypedCode by_kuten(unsigned row, unsigned cell) {
    TypedCode code{"k:" + std::to_string(row) + "-" + std::to_string(cell)};
    if (in_table(row, cell)) {
        code.symbol = cell_of(row, cell);
    } else {
        code.refusal = sentence("kuten {1} is outside of the table, which goes from 1-1 to 94-94",
                                code.label.substr(2));
    }
    return code;
}

/** JIS and EUC-JP: row and cell, both with the same added. */
TypedCode by_cell(const char *prefix, const char *name, unsigned code, unsigned offset) {
    TypedCode typed{hex(prefix, code)};
    const unsigned row = (code >> 8) - offset, cell = (code & 0xFF) - offset;
    if (in_table(row, cell)) {
        typed.symbol = cell_of(row, cell);
    } else {
        const unsigned first = (offset + 1) * 0x101, last = (offset + most_row) * 0x101;
        typed.refusal = sentence("{1} is outside of the table, which goes from {2} to {3}",
                                 hex(name, code), hex("", first), hex("", last));
    }
    return typed;
}

TypedCode by_jis(unsigned code) {
    return by_cell("j:", "JIS ", code, jis_offset);
}

TypedCode by_euc(unsigned code) {
    return by_cell("e:", "EUC-JP ", code, euc_offset);
}

TypedCode by_sjis(unsigned code) {
    return {hex("s:", code), pair_of(static_cast<unsigned short>(code))};
}

TypedCode by_unicode(unsigned code) {
    TypedCode typed{hex("U+", code)};
    if (auto symbol = code <= 0x10FFFF ? sjis_of(code) : std::nullopt) {
        typed.symbol = std::move(*symbol);
    } else {
        typed.refusal = sentence("Shift_JIS has no character {1}", typed.label);
    }
    return typed;
}

/** "1-78" */
std::optional<TypedCode> kuten(std::string_view text) {
    const auto dash = text.find('-');
    if (dash == std::string_view::npos) return std::nullopt;
    const auto row = number_of(text.substr(0, dash), 10);
    const auto cell = number_of(text.substr(dash + 1), 10);
    if (!row || !cell) return std::nullopt;
    return by_kuten(*row, *cell);
}

/** The meaning of a word that says of which kind it is. */
std::optional<TypedCode> with_kind(std::string_view word) {
    if (auto code = kuten(word)) return code;
    if (word.size() < 3) return std::nullopt;
    const std::string_view rest = word.substr(2);
    const auto kind = [&](const char *prefix) {
        return std::tolower(static_cast<unsigned char>(word[0])) == prefix[0] &&
               std::tolower(static_cast<unsigned char>(word[1])) == prefix[1];
    };
    if (kind("k:")) return kuten(rest);
    const auto code = number_of(rest, 16);
    if (!code) return std::nullopt;
    if (kind("u+")) return by_unicode(*code);
    if (rest.size() != 4) return std::nullopt;
    if (kind("0x") || kind("s:")) return by_sjis(*code);
    if (kind("j:")) return by_jis(*code);
    if (kind("e:")) return by_euc(*code);
    return std::nullopt;
}

} // namespace

SymbolCodes codes_of(const Sjis &symbol) {
    SymbolCodes codes;
    codes.symbol = to_utf8(symbol);
    codes.repertoire = repertoire_of(symbol);
    for (const unsigned char byte : symbol) {
        std::array<char, 4> digits{};
        std::snprintf(digits.data(), digits.size(), "%02X", byte);
        codes.sjis += digits.data();
    }
    if (has_row_and_cell(symbol)) {
        const auto code = static_cast<unsigned short>(symbol[0] << 8 | symbol[1]);
        codes.jis = jis_of(code);
        codes.kuten = kuten_of(code);
        const Sjis euc = disk_form(symbol);
        codes.euc = hex("", code_of(std::span(euc).first<2>()));
    }
    if (codes.symbol.find(to_utf8(replacement_character)) == std::string::npos) {
        codes.unicode = unicode_names(codes.symbol);
    }
    return codes;
}

std::vector<TypedCode> meanings_of(std::string_view word) {
    if (auto code = with_kind(word)) return {std::move(*code)};
    const auto code = number_of(word, 16);
    if (!code || word.size() != 4) return {};
    std::vector<TypedCode> meanings{by_jis(*code), by_sjis(*code), by_euc(*code),
                                    by_unicode(*code)};
    if (const auto digits = number_of(word, 10)) {
        meanings.push_back(by_kuten(*digits / 100, *digits % 100));
    }
    std::erase_if(meanings, [](const TypedCode &meaning) {
        return repertoire_of(meaning.symbol) == Repertoire::none;
    });
    return meanings;
}

std::optional<Sjis> symbol_of_code(std::string_view word) {
    auto code = with_kind(word);
    if (!code) return std::nullopt;
    if (!code->refusal.empty()) throw Failure(FailureKind::refused, code->refusal);
    return std::move(code->symbol);
}

unsigned short code_of(std::span<const unsigned char, 2> pair) {
    return static_cast<unsigned short>(pair[0] << 8 | pair[1]);
}

Sjis pair_of(unsigned short code) {
    return {static_cast<unsigned char>(code >> 8), static_cast<unsigned char>(code & 0xFF)};
}

std::optional<unsigned> number_of(std::string_view digits, int base) {
    unsigned value = 0;
    const char *const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, value, base);
    if (digits.empty() || error != std::errc{} || rest != end) return std::nullopt;
    return value;
}

} // namespace kigou
