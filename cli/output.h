// output.h - text for terminals: UTF-8 with Japanese characters two columns wide.
#ifndef KIGOU_OUTPUT_H
#define KIGOU_OUTPUT_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "picker/codes.h"

namespace kigou {

/** Columns that UTF-8 text takes: one for ASCII and half-width katakana, else two. */
std::size_t display_width(std::string_view utf8);

/** The text with blanks up to a width in columns; wider text stays as it is. */
std::string padded(std::string_view utf8, std::size_t columns);

/** The symbol for a terminal; the ideographic space is labelled. */
std::string cell_text(const SymbolCodes &codes);

/** Columns of the terminal that the standard output is; nothing when it is none. */
std::optional<std::size_t> terminal_columns();

/**
 * Writes cells in as many columns as the terminal has room for. Terminals do not agree on the
 * width of all symbols, so each cell is placed by its column, not by what stands before it.
 */
void write_grid(const std::vector<std::string> &cells, std::size_t terminal_columns);

/**
 * Writes lines of cells: on a terminal in columns, each cell placed as by write_grid, else with
 * tabs between.
 */
void write_table(const std::vector<std::vector<std::string>> &lines);

/** Writes a line to the error output, "kigou: " first. */
void complain(std::string_view text);

} // namespace kigou

#endif
