// scratch_folder.h - a private folder that is gone at the end.
#ifndef KIGOU_PICKER_SCRATCH_FOLDER_H
#define KIGOU_PICKER_SCRATCH_FOLDER_H

#include <ctime>
#include <string>

namespace kigou {

class ScratchFolder {
  public:
    /** In the temporary directory. @throws Failure (failed) with the system's reason */
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;

    /** Path bytes, absolute. */
    const std::string &path() const { return path_; }

  private:
    std::string path_;
    int lock_ = -1; /**< says that this process lives */
};

/** Name of the only file in one, beside links to the files of the program's folder. */
inline constexpr const char *scratch_file = "set.kig";

/** Seconds after which a file without an owner is one that was left behind. */
inline constexpr std::time_t youngest_leftover = 3;

/** Removes those that killed processes of this person left: they hold copies alone. */
void sweep_scratch_folders();

} // namespace kigou

#endif
