// symbol_codes.cpp - see symbol_codes.h.
#include "cli/symbol_codes.h"

#include <array>
#include <cstdio>

#include "cli/output.h"
#include "common/acccom.h"

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

std::string cell_text(const SymbolCodes &codes) {
    return codes.symbol == "\u3000" ? "[空白]" : printable(codes.symbol);
}

nlohmann::ordered_json to_json(const SymbolCodes &codes) {
    const auto text_or_null = [](const std::string &text) -> nlohmann::ordered_json {
        if (text.empty()) return nullptr;
        return text;
    };
    return {{"symbol", codes.symbol},
            {"sjis", codes.sjis},
            {"jis", text_or_null(codes.jis)},
            {"kuten", text_or_null(codes.kuten)},
            {"unicode", text_or_null(codes.unicode)},
            {"vendor", codes.repertoire == Repertoire::vendor}};
}

} // namespace kigou
