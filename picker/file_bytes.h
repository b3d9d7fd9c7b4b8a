// file_bytes.h - whole files in and out: regular files alone, with a limit, and known again
// later. Paths are bytes as the system has them.
#ifndef KIGOU_PICKER_FILE_BYTES_H
#define KIGOU_PICKER_FILE_BYTES_H

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "picker/text.h"

namespace kigou {

/** Which file it is, and when it was changed: another one, or another content, differs. */
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    std::int64_t modified = 0, changed = 0; /**< nanoseconds since 1970 */

    bool operator==(const FileIdentity &) const = default;
};

/** Identity of what a path leads to; nothing when it cannot be looked at. */
std::optional<FileIdentity> identity_of(const std::string &path);

struct FileBytes {
    Sjis bytes;
    FileIdentity identity; /**< as it was before the first byte was read and after the last */
};

/** Bytes that are read of a symbol file at most. A set of 100,000 titles has a tenth of them. */
inline constexpr std::size_t most_file_bytes = 256 << 20;

/**
 * Reads a regular file, or a link to one, without ever waiting for it.
 * @throws Failure (failed) with the system's reason, for what is no regular file, for more
 *         than that many bytes, and for a file that is written to all the while
 */
FileBytes read_file(const std::string &path, std::size_t most_bytes = most_file_bytes);

/** The first bytes of a regular file, at most that many. @throws Failure as read_file */
Sjis read_head(const std::string &path, std::size_t most_bytes);

/** How the names of files begin that are being written, the library's own among them. */
inline constexpr const char *unfinished_prefix = ".accsym-save-";

/**
 * Writes a file that was not there before, and waits until it is on the disk. It has its name
 * only when it is whole; a failure leaves no file.
 * @return false when the name is taken
 * @throws Failure (failed) with the system's reason
 */
bool write_new(const std::string &path, std::span<const unsigned char> bytes, mode_t mode = 0666);

/**
 * Writes a file in place of one that may be there; of a link the link is replaced. Whatever
 * happens, also to the machine, the path has the old bytes or the new ones. For two processes at
 * once the later one counts, so who changes what was there needs a lock.
 * @throws Failure (failed) with the system's reason; then the old file is as it was
 */
void replace_file(const std::string &path, std::span<const unsigned char> bytes, mode_t mode);

} // namespace kigou

#endif
