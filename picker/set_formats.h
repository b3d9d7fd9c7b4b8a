// set_formats.h - the formats in which a whole set is written and read.
//
// Text, JSON and TSV are UTF-8 and lose nothing: what is no character is written as its bytes
// in braces, {8540}, and so is a brace, {7B}. A last line without a line end gets one. What is
// read may be UTF-16 too, with a byte order mark.
#ifndef KIGOU_PICKER_SET_FORMATS_H
#define KIGOU_PICKER_SET_FORMATS_H

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "picker/set.h"
#include "picker/symbol_reading.h"

namespace kigou {

enum class Format {
    text, /**< the symbol file itself, in UTF-8 */
    json, /**< {"file": ..., "titles": [{"path": ..., "lines": [...]}]} */
    tsv,  /**< a row for each line of symbols: file, path, symbols */
    csv,  /**< the same with commas and quotation marks; read, not written */
    kig   /**< the symbol file as it is on disk; read, not written */
};

/** @param format  text, json or tsv */
std::string write_set(const SymbolSet &set, Format format);

/** Lines of the data of a title, without CR LF. */
std::vector<Sjis> lines_of_data(std::span<const unsigned char> data);

/** Symbols of one line as text, bytes in braces for what is no character. */
std::string written_symbols(std::span<const unsigned char> line);

/** The format that a file begins like; nothing for any other, such as an old-format file. */
std::optional<Format> format_of(std::span<const unsigned char> bytes);

/**
 * Reads a set. What cannot be read of it is left out by name, and the rest comes in.
 * @throws Failure (refused) when the bytes are not of that format at all
 */
SymbolSet read_set(std::span<const unsigned char> bytes, Format format, LeftOutList &left_out);

} // namespace kigou

#endif
