// writable.cpp - see writable.h.
#include "picker/writable.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace kigou {

bool is_writable(const std::string &path) {
    return access(path.c_str(), W_OK) == 0;
}

std::vector<std::string> why_not_written(const std::string &folder, const std::string &file) {
    std::vector<std::string> lines;
    struct statvfs disk {};
    if (statvfs(folder.c_str(), &disk) != 0) {
        lines.push_back("the folder " + folder + " cannot be reached: " + std::strerror(errno));
        return lines;
    }
    if ((disk.f_flag & ST_RDONLY) != 0) {
        lines.push_back("the file system of " + folder + " is mounted read-only");
    } else if (access(folder.c_str(), W_OK | X_OK) != 0) {
        lines.push_back("the folder " + folder + " cannot be written: " + std::strerror(errno));
    }
    if (!file.empty() && !is_writable(file)) {
        lines.push_back("the file " + file + " cannot be written: " + std::strerror(errno));
    }
    if (disk.f_bavail == 0) {
        lines.push_back("the disk of " + folder + " is full; make room on it");
    } else if (disk.f_files != 0 && disk.f_favail == 0) {
        lines.push_back("the disk of " + folder + " has no room for more files");
    }
    return lines;
}

} // namespace kigou
