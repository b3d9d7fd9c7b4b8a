// folder_lock.cpp - see folder_lock.h.
#include "picker/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>
#include <utility>

#include "picker/failure.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

constexpr std::chrono::milliseconds first_pause{1};
constexpr std::chrono::milliseconds longest_pause{50};

[[noreturn]] void fail(const std::string &path) {
    if (errno == ELOOP) {
        throw Failure(FailureKind::failed,
                      sentence("cannot lock {1}: it is a link; remove it", path));
    }
    throw Failure(FailureKind::failed,
                  sentence("cannot lock {1}: {2}", path, std::strerror(errno)));
}

/** Who may write in the folder may lock it, and nobody else. */
mode_t lock_mode(const std::string &folder) {
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0) return 0600;
    return 0600 | ((status.st_mode & S_IWGRP) != 0 ? 0060 : 0) |
           ((status.st_mode & S_IWOTH) != 0 ? 0006 : 0);
}

/** The lock file, made when it is missing; -1 where none is needed. */
int open_lock(const std::string &folder, const std::string &path) {
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    int file = open(path.c_str(), flags | O_CREAT | O_EXCL, 0600);
    if (file >= 0) {
        fchmod(file, lock_mode(folder));
    } else if (errno == EEXIST) {
        file = open(path.c_str(), flags);
    }
    // One that another person made can be locked all the same.
    if (file < 0 && errno == EACCES) {
        file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    }
    const bool needless = errno == EACCES || errno == EROFS || errno == ENOENT || errno == ENOTDIR;
    if (file < 0 && !needless) fail(path);
    return file;
}

} // namespace

void stop_if_asked(const EditHooks &hooks) {
    if (hooks.stopped && hooks.stopped()) {
        throw Failure(FailureKind::interrupted, "stopped; nothing was saved");
    }
}

bool wait_for_lock(int file, const std::string &path, const std::string &folder,
                   const EditHooks &hooks) {
    const auto end = std::chrono::steady_clock::now() + hooks.patience;
    auto pause = first_pause;
    for (bool told = false; flock(file, LOCK_EX | LOCK_NB) != 0;) {
        if (errno == EINTR) continue;
        if (errno == ENOLCK || errno == EOPNOTSUPP || errno == EINVAL) return false;
        if (errno != EWOULDBLOCK) fail(path);
        stop_if_asked(hooks);
        if (!std::exchange(told, true) && hooks.waits) hooks.waits(folder);
        if (std::chrono::steady_clock::now() >= end) {
            throw Failure(FailureKind::busy,
                          sentence("another program has been editing the sets in {1} all the "
                                   "while, so nothing was done",
                                   folder),
                          {}, {{Remedy::try_again}});
        }
        std::this_thread::sleep_for(pause);
        pause = std::min(2 * pause, longest_pause);
    }
    return true;
}

FolderLock::FolderLock(const std::string &folder, const EditHooks &hooks) {
    if (folder.empty()) return;
    const std::string path = folder + "/" + lock_name;
    file_ = open_lock(folder, path);
    if (file_ < 0) return;
    try {
        if (!wait_for_lock(file_, path, folder, hooks)) close(std::exchange(file_, -1));
    } catch (...) {
        close(file_);
        throw;
    }
}

FolderLock::FolderLock(FolderLock &&other) noexcept : file_(std::exchange(other.file_, -1)) {}

FolderLock::~FolderLock() {
    if (file_ >= 0) close(file_);
}

} // namespace kigou
