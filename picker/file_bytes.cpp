// file_bytes.cpp - see file_bytes.h.
#include "picker/file_bytes.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <utility>

#include "picker/failure.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

constexpr std::size_t piece_bytes = 65536;
constexpr int most_tries = 5; // to read a file that others write to

/** A descriptor that is closed at the end. */
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number() const { return number_; }
    /** Closes it now. @return whether nothing was lost */
    bool close() { return ::close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

[[noreturn]] void fail_reading(const std::string &path, int reason) {
    throw Failure(FailureKind::failed,
                  sentence("cannot read {1}: {2}", path, std::strerror(reason)));
}

[[noreturn]] void fail_writing(const std::string &path, int reason) {
    throw Failure(FailureKind::failed,
                  sentence("cannot write {1}: {2}", path, std::strerror(reason)));
}

std::int64_t nanoseconds(const timespec &time) {
    return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec;
}

FileIdentity identity_of(const struct stat &file) {
    return {file.st_dev, file.st_ino, file.st_size, nanoseconds(file.st_mtim),
            nanoseconds(file.st_ctim)};
}

struct stat status_of(int descriptor, const std::string &path) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0) fail_reading(path, errno);
    return status;
}

int open_regular(const std::string &path) {
    // A pipe would be waited for otherwise.
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (file < 0) fail_reading(path, errno);
    struct stat status {};
    const bool known = fstat(file, &status) == 0;
    if (known && S_ISREG(status.st_mode)) return file;
    const int reason = errno;
    ::close(file);
    if (!known) fail_reading(path, reason);
    throw Failure(FailureKind::failed,
                  S_ISDIR(status.st_mode)
                      ? sentence("cannot read {1}: it is a directory and so no symbol file", path)
                      : sentence("cannot read {1}: it is no file and so no symbol file", path));
}

/** Up to that many bytes from the start of the file. */
Sjis read_up_to(int descriptor, const std::string &path, std::size_t most_bytes, off_t expected) {
    Sjis bytes;
    bytes.reserve(std::min(most_bytes, static_cast<std::size_t>(expected) + 1));
    if (lseek(descriptor, 0, SEEK_SET) != 0) fail_reading(path, errno);
    while (bytes.size() < most_bytes) {
        const std::size_t before = bytes.size();
        bytes.resize(std::min(before + piece_bytes, most_bytes));
        const ssize_t count = read(descriptor, bytes.data() + before, bytes.size() - before);
        if (count < 0 && errno != EINTR) fail_reading(path, errno);
        bytes.resize(before + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0) break;
    }
    return bytes;
}

void write_all(int descriptor, std::span<const unsigned char> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    errno = 0;
}

/** Has the system write a new name to the disk. The file is there whatever comes of that. */
void sync_folder_of(const std::string &path) {
    const auto slash = path.rfind('/');
    const std::string folder = slash == path.npos ? "." : path.substr(0, slash + 1);
    const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.number() >= 0) fsync(descriptor.number());
}

/** A file that is whole and on the disk, under a name of its own beside the one it is to have. */
class Beside {
  public:
    Beside(const std::string &path, std::span<const unsigned char> bytes, mode_t mode)
        : name_(name_beside(path)) {
        unlink(name_.c_str()); // of a process of that number that was killed
        Descriptor file(open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (file.number() < 0) fail_writing(path, errno);
        flock(file.number(), LOCK_EX | LOCK_NB);
        write_all(file.number(), bytes);
        int reason = errno;
        if (reason == 0 && fsync(file.number()) != 0) reason = errno;
        if (!file.close() && reason == 0) reason = errno;
        if (reason == 0) return;
        unlink(name_.c_str());
        fail_writing(path, reason);
    }
    ~Beside() { unlink(name_.c_str()); } // nothing is there once it was renamed
    Beside(const Beside &) = delete;
    Beside &operator=(const Beside &) = delete;

    const char *name() const { return name_.c_str(); }

  private:
    static std::string name_beside(const std::string &path) {
        static std::atomic<unsigned> number{0};
        const auto slash = path.rfind('/');
        return path.substr(0, slash == path.npos ? 0 : slash + 1) + unfinished_prefix +
               std::to_string(getpid()) + "-w" + std::to_string(number++);
    }

    std::string name_;
};

} // namespace

std::optional<FileIdentity> identity_of(const std::string &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return identity_of(status);
}

FileBytes read_file(const std::string &path, std::size_t most_bytes) {
    const Descriptor file(open_regular(path));
    struct stat before = status_of(file.number(), path);
    for (int tries = 0; tries < most_tries; ++tries) {
        if (static_cast<std::uint64_t>(before.st_size) > most_bytes) {
            throw Failure(
                FailureKind::failed,
                sentence("cannot read {1}: it has {2} bytes, and a symbol file {3} at most", path,
                         std::to_string(before.st_size), std::to_string(most_bytes)));
        }
        Sjis bytes = read_up_to(file.number(), path, most_bytes, before.st_size);
        const struct stat after = status_of(file.number(), path);
        if (identity_of(after) == identity_of(before) &&
            bytes.size() == static_cast<std::size_t>(after.st_size)) {
            return {std::move(bytes), identity_of(after)};
        }
        before = after;
    }
    throw Failure(FailureKind::failed,
                  sentence("cannot read {1}: another program is writing to it", path), {},
                  {{Remedy::try_again}});
}

Sjis read_head(const std::string &path, std::size_t most_bytes) {
    const Descriptor file(open_regular(path));
    return read_up_to(file.number(), path, most_bytes, 0);
}

bool write_new(const std::string &path, std::span<const unsigned char> bytes, mode_t mode) {
    const Beside fresh(path, bytes, mode);
    // A link replaces nothing. Where there are none the name is asked for, and then taken.
    int reason = link(fresh.name(), path.c_str()) == 0 ? 0 : errno;
    if (reason != 0 && reason != EEXIST && access(path.c_str(), F_OK) != 0) {
        reason = rename(fresh.name(), path.c_str()) == 0 ? 0 : errno;
    }
    if (reason != 0 && reason != EEXIST) fail_writing(path, reason);
    if (reason == 0) sync_folder_of(path);
    return reason == 0;
}

void replace_file(const std::string &path, std::span<const unsigned char> bytes, mode_t mode) {
    const Beside fresh(path, bytes, mode);
    if (rename(fresh.name(), path.c_str()) != 0) fail_writing(path, errno);
}

} // namespace kigou
