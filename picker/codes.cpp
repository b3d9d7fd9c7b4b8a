// codes.cpp - see codes.h.
#include "picker/codes.h"

#include <array>
#include <charconv>
#include <cstdio>

#include "common/acccom.h"
#include "picker/disk_form.h"
#include "picker/failure.h"

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

bool starts_with(std::string_view word, char first, char second) {
    const auto lower = [](char letter) {
        return letter == 'X' || letter == 'U' ? letter + 32 : letter;
    };
    return word.size() > 2 && lower(word[0]) == first && lower(word[1]) == second;
}

/** "1-33": row and cell. */
std::optional<Sjis> from_kuten(std::string_view text) {
    const auto dash = text.find('-');
    if (dash == std::string_view::npos) return std::nullopt;
    const auto row = number_of(text.substr(0, dash), 10);
    const auto cell = number_of(text.substr(dash + 1), 10);
    if (!row || !cell) return std::nullopt;
    if (*row < 1 || *row > 94 || *cell < 1 || *cell > 94) {
        throw Failure(FailureKind::refused,
                      "kuten " + std::string(text) + " is not from 1-1 to 94-94");
    }
    const std::array<unsigned char, 2> euc{static_cast<unsigned char>(*row + 0xA0),
                                           static_cast<unsigned char>(*cell + 0xA0)};
    return text_form(euc);
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
    }
    if (codes.symbol.find(to_utf8(replacement_character)) == std::string::npos) {
        codes.unicode = unicode_names(codes.symbol);
    }
    return codes;
}

std::optional<Sjis> symbol_of_code(std::string_view word) {
    if (auto symbol = from_kuten(word)) return symbol;
    if (starts_with(word, '0', 'x') && word.size() == 6) {
        if (const auto code = number_of(word.substr(2), 16)) {
            return Sjis{static_cast<unsigned char>(*code >> 8),
                        static_cast<unsigned char>(*code & 0xFF)};
        }
    }
    if (starts_with(word, 'u', '+')) {
        const auto code = number_of(word.substr(2), 16);
        if (code && *code <= 0x10FFFF) return to_sjis(to_utf8(static_cast<char32_t>(*code)));
    }
    return std::nullopt;
}

std::optional<unsigned> number_of(std::string_view digits, int base) {
    unsigned value = 0;
    const char *const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, value, base);
    if (digits.empty() || error != std::errc{} || rest != end) return std::nullopt;
    return value;
}

} // namespace kigou
