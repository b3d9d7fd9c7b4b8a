#include "common/directory.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/faults.h"

namespace acc {

DirectoryListing::DirectoryListing(const unsigned char *path)
    : stream_(fault_hits(Operation::directory) ? nullptr
                                               : opendir(reinterpret_cast<const char *>(path))) {}

DirectoryListing::~DirectoryListing() {
    if (stream_) closedir(static_cast<DIR *>(stream_));
}

const unsigned char *DirectoryListing::next() {
    const dirent *entry = readdir(static_cast<DIR *>(stream_));
    return entry ? reinterpret_cast<const unsigned char *>(entry->d_name) : nullptr;
}

bool is_regular_file(const unsigned char *path) {
    struct stat status;
    return stat(reinterpret_cast<const char *>(path), &status) == 0 && S_ISREG(status.st_mode);
}

bool may_be_read(const unsigned char *path) {
    return access(reinterpret_cast<const char *>(path), R_OK) == 0;
}

} // namespace acc
