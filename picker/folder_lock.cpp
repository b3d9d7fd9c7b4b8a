// folder_lock.cpp - see folder_lock.h.
#include "picker/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>
#include <utility>

#include "picker/failure.h"

namespace kigou {
namespace {

constexpr std::chrono::milliseconds first_pause{1};
constexpr std::chrono::milliseconds longest_pause{50};

[[noreturn]] void fail(const std::string &path) {
    throw Failure(FailureKind::failed, "cannot lock " + path + ": " + std::strerror(errno));
}

/** The lock file, made when it is missing; -1 where none is needed. */
int open_lock(const std::string &path) {
    int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
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

FolderLock::FolderLock(const std::string &folder, const EditHooks &hooks) {
    if (folder.empty()) return;
    const std::string path = folder + "/" + lock_name;
    file_ = open_lock(path);
    if (file_ < 0) return;
    const auto end = std::chrono::steady_clock::now() + hooks.patience;
    auto pause = first_pause;
    try {
        for (bool told = false; flock(file_, LOCK_EX | LOCK_NB) != 0;) {
            if (errno == EINTR) continue;
            if (errno == ENOLCK || errno == EOPNOTSUPP || errno == EINVAL) return;
            if (errno != EWOULDBLOCK) fail(path);
            stop_if_asked(hooks);
            if (!std::exchange(told, true) && hooks.waits) hooks.waits(folder);
            if (std::chrono::steady_clock::now() >= end) {
                throw Failure(FailureKind::busy,
                              "another program has been editing the sets in " + folder +
                                  " all the while, so nothing was done",
                              {}, {{Remedy::try_again}});
            }
            std::this_thread::sleep_for(pause);
            pause = std::min(2 * pause, longest_pause);
        }
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
