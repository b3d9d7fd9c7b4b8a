// codes.h - the codes of a symbol, and the one parser for the codes that a person types.
#ifndef KIGOU_PICKER_CODES_H
#define KIGOU_PICKER_CODES_H

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "picker/text.h"

namespace kigou {

struct SymbolCodes {
    std::string symbol;  /**< UTF-8; U+FFFD for what is no character */
    std::string sjis;    /**< upper-case hexadecimal, as in the symbol file's text */
    std::string jis;     /**< four hexadecimal digits; empty outside rows 1 to 94 */
    std::string euc;     /**< EUC-JP, four hexadecimal digits; empty outside rows 1 to 94 */
    std::string kuten;   /**< row and cell, "2-10"; empty outside rows 1 to 94 */
    std::string unicode; /**< "U+2192"; empty for what is no character */
    Repertoire repertoire = Repertoire::none;
};

/** @param symbol  a unit of a block: two bytes, or one where the block ends in its middle */
SymbolCodes codes_of(const Sjis &symbol);

/** What a typed code means. */
struct TypedCode {
    std::string label;     /**< "k:1-78", "U+2103", "j:216E", "s:818E" or "e:A1EE" */
    Sjis symbol{};         /**< two bytes, with a character or without; one for a single-byte one */
    std::string refusal{}; /**< why no symbol can have the code, and then there is none */
};

/**
 * The meanings of a word as a code, letters in either case. One with its kind has one: 1-78 or
 * k:1-78 (kuten, a row and a cell of JIS X 0208), U+2103 (Unicode), 0x818E or s:818E
 * (Shift_JIS), j:216E (JIS, without the escape sequences), e:A1EE (EUC-JP). Four hexadecimal
 * digits alone have each under which a character stands; among them four decimal ones as kuten.
 *
 * @return none for a word that is no code
 */
std::vector<TypedCode> meanings_of(std::string_view word);

/**
 * The bytes that a code with its kind names, as above.
 * @return nothing for a word that is no such code
 * @throws Failure (refused) when no symbol can have it
 */
std::optional<Sjis> symbol_of_code(std::string_view word);

/** A pair of bytes as one number, and back. */
unsigned short code_of(std::span<const unsigned char, 2> pair);
Sjis pair_of(unsigned short code);

/** A number of digits alone, to that base; nothing for any other text, or too large a number. */
std::optional<unsigned> number_of(std::string_view digits, int base);

} // namespace kigou

#endif
