/*
 * stream.h - what files need beyond the exported CM_ functions: new files that replace
 * nothing, and knowing that bytes are on the disk. Results are 0 or -1 unless said
 * otherwise.
 */
#ifndef ACCSYM_COMMON_STREAM_H
#define ACCSYM_COMMON_STREAM_H

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <utility>

#include "common/acccom.h"

namespace acc {

/**
 * Opens a regular file, or a link to one, without ever waiting for it.
 * @param mode  "rb" or "r+b"
 * @return      handle; -1 when it cannot be opened or is no regular file, errno then says
 *              why: EISDIR for what is no regular file
 */
int open_regular(const unsigned char *path, const char *mode);

/**
 * Makes a temp file under a name that did not exist, mode 0600, to be read and written. It is
 * locked (flock) until it is closed.
 * @param name_template  path ending in "XXXXXX", which the chosen name replaces
 * @return               handle; -1 on failure, then there is no new file
 */
int create_temporary(unsigned char *name_template);

/**
 * Makes a file that must not exist yet, not even as a dangling symbolic link, to be read
 * and written. It is locked (flock) until it is closed.
 * @param mode  permissions, subject to the umask
 * @return      handle; -1 on failure or when the path exists
 */
int create_new(const unsigned char *path, mode_t mode);

/** Writes bytes as CM_write does. @return whether all were taken */
inline bool write_all(int handle, const void *bytes, std::size_t count) {
    return CM_write(handle, static_cast<int>(count), bytes) == static_cast<int>(count);
}

/**
 * Gives an open file owner, group and permissions of another one, as far as the system lets
 * this process: owner and group, or the group alone, or else neither, and then the group
 * that the file has got is allowed nothing. Bits that say more than permissions (set-user-ID
 * and the like) are kept with the owner alone.
 */
void take_after(int handle, const struct stat &other);

/** Hands buffered bytes to the system. -1: some of them were refused and are lost. */
int flush(int handle);

/** flush, and then waits until the bytes are on the disk. */
int sync(int handle);

/**
 * Whether a read or write of this handle has failed since its last CM_seek, which CM_read and
 * CM_CopyFile cannot tell from the end of the file. True for a bad handle.
 */
bool stream_failed(int handle);

/** Renames a file, replacing an existing target in one step. */
int rename_file(const unsigned char *from, const unsigned char *to);

enum class Move { moved, taken, failed };

/** Renames a file to a name that must be free; taken: something has it. */
Move move_new(const unsigned char *from, const unsigned char *to);

/** Waits until a directory's entries are on the disk. */
int sync_directory(const unsigned char *path);

/** Closes its handle when it ends. */
class OpenFile {
  public:
    OpenFile() = default;

    /** Takes over a handle; -1 stands for none. */
    explicit OpenFile(int handle) : handle_(handle) {}

    OpenFile(OpenFile &&other) noexcept : handle_(other.release()) {}
    OpenFile &operator=(OpenFile &&other) noexcept {
        if (this != &other) {
            close();
            handle_ = other.release();
        }
        return *this;
    }
    ~OpenFile() { close(); }

    int handle() const { return handle_; }
    explicit operator bool() const { return handle_ > 0; }

    /** Gives up ownership. */
    [[nodiscard]] int release() { return std::exchange(handle_, -1); }

    /** CM_close now: -1 when bytes were lost; 0 when no file is held. */
    int close() { return handle_ > 0 ? CM_close(release()) : 0; }

  private:
    int handle_ = -1;
};

} // namespace acc

#endif
