// backup.cpp - see backup.h.
#include "picker/backup.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "picker/failure.h"
#include "picker/file_bytes.h"

namespace kigou {

namespace fs = std::filesystem;

Backup::Backup(const std::string &path) {
    const fs::path folder = fs::path(path).parent_path() / "backup";
    copy_ = (folder / fs::path(path).filename()).string();
    fresh_ = copy_ + ".new";
    const auto fail = [&](int reason) {
        throw Failure(FailureKind::failed, "cannot keep " + path + " as it was in " + copy_ + ": " +
                                               std::strerror(reason) + "; nothing is changed");
    };
    struct stat status {};
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) fail(errno);
    if (stat(path.c_str(), &status) != 0) fail(errno);
    unlink(fresh_.c_str()); // of a process that was killed
    const mode_t mode = (status.st_mode & 0777) | S_IWUSR;
    if (!write_new(fresh_, read_file(path).bytes, mode)) fail(EEXIST);
}

Backup::~Backup() {
    if (!kept_) unlink(fresh_.c_str());
}

std::string Backup::keep() {
    kept_ = true; // under one name or the other
    return std::rename(fresh_.c_str(), copy_.c_str()) == 0 ? copy_ : fresh_;
}

} // namespace kigou
