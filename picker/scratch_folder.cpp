// scratch_folder.cpp - see scratch_folder.h.
#include "picker/scratch_folder.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "picker/directories.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr const char *prefix = "accsym-edit-";

/** A descriptor of the folder with its lock; -1 when another process has it. */
int lock_of(const std::string &path) {
    const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0 || flock(folder, LOCK_EX | LOCK_NB) == 0) return folder;
    close(folder);
    return -1;
}

} // namespace

ScratchFolder::ScratchFolder() {
    const fs::path parent = fs::absolute(temporary_directory());
    std::string name = (parent / (std::string(prefix) + "XXXXXX")).string();
    if (!mkdtemp(name.data())) {
        throw Failure(FailureKind::failed, sentence("cannot make a folder in {1}: {2}",
                                                    parent.string(), std::strerror(errno)));
    }
    path_ = name;
    lock_ = lock_of(path_);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    if (lock_ >= 0) close(lock_);
}

void sweep_scratch_folders() {
    std::error_code error;
    for (fs::directory_iterator entry(temporary_directory(), error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->path().filename().string().starts_with(prefix)) continue;
        const int lock = lock_of(entry->path().string());
        if (lock < 0) continue;
        struct stat status {};
        const bool own = fstat(lock, &status) == 0 && status.st_uid == geteuid();
        std::error_code ignored;
        if (own && status.st_mtime + youngest_leftover < std::time(nullptr)) {
            // What an edit puts there, and nothing else.
            for (const fs::directory_entry &file : fs::directory_iterator(entry->path(), ignored)) {
                const std::string name = file.path().filename().string();
                if (file.is_symlink(ignored) || name == scratch_file ||
                    name.starts_with(unfinished_prefix)) {
                    unlink(file.path().c_str());
                }
            }
            rmdir(entry->path().c_str());
        }
        close(lock);
    }
}

} // namespace kigou
