// backup.h - a symbol file as it was before an edit that takes something away.
#ifndef KIGOU_PICKER_BACKUP_H
#define KIGOU_PICKER_BACKUP_H

#include <span>
#include <string>

#include "picker/directories.h"

namespace kigou {

/** Where the backups of the sets of a folder are. */
std::string backup_folder(const std::string &folder);

/**
 * A copy of a set in the folder "backup" beside it, named for the title of the set (another set
 * may get the name of a file that is deleted), in place of an earlier one. That folder is no
 * place where symbol files are looked for.
 */
class Backup {
  public:
    /**
     * Writes the copy.
     * @param title  of the set, UTF-8
     * @throws Failure (failed) with the system's reason
     */
    Backup(const std::string &path, const std::string &title);

    /** Removes it, unless it was kept: an earlier copy is as it was then. */
    ~Backup();
    Backup(const Backup &) = delete;
    Backup &operator=(const Backup &) = delete;

    /** Keeps it in place of an earlier one. @return its path */
    std::string keep();

  private:
    std::string copy_, fresh_;
    bool kept_ = false;
};

/**
 * Keeps what is not in a set, such as an edit that was not saved, in the folder of its backups. It
 * replaces nothing that was kept before.
 * @param bytes  of a symbol file
 * @return       path of the copy, which is on the disk; of an earlier one with the same bytes
 * @throws Failure (failed) with the system's reason
 */
std::string keep_beside(const std::string &path, const std::string &title,
                        std::span<const unsigned char> bytes);

/**
 * Ends the backups of processes that were killed within an edit: one that is as a set is now goes,
 * as that edit was not saved, and another one becomes the backup. Where another process edits the
 * sets, or there are no locks, they stay.
 * @throws Failure  when it cannot look; nothing is lost
 */
void settle_backups(const Directories &directories);

} // namespace kigou

#endif
