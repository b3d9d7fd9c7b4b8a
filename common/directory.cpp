#include "common/directory.h"

#include <dirent.h>

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
    return entry ? reinterpret_cast<const unsigned char *>(entry->d_name) : nullptr;
}

} // namespace acc
