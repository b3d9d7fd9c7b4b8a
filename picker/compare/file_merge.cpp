// file_merge.cpp - see file_merge.h.
#include "picker/compare/file_merge.h"

#include <sys/stat.h>

#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/set_text.h"

namespace kigou {
namespace {

constexpr mode_t mode_of_new = 0644;

Sjis text_of(const SymbolSet &set) {
    const Title file = title_of(set.file);
    SetText text(file);
    for (const SetBlock &block : set.blocks) {
        const Title path = joined(file, block.path);
        text.add(title_of(above(path.sjis, file.sjis.size())), path.sjis, block.data);
    }
    return text.text();
}

SymbolSet set_in(const Sjis &bytes, const std::string &name) {
    return set_of(Snapshot::of_text(text_form(bytes), name));
}

/** @throws Failure for a file that has more than titles and symbols */
SymbolSet whole_set_in(const Sjis &bytes, const std::string &name) {
    SymbolSet set = set_in(bytes, name);
    if (disk_form(text_of(set)) != bytes) {
        throw Failure(FailureKind::failed,
                      name + " has lines that are in no title; a merge would lose them", {},
                      {{Remedy::mend_file, name}});
    }
    return set;
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

} // namespace

std::vector<Conflict> merge_files(const std::string &base, const std::string &ours,
                                  const std::string &theirs, const std::string &to) {
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
    MergedSet merged = merged_sets(before.empty() ? nothing : set_in(before, base), in_ours,
                                   whole_set_in(right, theirs));
    const Sjis text = text_of(merged.set), bytes = disk_form(text);
    if (text_of(set_in(bytes, to)) != text) {
        throw Failure(FailureKind::failed, "the merged set would not be read back as it is");
    }
    write(to, bytes, ours, identity);
    return std::move(merged.conflicts);
}

} // namespace kigou
