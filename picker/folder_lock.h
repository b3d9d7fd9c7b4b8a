// folder_lock.h - one edit at a time in a folder of sets, or of state: a lock file that the system
// releases when its process ends, however it ends.
#ifndef KIGOU_PICKER_FOLDER_LOCK_H
#define KIGOU_PICKER_FOLDER_LOCK_H

#include <chrono>
#include <functional>
#include <string>

namespace kigou {

/** How a front end takes part in an edit. An empty function is not called. */
struct EditHooks {
    /** Told once when another program edits the sets of a folder and is waited for. */
    std::function<void(const std::string &folder)> waits{};
    /** Asked while waiting and between two steps: true ends the edit, and nothing is saved. */
    std::function<bool()> stopped{};
    /** How long another program is waited for. */
    std::chrono::milliseconds patience{30000};
};

/** @throws Failure (interrupted) when the front end asked to stop */
void stop_if_asked(const EditHooks &hooks);

/**
 * Locks an open file (flock) and waits for whoever holds it.
 * @param folder  told to the hooks while it waits
 * @return false where the file system has no locks
 * @throws Failure: busy, interrupted, or failed
 */
bool wait_for_lock(int file, const std::string &path, const std::string &folder,
                   const EditHooks &hooks);

/** Name of the lock file in a folder. It stays there, is empty, and is no symbol file's name. */
inline constexpr const char *lock_name = ".accsym-lock";

/**
 * Holds the lock of a folder until it is destroyed. A folder that is not there or cannot be
 * written needs no lock and gets none: nothing can be saved in it. Nor does one on a file
 * system that has no locks.
 */
class FolderLock {
  public:
    /** @throws Failure: busy, interrupted, or failed when there is no lock to be had */
    FolderLock(const std::string &folder, const EditHooks &hooks);
    ~FolderLock();
    FolderLock(FolderLock &&other) noexcept;
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;
    FolderLock &operator=(FolderLock &&) = delete;

    /** Whether there is a lock, so that nobody else edits. */
    explicit operator bool() const { return file_ >= 0; }

  private:
    int file_ = -1;
};

} // namespace kigou

#endif
