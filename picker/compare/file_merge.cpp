// file_merge.cpp - see file_merge.h.
#include "picker/compare/file_merge.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <optional>
#include <thread>
#include <utility>

#include "picker/compare/whole_set.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr mode_t mode_of_new = 0644;

Snapshot snapshot_of(const Sjis &bytes, const std::string &name) {
    return Snapshot::of_text(text_form(bytes), name);
}

SymbolSet whole_set_in(const Sjis &bytes, const std::string &name) {
    refuse_damage(name, bytes);
    const Snapshot snapshot = snapshot_of(bytes, name);
    // A file may do without its last line end, which a snapshot may have or not.
    Sjis read = disk_form(snapshot.text()), ended = bytes;
    for (Sjis *const one : {&read, &ended}) {
        if (!one->empty() && one->back() != '\n') one->push_back('\n');
    }
    if (read != ended) refuse_loose_lines(name);
    return whole_set_of(snapshot);
}

void write(const std::string &to, const Sjis &bytes, const std::string &ours,
           const FileIdentity &was) {
    if (identity_of(ours) != was) {
        throw Failure(FailureKind::changed, ours + " was changed by another program meanwhile", {},
                      {{Remedy::try_again}});
    }
    struct stat status {};
    const bool is_there = stat(to.c_str(), &status) == 0;
    replace_file(to, bytes, is_there ? status.st_mode & 07777 : mode_of_new);
}

/** Only where sets are edited under a lock: a folder of other files gets none. */
std::optional<FolderLock> lock_of_sets(const std::string &file, const EditHooks &hooks) {
    const fs::path folder = fs::absolute(file).parent_path();
    std::error_code error;
    if (!fs::exists(folder / lock_name, error)) return std::nullopt;
    return std::optional<FolderLock>(std::in_place, folder.string(), hooks);
}

/** Held by one merge into a file, which may be in any folder, while another one waits. */
class FileLock {
  public:
    /** @throws Failure (busy) */
    FileLock(const std::string &path, const EditHooks &hooks) {
        const auto end = std::chrono::steady_clock::now() + hooks.patience;
        while (!try_to_lock(path)) {
            stop_if_asked(hooks);
            if (std::chrono::steady_clock::now() >= end) {
                throw Failure(FailureKind::busy,
                              "another program has held " + path + " all the while", {},
                              {{Remedy::try_again}});
            }
            std::this_thread::sleep_for(pause);
        }
    }
    ~FileLock() {
        if (file_ >= 0) close(file_);
    }
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

  private:
    static constexpr std::chrono::milliseconds pause{5};

    /** A file that is not there needs no lock; one that was replaced meanwhile is another. */
    bool try_to_lock(const std::string &path) {
        file_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (file_ < 0) return true;
        const bool is_busy = flock(file_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        struct stat held {
        }, there{};
        const bool is_same = fstat(file_, &held) == 0 && stat(path.c_str(), &there) == 0 &&
                             held.st_ino == there.st_ino && held.st_dev == there.st_dev;
        if (is_same && !is_busy) return true;
        close(std::exchange(file_, -1));
        return false;
    }

    int file_ = -1;
};

/** Where a link leads. @throws Failure (refused) for what no symbol file can be put in place of */
std::string target_of(const std::string &path) {
    std::error_code error;
    std::string target =
        fs::is_symlink(path, error) ? fs::weakly_canonical(path, error).string() : path;
    struct stat status {};
    if (stat(target.c_str(), &status) != 0) return target;
    if (!S_ISREG(status.st_mode)) {
        throw Failure(FailureKind::refused, path + " is no file that could be replaced");
    }
    if (access(target.c_str(), W_OK) != 0) {
        throw Failure(FailureKind::refused, path + " cannot be written: " + std::strerror(errno));
    }
    return target;
}

} // namespace

std::vector<Conflict> merge_files(const std::string &base, const std::string &ours,
                                  const std::string &theirs, const std::string &named,
                                  const EditHooks &hooks) {
    const std::string to = target_of(named);
    const std::optional<FolderLock> lock = lock_of_sets(to, hooks);
    const FileLock of_file(to, hooks);
    const Sjis before = read_file(base).bytes;
    const auto [left, identity] = read_file(ours);
    const Sjis right = read_file(theirs).bytes;
    if (left == right || right == before || left == before) {
        write(to, left == before ? right : left, ours, identity);
        return {};
    }
    const SymbolSet in_ours = whole_set_in(left, ours);
    SymbolSet nothing;
    nothing.file = in_ours.file;
    MergedSet merged = merged_sets(before.empty() ? nothing : set_of(snapshot_of(before, base)),
                                   in_ours, whole_set_in(right, theirs));
    const Sjis text = text_of(merged.set), bytes = disk_form(text);
    if (text_of(set_of(snapshot_of(bytes, to))) != text) {
        throw Failure(FailureKind::failed, "the merged set would not be read back as it is");
    }
    write(to, bytes, ours, identity);
    return std::move(merged.conflicts);
}

} // namespace kigou
