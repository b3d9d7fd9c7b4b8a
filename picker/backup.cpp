// backup.cpp - see backup.h.
#include "picker/backup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "picker/failure.h"
#include "picker/file_bytes.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longest_name = 200; // bytes, of at most 255 with what is added

/** A title as the name of a file; the name of the set's own file for one that cannot be. */
std::string name_of(const std::string &path, const std::string &title) {
    const bool odd = title.empty() || title.front() == '.' || title.size() > longest_name ||
                     std::any_of(title.begin(), title.end(), [](char byte) {
                         return byte == '/' || (byte >= 0 && byte < 0x20) || byte == 0x7F;
                     });
    return odd ? fs::path(path).filename().string() : title + ".kig";
}

[[noreturn]] void fail(const std::string &path, const std::string &copy, int reason) {
    throw Failure(FailureKind::failed, "cannot keep " + path + " as it was in " + copy + ": " +
                                           std::strerror(reason) + "; nothing is changed");
}

/** The folder of the backups, made when it is missing. */
fs::path folder_of(const std::string &path) {
    fs::path folder = fs::path(path).parent_path() / "backup";
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) fail(path, folder.string(), errno);
    return folder;
}

/** Renames a file. Of two names of one file the system would keep both. */
bool move(const std::string &from, const std::string &to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return false;
    unlink(from.c_str());
    return true;
}

} // namespace

Backup::Backup(const std::string &path, const std::string &title)
    : copy_((folder_of(path) / name_of(path, title)).string()), fresh_(copy_ + ".new") {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) fail(path, copy_, errno);
    // One that is there is of a process that was killed behind its save: the newer backup.
    move(fresh_, copy_);
    // A save replaces the file and a deletion removes a name: a second name keeps the bytes, also
    // where there is no room for a copy.
    if (linkat(AT_FDCWD, path.c_str(), AT_FDCWD, fresh_.c_str(), AT_SYMLINK_FOLLOW) == 0) return;
    const mode_t mode = (status.st_mode & 0777) | S_IWUSR;
    if (!write_new(fresh_, read_file(path).bytes, mode)) fail(path, copy_, EEXIST);
}

Backup::~Backup() {
    if (!kept_) unlink(fresh_.c_str());
}

std::string Backup::keep() {
    kept_ = true; // under one name or the other
    return move(fresh_, copy_) ? copy_ : fresh_;
}

std::string keep_beside(const std::string &path, const std::string &title,
                        std::span<const unsigned char> bytes) {
    std::string copy = (folder_of(path) / ("unsaved-" + name_of(path, title))).string();
    unlink(copy.c_str());
    if (!write_new(copy, bytes, 0600)) fail(path, copy, EEXIST);
    return copy;
}

} // namespace kigou
