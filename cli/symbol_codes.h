// symbol_codes.h - one symbol with its codes, as the commands show it.
#ifndef KIGOU_SYMBOL_CODES_H
#define KIGOU_SYMBOL_CODES_H

#include <nlohmann/json.hpp>
#include <string>

#include "cli/text_codec.h"

namespace kigou {

struct SymbolCodes {
    std::string symbol;  /**< UTF-8; U+FFFD for what is no character */
    std::string sjis;    /**< upper-case hexadecimal, as in the symbol file's text */
    std::string jis;     /**< four hexadecimal digits; empty outside rows 1 to 94 */
    std::string kuten;   /**< row and cell, "2-10"; empty outside rows 1 to 94 */
    std::string unicode; /**< "U+2192"; empty for what is no character */
    Repertoire repertoire = Repertoire::none;
};

/** @param symbol  a unit of a block: two bytes, or one where the block ends in its middle */
SymbolCodes codes_of(const Sjis &symbol);

/** The symbol for a terminal; the ideographic space is labelled. */
std::string cell_text(const SymbolCodes &codes);

/** Keys symbol, sjis, jis, kuten, unicode (null where empty) and vendor (true or false). */
nlohmann::ordered_json to_json(const SymbolCodes &codes);

} // namespace kigou

#endif
