#include "common/stream.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "common/faults.h"
#include "common/handle_table.h"

namespace acc {

namespace {

const char *c_path(const unsigned char *path) {
    return reinterpret_cast<const char *>(path);
}

/** Handle of a file just made; on failure the file is removed. */
int handle_of_new_file(int descriptor, const char *path) {
    if (descriptor < 0) return -1;
    // Says that this process lives: whoever finds the file and can lock it may clear it away. On
    // a file system without locks nothing says so.
    flock(descriptor, LOCK_EX | LOCK_NB);
    std::FILE *const stream = fdopen(descriptor, "w+b");
    if (stream == nullptr) close(descriptor);
    const int handle = claim_handle(stream);
    if (handle < 0) unlink(path);
    return handle;
}

} // namespace

int open_regular(const unsigned char *path, const char *mode) {
    if (fault_hits(Operation::open)) return -1;
    // O_NONBLOCK: opening a pipe does not wait for its other end.
    const int access = std::strcmp(mode, "rb") == 0 ? O_RDONLY : O_RDWR;
    const int descriptor = open(c_path(path), access | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return -1;
    struct stat status;
    const bool known = fstat(descriptor, &status) == 0;
    std::FILE *const stream = known && S_ISREG(status.st_mode) ? fdopen(descriptor, mode) : nullptr;
    if (stream == nullptr) {
        const int reason = known && !S_ISREG(status.st_mode) ? EISDIR : errno;
        close(descriptor);
        errno = reason;
        return -1;
    }
    return claim_handle(stream);
}

int create_temporary(unsigned char *name_template) {
    if (fault_hits(Operation::open)) return -1;
    char *const path = reinterpret_cast<char *>(name_template);
    return handle_of_new_file(mkostemp(path, O_CLOEXEC), path);
}

int create_new(const unsigned char *path, mode_t mode) {
    if (fault_hits(Operation::open)) return -1;
    const int descriptor = open(c_path(path), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    return handle_of_new_file(descriptor, c_path(path));
}

void take_after(int handle, const struct stat &other) {
    const int descriptor = fileno(stream_of(handle));
    mode_t mode = other.st_mode & 07777;
    // The owner first: changing it may clear bits of the mode.
    if (fchown(descriptor, other.st_uid, other.st_gid) != 0) {
        mode &= 0777;
        if (fchown(descriptor, static_cast<uid_t>(-1), other.st_gid) != 0) {
            mode &= ~static_cast<mode_t>(S_IRWXG);
        }
    }
    fchmod(descriptor, mode);
}

int flush(int handle) {
    std::FILE *const stream = stream_of(handle);
    if (stream == nullptr) return -1;
    if (!fault_hits(Operation::flush) && std::fflush(stream) == 0) return 0;
    mark_failed(handle);
    return -1;
}

int sync(int handle) {
    if (flush(handle) != 0 || fault_hits(Operation::sync)) return -1;
    return fsync(fileno(stream_of(handle))) == 0 ? 0 : -1;
}

bool stream_failed(int handle) {
    return is_marked_failed(handle);
}

int rename_file(const unsigned char *from, const unsigned char *to) {
    if (fault_hits(Operation::rename)) return -1;
    return std::rename(c_path(from), c_path(to)) == 0 ? 0 : -1;
}

Move move_new(const unsigned char *from, const unsigned char *to) {
    if (fault_hits(Operation::rename)) return Move::failed;
    if (link(c_path(from), c_path(to)) == 0) {
        unlink(c_path(from));
        return Move::moved;
    }
    if (errno == EEXIST) return Move::taken;
    // A file system without links: claim the name with an empty file, then replace that.
    OpenFile claim(create_new(to, 0600));
    if (!claim) return errno == EEXIST ? Move::taken : Move::failed;
    claim.close();
    if (std::rename(c_path(from), c_path(to)) == 0) return Move::moved;
    unlink(c_path(to));
    return Move::failed;
}

int sync_directory(const unsigned char *path) {
    if (fault_hits(Operation::sync)) return -1;
    const int descriptor = open(c_path(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return -1;
    // EINVAL: this file system has no sync of directories.
    const bool synced = fsync(descriptor) == 0 || errno == EINVAL;
    close(descriptor);
    return synced ? 0 : -1;
}

} // namespace acc
