// file_merge.cpp - see file_merge.h.
#include "picker/compare/file_merge.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
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
    /** A file that is not there needs none. @throws Failure as FolderLock */
    FileLock(const std::string &path, const EditHooks &hooks) {
        const std::string folder = fs::absolute(path).parent_path().string();
        while ((file_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) >= 0) {
            try {
                wait_for_lock(file_, path, folder, hooks);
            } catch (...) {
                close(file_);
                throw;
            }
            if (is_still(path)) return;
            close(file_); // it was replaced meanwhile
        }
    }
    ~FileLock() {
        if (file_ >= 0) close(file_);
    }
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

  private:
    bool is_still(const std::string &path) const {
        struct stat held {
        }, there{};
        return fstat(file_, &held) == 0 && stat(path.c_str(), &there) == 0 &&
               held.st_ino == there.st_ino && held.st_dev == there.st_dev;
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
