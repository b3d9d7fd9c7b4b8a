// backup.h - a symbol file as it was before an edit that takes something away.
#ifndef KIGOU_PICKER_BACKUP_H
#define KIGOU_PICKER_BACKUP_H

#include <string>

namespace kigou {

/**
 * A copy of a file in the folder "backup" beside it, in place of an earlier one. That folder is
 * no place where symbol files are looked for.
 */
class Backup {
  public:
    /** Writes the copy. @throws Failure (failed) with the system's reason */
    explicit Backup(const std::string &path);

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

} // namespace kigou

#endif
