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
#include "picker/folder_lock.h"
#include "picker/sentence.h"
#include "picker/set_files.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longest_name = 200; // bytes, of at most 255 with what is added
constexpr const char *suffix = ".kig";
constexpr const char *fresh_suffix = ".kig.new"; // of a backup whose edit is not saved yet
constexpr const char *unsaved_prefix = "unsaved-";

/**
 * A title as the name of a file, without its suffix; the name of the set's own file for one that
 * cannot be, or that would be the name of an edit that is kept.
 */
std::string name_of(const std::string &path, const std::string &title) {
    const bool odd = title.empty() || title.front() == '.' || title.size() > longest_name ||
                     title.starts_with(unsaved_prefix) ||
                     std::any_of(title.begin(), title.end(), [](char byte) {
                         return byte == '/' || (byte >= 0 && byte < 0x20) || byte == 0x7F;
                     });
    if (!odd) return title;
    const fs::path name = fs::path(path).filename();
    return (name.extension() == suffix ? name.stem() : name).string();
}

[[noreturn]] void fail(const std::string &path, const std::string &copy, int reason) {
    throw Failure(FailureKind::failed,
                  sentence("cannot keep {1} as it was in {2}: {3}; nothing is changed", path, copy,
                           std::strerror(reason)));
}

/** The folder of the backups, made when it is missing. */
fs::path folder_of(const std::string &path) {
    fs::path folder = backup_folder(fs::path(path).parent_path());
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) fail(path, folder.string(), errno);
    return folder;
}

bool has_bytes(const std::string &path, std::span<const unsigned char> bytes) {
    try {
        const auto file = identity_of(path);
        return file && static_cast<std::size_t>(file->size) == bytes.size() &&
               std::ranges::equal(read_file(path).bytes, bytes);
    } catch (const Failure &) {
        return false;
    }
}

/** Renames a file. Of two names of one file the system would keep both. */
bool move(const std::string &from, const std::string &to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return false;
    unlink(from.c_str());
    return true;
}

/**
 * Ends what a process began that was killed within its edit. While a set is as in the copy nothing
 * was saved, and the copy goes; otherwise it is the newer backup.
 */
void settle(const std::string &fresh, const std::string &copy, const std::vector<SetFile> &sets) {
    try {
        const Sjis bytes = read_file(fresh).bytes;
        if (std::ranges::any_of(sets,
                                [&](const SetFile &set) { return has_bytes(set.path, bytes); })) {
            unlink(fresh.c_str());
            return;
        }
    } catch (const Failure &) {
        // What cannot be read may be the only copy.
    }
    move(fresh, copy);
}

/** What is in the folder of the backups of another folder and has no name yet. */
std::vector<std::string> fresh_copies(const std::string &folder) {
    std::vector<std::string> paths;
    std::error_code error;
    for (fs::directory_iterator entry(backup_folder(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().string().ends_with(fresh_suffix)) paths.push_back(entry->path());
    }
    return paths;
}

} // namespace

std::string backup_folder(const std::string &folder) {
    return (fs::path(folder) / "backup").string();
}

Backup::Backup(const std::string &path, const std::string &title)
    : copy_((folder_of(path) / (name_of(path, title) + suffix)).string()),
      fresh_((folder_of(path) / (name_of(path, title) + fresh_suffix)).string()) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) fail(path, copy_, errno);
    settle(fresh_, copy_, {{{}, path}});
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
    const std::string start = (folder_of(path) / (unsaved_prefix + name_of(path, title))).string();
    for (int number = 1;; ++number) {
        std::string copy = start + (number == 1 ? "" : "-" + std::to_string(number)) + suffix;
        std::error_code error;
        // One that is there needs no room on the disk, and another process may just have made it.
        const bool is_free = !fs::exists(fs::symlink_status(copy, error));
        if (is_free && write_new(copy, bytes, 0600)) return copy;
        const bool is_file = fs::is_regular_file(fs::symlink_status(copy, error));
        if (is_file && has_bytes(copy, bytes)) return copy;
    }
}

void settle_backups(const Directories &directories) {
    for (const std::string &folder : {directories.common, directories.program}) {
        if (fresh_copies(folder).empty()) continue;
        const FolderLock lock(folder, {.patience = {}});
        if (!lock) continue;
        const SetFiles sets = find_sets(directories);
        for (const std::string &fresh : fresh_copies(folder)) {
            const std::string copy = fresh.substr(0, fresh.rfind('.'));
            settle(fresh, copy, sets.sets);
        }
    }
}

} // namespace kigou
