// output_file.cpp - see output_file.h.
#include "cli/output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
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

/** @return 0, or why not all is written; a signal that asks to end is a reason */
int write_all(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) return errno;
        if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
        if (!bytes.empty() && StopSignals::came()) return EINTR;
    }
    return 0;
}

} // namespace

OutputFile::OutputFile(std::string path, const std::string &option)
    : path_(std::move(path)), is_there_(stat(path_.c_str(), &status_) == 0) {
    if (path_.empty()) throw Failure(FailureKind::refused, option + " takes the name of a file");
    if (!is_there_ && errno != ENOENT) fail(FailureKind::refused, path_, errno);
    if (is_there_ && S_ISDIR(status_.st_mode)) fail(FailureKind::refused, path_, EISDIR);
    const std::string looked_at = is_there_ ? path_ : folder_of(path_);
    if (access(looked_at.c_str(), W_OK) != 0) fail(FailureKind::refused, path_, errno);
}

bool OutputFile::may_be_replaced() const {
    struct stat itself {};
    if (lstat(path_.c_str(), &itself) != 0) return errno == ENOENT;
    return S_ISREG(itself.st_mode) && itself.st_nlink == 1 && itself.st_uid == geteuid() &&
           access(folder_of(path_).c_str(), W_OK) == 0;
}

void OutputFile::write(std::string_view bytes) const {
    const StopSignals signals; // a pipe that nobody reads any more is a failure like others
    if (is_there_ && is_standard_output(status_)) {
        if (const int reason = write_all(STDOUT_FILENO, bytes)) {
            fail(FailureKind::failed, path_, reason);
        }
        return;
    }
    if (may_be_replaced()) {
        replace_file(path_, {reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size()},
                     0666);
        if (is_there_) chmod(path_.c_str(), status_.st_mode & 07777);
        return;
    }
    // Not O_CREAT for what is there: some systems refuse it for a pipe of somebody else's.
    const int create = is_there_ ? 0 : O_CREAT;
    const int file = open(path_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NOCTTY | create, 0666);
    if (file < 0) fail(FailureKind::failed, path_, errno);
    int reason = write_all(file, bytes);
    if (close(file) != 0 && reason == 0) reason = errno;
    if (reason != 0) fail(FailureKind::failed, path_, reason);
}

} // namespace kigou
