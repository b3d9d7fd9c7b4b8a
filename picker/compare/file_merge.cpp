// file_merge.cpp - see file_merge.h.
#include "picker/compare/file_merge.h"

#include <sys/stat.h>

#include <filesystem>
#include <optional>

#include "picker/compare/whole_set.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"

namespace kigou {
namespace {

constexpr mode_t mode_of_new = 0644;

Snapshot snapshot_of(const Sjis &bytes, const std::string &name) {
    return Snapshot::of_text(text_form(bytes), name);
}

SymbolSet whole_set_in(const Sjis &bytes, const std::string &name) {
    const Snapshot snapshot = snapshot_of(bytes, name);
    if (disk_form(snapshot.text()) != bytes) refuse_loose_lines(name);
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
    const std::filesystem::path folder = std::filesystem::absolute(file).parent_path();
    std::error_code error;
    if (!std::filesystem::exists(folder / lock_name, error)) return std::nullopt;
    return std::optional<FolderLock>(std::in_place, folder.string(), hooks);
}

} // namespace

std::vector<Conflict> merge_files(const std::string &base, const std::string &ours,
                                  const std::string &theirs, const std::string &to,
                                  const EditHooks &hooks) {
    const std::optional<FolderLock> lock = lock_of_sets(to, hooks);
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
