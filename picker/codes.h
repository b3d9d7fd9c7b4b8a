// codes.h - the codes of a symbol, and the one parser for the codes that a person types.
#ifndef KIGOU_PICKER_CODES_H
#define KIGOU_PICKER_CODES_H

#include <optional>
#include <string>
#include <string_view>

#include "picker/text.h"

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

/**
 * The bytes that a code names: U+301C (Unicode; one byte for a single-byte character), 1-33
 * (kuten, a row and a cell of JIS X 0208) or 0x8160 (Shift_JIS), letters in either case.
 *
 * @return nothing for a word that is no code
 * @throws Failure (refused) for a row or a cell beyond 94, and for Unicode that Shift_JIS lacks
 */
std::optional<Sjis> symbol_of_code(std::string_view word);

/** A number of digits alone, to that base; nothing for any other text, or too large a number. */
std::optional<unsigned> number_of(std::string_view digits, int base);

} // namespace kigou

#endif
