// mending.h - which lines of a symbol file keep an edit from being made or saved.
#ifndef KIGOU_PICKER_MENDING_H
#define KIGOU_PICKER_MENDING_H

#include <cstddef>
#include <string>
#include <vector>

#include "picker/check.h"

namespace kigou {

/** A title line that stands among the symbols of a block. */
struct SwallowedTitle {
    std::string block;    /**< path without the file title, UTF-8 */
    std::size_t line = 0; /**< of the file, from 1 */
};

/**
 * Title lines that stand among symbols because a byte too much above hid an end line: who
 * replaces or deletes those symbols drops these titles.
 * @param bytes  of the file, in the disk form
 */
std::vector<SwallowedTitle> swallowed_titles(const Sjis &bytes);

/**
 * The lines to mend of a file that the library does not write because it would not read back.
 * @param path  for people
 * @return      lines for them; none when no finding is unsafe
 */
std::vector<std::string> lines_to_mend(const std::string &path, const CheckedFile &file);

} // namespace kigou

#endif
