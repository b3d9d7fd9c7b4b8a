// pick_file.h - the file that takes what was picked, for programs that cannot read a pipe.
#ifndef KIGOU_PICK_FILE_H
#define KIGOU_PICK_FILE_H

#include <sys/stat.h>

#include <string>

namespace kigou {

/** Looked at before anybody picks, written at the end; untouched until then. */
class PickFile {
  public:
    /**
     * @param path  a file, which need not be there; a device or a pipe too
     * @throws Failure (refused) when it can be seen that nothing can be written there
     */
    explicit PickFile(std::string path);

    /**
     * In place of what the file holds. A file of one's own with one name has the old text or the
     * new one, whatever happens. Waits for the reader of a pipe.
     * @throws Failure (failed) with the system's reason
     */
    void write(const std::string &text) const;

  private:
    /** Whether another file may take its name: it leads nowhere else, and is nobody else's. */
    bool may_be_replaced() const;

    std::string path_;
    struct stat status_ {};
    bool is_there_; /**< then that is its status */
};

} // namespace kigou

#endif
