#include "common/save_file.h"

#include <limits.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "common/stream.h"

namespace acc {

namespace {

using Path = unsigned char[PATH_MAX];

const char *c_path(const unsigned char *path) {
    return reinterpret_cast<const char *>(path);
}

/**
 * A file that is being written beside its target, under a name that no catalogue lists.
 * Unless it was moved to its target it is removed at the end.
 */
class Beside {
  public:
    Beside(const unsigned char *target, mode_t mode) {
        const char *slash = std::strrchr(c_path(target), '/');
        const int bytes = slash ? static_cast<int>(slash - c_path(target)) + 1 : 0;
        std::snprintf(reinterpret_cast<char *>(directory_), sizeof directory_, "%.*s", bytes,
                      c_path(target));
        do {
            const int length = std::snprintf(reinterpret_cast<char *>(name_), sizeof name_,
                                             "%s.accsym-save-%ld-%u", c_path(directory_),
                                             static_cast<long>(getpid()), number_++);
            if (length < 0 || static_cast<std::size_t>(length) >= sizeof name_) return;
            errno = 0;
            file_ = OpenFile(create_new(name_, mode));
        } while (!file_ && errno == EEXIST); // left by a process that was killed
        exists_ = static_cast<bool>(file_);
    }
    ~Beside() {
        file_.close();
        if (exists_) CM_remove(name_);
    }
    Beside(const Beside &) = delete;
    Beside &operator=(const Beside &) = delete;

    explicit operator bool() const { return exists_; }

    int handle() const { return file_.handle(); }

    bool write(std::span<const unsigned char> bytes) {
        return write_all(handle(), bytes.data(), bytes.size()) && sync(handle()) == 0 &&
               file_.close() == 0;
    }

    /** Notes that the file has moved to its target, and syncs their directory. */
    SaveResult moved() {
        exists_ = false;
        // The new file is in place, whatever the system says of its directory.
        sync_directory(directory_[0] ? directory_ : reinterpret_cast<const unsigned char *>("."));
        return SaveResult::saved;
    }

    const unsigned char *name() const { return name_; }

  private:
    Path directory_, name_;
    OpenFile file_;
    unsigned number_ = 0;
    bool exists_ = false;
};

} // namespace

SaveResult replace_file(const unsigned char *path, std::span<const unsigned char> bytes) {
    Path target;
    struct stat status;
    if (!realpath(c_path(path), reinterpret_cast<char *>(target)) ||
        stat(c_path(target), &status) != 0 || !OpenFile(CM_open(target, "r+b"))) {
        return SaveResult::cannot_create;
    }
    Beside file(target, S_IRUSR | S_IWUSR); // nobody else's before it has its group
    if (!file) return SaveResult::cannot_create;
    take_after(file.handle(), status);
    if (!file.write(bytes) || rename_file(file.name(), target) != 0) {
        return SaveResult::write_failed;
    }
    return file.moved();
}

SaveResult create_file(const unsigned char *path, std::span<const unsigned char> bytes) {
    Beside file(path, 0666);
    if (!file) return SaveResult::cannot_create;
    if (!file.write(bytes)) return SaveResult::write_failed;
    switch (move_new(file.name(), path)) {
        case Move::moved:
            return file.moved();
        case Move::taken:
            return SaveResult::taken;
        case Move::failed:
            break;
    }
    return SaveResult::write_failed;
}

} // namespace acc
