#include "common/directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "common/faults.h"

namespace acc {

DirectoryListing::DirectoryListing(const unsigned char *path)
    : stream_(fault_hits(Operation::directory) ? nullptr
                                               : opendir(reinterpret_cast<const char *>(path))) {}

DirectoryListing::~DirectoryListing() {
    if (stream_) closedir(static_cast<DIR *>(stream_));
}

const unsigned char *DirectoryListing::next() {
    errno = 0;
    const dirent *entry =
        fault_hits(Operation::directory) ? nullptr : readdir(static_cast<DIR *>(stream_));
    failed_ = entry == nullptr && errno != 0;
    entry_ = entry;
    return entry ? reinterpret_cast<const unsigned char *>(entry->d_name) : nullptr;
}

int DirectoryListing::read_head(unsigned char *buffer, unsigned size) const {
    const auto *const entry = static_cast<const dirent *>(entry_);
    const bool is_known = entry->d_type != DT_UNKNOWN && entry->d_type != DT_LNK;
    if (is_known && entry->d_type != DT_REG) {
        errno = EISDIR;
        return -1;
    }
    if (fault_hits(Operation::open)) return -1;
    // O_NONBLOCK: opening a pipe does not wait for its other end.
    const int descriptor = openat(dirfd(static_cast<DIR *>(stream_)), entry->d_name,
                                  O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return -1;
    struct stat status {};
    const bool is_regular =
        is_known || (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode));
    ssize_t count = -1;
    if (!is_regular) {
        errno = EISDIR;
    } else if (!fault_hits(Operation::read)) {
        count = read(descriptor, buffer, size);
    }
    const int reason = errno;
    close(descriptor);
    errno = reason;
    return static_cast<int>(count);
}

} // namespace acc
