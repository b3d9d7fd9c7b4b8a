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

} // namespace kigou

#endif
