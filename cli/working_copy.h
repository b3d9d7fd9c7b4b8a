// working_copy.h - the working temp file of the library: of the open file, for what a
// list box does not tell (line breaks, titles that stand twice), or one left behind by a
// process that was killed. Its layout is told in docs/file-format.md.
#ifndef KIGOU_WORKING_COPY_H
#define KIGOU_WORKING_COPY_H

#include <optional>
#include <span>
#include <vector>

#include "cli/host.h"

namespace kigou {

struct WorkingBlock {
    Title path; /**< full path */
    Sjis data;  /**< lines of symbols with CR LF between, at the end or not */
};

struct WorkingCopy {
    Title file;
    std::vector<WorkingBlock> blocks; /**< in file order */
    Sjis text;                        /**< all of the text form */
};

/** Reads a working file that was read into memory; nothing when header or records are damaged. */
std::optional<WorkingCopy> parse_working_copy(std::span<const unsigned char> bytes);

/** The open file as it is now, unsaved edits included. @throws Failure */
WorkingCopy working_copy(const Host &host);

/** A file's bytes. @throws Failure with the system's reason */
Sjis bytes_of_file(const std::string &path);

} // namespace kigou

#endif
