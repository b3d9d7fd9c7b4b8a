// backup.h - a symbol file as it was before an edit that takes something away.
#ifndef KIGOU_PICKER_BACKUP_H
#define KIGOU_PICKER_BACKUP_H

#include <span>
#include <string>

namespace kigou {

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
 * Keeps what is not in a set, such as an edit that was not saved, in the folder of its backups.
 * @param bytes  of a symbol file
 * @return       path of the copy, in place of an earlier one
 * @throws Failure (failed) with the system's reason
 */
std::string keep_beside(const std::string &path, const std::string &title,
                        std::span<const unsigned char> bytes);

} // namespace kigou

#endif
