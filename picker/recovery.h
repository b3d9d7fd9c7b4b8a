// recovery.h - what processes leave behind that were killed while they edited: working files
// of the library in the temporary directory, and files beside the sets that a save had begun.
// The layout of a working file is told in docs/file-format.md.
#ifndef KIGOU_PICKER_RECOVERY_H
#define KIGOU_PICKER_RECOVERY_H

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "picker/check.h"
#include "picker/directories.h"
#include "picker/folder_lock.h"
#include "picker/title.h"

namespace kigou {

/** What can be had of a file that was left behind. */
struct Recovered {
    Title title;                 /**< file title */
    Sjis text;                   /**< text form */
    bool header_damaged = false; /**< the text was searched for */

    /** The same under another title. */
    void rename(const Title &other);
};

/** @throws Failure: failed when the file cannot be read, refused when no symbol file is in it */
Recovered recover(const std::string &path);

/**
 * Writes it among the person's own sets, under a name that is free.
 * @return path of the new file
 * @throws Failure: refused when a symbol file bears the title, or as FolderLock
 */
std::string keep_recovered(const Directories &directories, const Recovered &recovered,
                           const EditHooks &hooks);

/** A file of a process that is gone. */
struct Leftover {
    std::string path;
    std::string title;  /**< of the set that was edited, UTF-8 */
    std::string kept{}; /**< where it is now, when it was older than the set; else it stays */
};

/**
 * Looks for what processes of this person left behind. Removed are empty files, those that read
 * as the set on disk or as its beginning before any edit, and those that are older than it; of
 * these, one with something that the set lacks is kept in the folder of the backups, or stays when
 * it cannot be. Backups that were not ended are ended. A file of a living process is never touched.
 * @return those that stay or were kept, because something may be lost with them
 */
std::vector<Leftover> sweep_leftovers(const Directories &directories);

/** Removes a file that sweep_leftovers would look at and whose process is gone. */
void remove_leftover(const std::string &path);

} // namespace kigou

#endif
