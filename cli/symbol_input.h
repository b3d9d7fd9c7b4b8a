// symbol_input.h - symbols as people type them, made into the data of a block.
#ifndef KIGOU_SYMBOL_INPUT_H
#define KIGOU_SYMBOL_INPUT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cli/text_codec.h"

namespace kigou {

enum class Reading {
    plain,  /**< every character must be a symbol */
    folded, /**< single-byte letters, digits, signs and half-width katakana become double-byte */
    escaped /**< {8540} is the symbol with that code, as exports write what is no character */
};

/** A character that cannot be a symbol. */
struct Refusal {
    std::size_t column = 0; /**< counted in characters from 1 */
    std::string reason;
};

struct SymbolLine {
    std::vector<Sjis> symbols;
    std::vector<Refusal> refused;
};

/** Symbols of one line. Blanks and tabs separate; the ideographic space is a symbol. */
SymbolLine read_symbols(std::string_view utf8, Reading reading);

/**
 * The symbols that an argument names: each of its characters, or the one of its code:
 * U+301C, 1-33 (kuten) or 0x8160 (Shift_JIS). @throws Failure
 */
std::vector<Sjis> symbols_of(const std::string &argument);

/** Lines of a text, without LF or CR LF. */
std::vector<std::string> lines_of(std::string_view text);

/** Appends symbols to the data of a block, ten a line, CR LF behind each line. */
void append_lines(Sjis &data, const std::vector<Sjis> &symbols);

/** Symbols of the data of a block: its two-byte units, but for CR LF. */
std::vector<Sjis> symbols_in(const Sjis &data);

/** Everything that the standard input has; a terminal is told what is awaited. */
std::string standard_input(const std::string &awaited);

} // namespace kigou

#endif
