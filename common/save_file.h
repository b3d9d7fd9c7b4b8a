/*
 * save_file.h - writing a whole file so that at every moment, whatever fails, either the
 * old file or the new one is there.
 */
#ifndef ACCSYM_COMMON_SAVE_FILE_H
#define ACCSYM_COMMON_SAVE_FILE_H

#include <span>

namespace acc {

enum class SaveResult {
    saved,
    taken,         // create_file alone: something of that name exists
    cannot_create, // the target cannot be written, or its directory takes no new file
    write_failed,  // the bytes did not all reach the disk
};

/**
 * Replaces an existing file.
 *
 * The bytes go to a new file beside it, are synced, and are renamed over it. A symbolic
 * link is followed. The file's mode is kept, and its owner and group as far as the system lets
 * this process; a saver who can keep neither takes the group's permissions away, which were
 * meant for another group.
 */
SaveResult replace_file(const unsigned char *path, std::span<const unsigned char> bytes);

/** Makes a new file, whole from the moment it has its name. The umask applies. */
SaveResult create_file(const unsigned char *path, std::span<const unsigned char> bytes);

} // namespace acc

#endif
