// check.h - what is not as it should be in a symbol file, line by line. Any file can
// be checked, also one that the library does not open.
#ifndef KIGOU_PICKER_CHECK_H
#define KIGOU_PICKER_CHECK_H

#include <cstddef>
#include <string>
#include <vector>

#include "picker/text.h"

namespace kigou {

struct Finding {
    std::size_t line = 0; /**< of the file, from 1 */
    std::string kind;     /**< a word for scripts, see docs/kigou.md */
    std::string text;
    bool unsafe = false; /**< an edit of the file could lose or change what stands here */
};

struct CheckedFile {
    std::string title; /**< file title; empty when there is none */
    std::size_t blocks = 0, symbols = 0;
    std::vector<Finding> findings; /**< by line; the first ones, most_findings at most */
    std::size_t more = 0;          /**< findings that are not kept */

    static constexpr std::size_t most_findings = 1000;
};

/** @param bytes  of the file, in the disk form */
CheckedFile check_symbol_file(const Sjis &bytes);

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
