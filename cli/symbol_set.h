// symbol_set.h - a whole symbol file in memory, and the three formats in which kigou
// writes and reads one.
//
// All three are UTF-8 and lose nothing: what is no character is written as its bytes in
// braces, {8540}, and so is a brace, {7B}. A last line without a line end gets one.
#ifndef KIGOU_SYMBOL_SET_H
#define KIGOU_SYMBOL_SET_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/text_codec.h"

namespace kigou {

struct SetBlock {
    Sjis path;         /**< titles joined by "／", the file title not among them */
    Sjis data;         /**< lines of symbols, CR LF behind each */
    std::string place; /**< where it was read, for reports: "line 3" */
};

struct SymbolSet {
    Sjis file; /**< file title */
    std::vector<SetBlock> blocks;
};

enum class Format {
    text, /**< the symbol file itself */
    json, /**< {"file": ..., "titles": [{"path": ..., "lines": [...]}]} */
    tsv   /**< a row for each line of symbols: file, path, symbols */
};

/** What reading left out, and why. */
struct LeftOut {
    std::string place, reason;
};

std::string write_set(const SymbolSet &set, Format format);

/** The format that a text begins like; nothing for any other text. */
std::optional<Format> format_of(std::string_view text);

/** @throws Failure when the text is not of that format at all */
SymbolSet read_set(std::string_view text, Format format, std::vector<LeftOut> &left_out);

} // namespace kigou

#endif
