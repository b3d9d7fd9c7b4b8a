// symbol_data.h - the data of a title: lines of two-byte symbols, CR LF between them, at the
// end or not.
#ifndef KIGOU_PICKER_SYMBOL_DATA_H
#define KIGOU_PICKER_SYMBOL_DATA_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "picker/text.h"

namespace kigou {

/** Bytes that the library takes as the data of one title, line ends counted. */
inline constexpr std::size_t most_data = 32767;

/** Symbols of data: its two-byte units, but for CR LF. */
std::vector<Sjis> symbols_in(std::span<const unsigned char> data);

/** Appends symbols, ten a line, CR LF behind each line. */
void append_lines(Sjis &data, const std::vector<Sjis> &symbols);

/** Appends data behind a line end, which is added where it is missing. */
void append_data(Sjis &data, std::span<const unsigned char> more);

/** Those of the symbols that the data lacks, each once. */
std::vector<Sjis> missing_from(std::span<const unsigned char> data,
                               const std::vector<Sjis> &symbols);

/** Why data cannot be that of a title: it would not be read back the same. Else nothing. */
std::optional<std::string> data_refusal(std::span<const unsigned char> data);

} // namespace kigou

#endif
