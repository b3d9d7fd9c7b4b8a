// pick_file.cpp - see pick_file.h.
#include "cli/pick_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "cli/stop_signals.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"

namespace kigou {
namespace {

[[noreturn]] void fail(FailureKind kind, const std::string &path, int reason) {
    throw Failure(kind, "cannot write " + path + ": " + std::strerror(reason));
}

std::string folder_of(const std::string &path) {
    const auto slash = path.rfind('/');
    return slash == path.npos ? "." : path.substr(0, slash + 1);
}

/** Such as /dev/stdout: a second opening of a file would begin at its start again. */
bool is_standard_output(const struct stat &file) {
    struct stat output {};
    return fstat(STDOUT_FILENO, &output) == 0 && output.st_dev == file.st_dev &&
           output.st_ino == file.st_ino;
}

} // namespace

PickFile::PickFile(std::string path)
    : path_(std::move(path)), is_there_(stat(path_.c_str(), &status_) == 0) {
    if (path_.empty()) throw Failure(FailureKind::refused, "--pick-to takes the name of a file");
    if (!is_there_ && errno != ENOENT) fail(FailureKind::refused, path_, errno);
    if (is_there_ && S_ISDIR(status_.st_mode)) fail(FailureKind::refused, path_, EISDIR);
    const std::string looked_at = is_there_ ? path_ : folder_of(path_);
    if (access(looked_at.c_str(), W_OK) != 0) fail(FailureKind::refused, path_, errno);
}

bool PickFile::may_be_replaced() const {
    struct stat itself {};
    if (lstat(path_.c_str(), &itself) != 0) return errno == ENOENT;
    return S_ISREG(itself.st_mode) && itself.st_nlink == 1 && itself.st_uid == geteuid() &&
           access(folder_of(path_).c_str(), W_OK) == 0;
}

void PickFile::write(const std::string &text) const {
    const StopSignals signals; // a pipe that nobody reads any more is a failure like others
    if (is_there_ && is_standard_output(status_)) {
        if (dprintf(STDOUT_FILENO, "%s", text.c_str()) < 0) fail(FailureKind::failed, path_, errno);
        return;
    }
    if (may_be_replaced()) {
        replace_file(path_, {reinterpret_cast<const unsigned char *>(text.data()), text.size()},
                     0666);
        if (is_there_) chmod(path_.c_str(), status_.st_mode & 07777);
        return;
    }
    // Not O_CREAT for what is there: some systems refuse it for a pipe of somebody else's.
    const int create = is_there_ ? 0 : O_CREAT;
    const int file = open(path_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NOCTTY | create, 0666);
    if (file < 0) fail(FailureKind::failed, path_, errno);
    int reason = dprintf(file, "%s", text.c_str()) < 0 ? errno : 0;
    if (close(file) != 0 && reason == 0) reason = errno;
    if (reason != 0) fail(FailureKind::failed, path_, reason);
}

} // namespace kigou
