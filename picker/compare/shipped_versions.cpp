// shipped_versions.cpp - see shipped_versions.h. The copies are named by the file that they are of,
// its size and its time, so that one look tells whether a version is kept.
#include "picker/compare/shipped_versions.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include "picker/compare/set_diff.h"
#include "picker/compare/whole_set.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/folder_lock.h"
#include "picker/shipped_sets.h"
#include "picker/symbol_data.h"
#include "picker/symbol_reading.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t most_bytes = 1 << 20; // of a set that is kept
constexpr const char *folder_of_copies = "shipped";

std::string beginning_of_copies(const std::string &shipped) {
    return fs::path(shipped).stem().string() + "-";
}

fs::path copy_of(const std::string &shipped, const FileIdentity &identity,
                 const std::string &state) {
    return fs::path(state) / folder_of_copies /
           (beginning_of_copies(shipped) + std::to_string(identity.size) + "-" +
            std::to_string(identity.modified) + ".kig");
}

std::vector<std::string> copies_of(const std::string &shipped, const std::string &state) {
    std::vector<std::string> copies;
    std::error_code error;
    for (fs::directory_iterator file(fs::path(state) / folder_of_copies, error), end;
         !error && file != end; file.increment(error)) {
        const bool is_one =
            file->path().filename().string().starts_with(beginning_of_copies(shipped));
        if (is_one) copies.push_back(file->path().string());
    }
    std::ranges::sort(copies);
    return copies;
}

/** @return the title, when there was another version before */
std::optional<std::string> keep(const std::string &shipped, const std::string &state) {
    const auto identity = identity_of(shipped);
    if (!identity || static_cast<std::size_t>(identity->size) > most_bytes) return std::nullopt;
    const fs::path copy = copy_of(shipped, *identity, state);
    std::error_code error;
    if (fs::exists(copy, error)) return std::nullopt;
    const Snapshot snapshot(shipped);
    const Sjis bytes = read_file(shipped).bytes;
    const std::vector<std::string> earlier = copies_of(shipped, state);
    const bool is_other = !earlier.empty() && std::ranges::none_of(earlier, [&](const auto &one) {
        return read_file(one).bytes == bytes;
    });
    make_private_directory(state);
    make_private_directory(copy.parent_path().string());
    write_new(copy.string(), bytes, 0600);
    return is_other ? std::optional(snapshot.file().text) : std::nullopt;
}

/** How much two sets differ. */
std::size_t distance(const SymbolSet &one, const SymbolSet &other) {
    std::size_t distance = 0;
    for (const Difference &difference : differences_of(one, other)) {
        distance +=
            1 + difference.added.size() + difference.removed.size() + difference.moved.size();
    }
    return distance;
}

/** Lines "copy TAB kept version"; those of files that are gone are left out. */
std::vector<std::string> noted_copies(const std::string &state) {
    std::vector<std::string> lines;
    std::error_code error;
    const std::string path = (fs::path(state) / folder_of_copies / "copies").string();
    if (!fs::exists(path, error)) return lines;
    const Sjis bytes = read_file(path, most_bytes).bytes;
    for (std::string &line :
         lines_of({reinterpret_cast<const char *>(bytes.data()), bytes.size()})) {
        if (fs::exists(line.substr(0, line.find('\t')), error)) lines.push_back(std::move(line));
    }
    return lines;
}

/** The kept version that a set was noted to be a copy of; nothing for no such. */
std::optional<std::string> noted_version(const std::string &copy, const std::string &state) {
    for (const std::string &line : noted_copies(state)) {
        if (line.starts_with(copy + "\t")) return line.substr(line.find('\t') + 1);
    }
    return std::nullopt;
}

bool is_version_of(const std::string &kept, const std::string &shipped) {
    return fs::path(kept).filename().string().starts_with(beginning_of_copies(shipped));
}

/** Whether at least half of the titles of the smaller set are in the other one. */
bool look_alike(const SymbolSet &one, const SymbolSet &other) {
    std::set<Sjis> paths;
    for (const SetBlock &block : one.blocks) paths.insert(block.path);
    const auto common = static_cast<std::size_t>(std::ranges::count_if(
        other.blocks, [&](const SetBlock &block) { return paths.contains(block.path); }));
    return common > 0 && 2 * common >= std::min(one.blocks.size(), other.blocks.size());
}

/** The version that a set is a copy of. @throws Failure (refused) when none is known */
SymbolSet copied_version(const std::string &shipped, const std::string &copy, const SymbolSet &now,
                         const SymbolSet &ours, const std::string &state) {
    const std::string of = Snapshot(shipped).file().text;
    const auto noted = noted_version(copy, state);
    std::error_code error;
    if (noted && !is_version_of(*noted, shipped)) {
        throw Failure(FailureKind::refused, title_of(ours.file).text + " is no copy of " + of);
    }
    if (noted && fs::exists(*noted, error)) return set_of(Snapshot(*noted));
    std::optional<SymbolSet> nearest;
    for (const std::string &kept : copies_of(shipped, state)) {
        try {
            SymbolSet version = set_of(Snapshot(kept));
            version.file = ours.file; // a copy under another title is as near
            if (text_of(version) == text_of(now)) continue;
            if (!nearest || distance(version, ours) < distance(*nearest, ours)) {
                nearest = std::move(version);
            }
        } catch (const Failure &) {
            // One that is damaged is of no use.
        }
    }
    if (!nearest) {
        throw Failure(
            FailureKind::refused,
            "no earlier version of " + of + " is known, so what is new in it cannot be told",
            {"'kigou diff' compares the two"});
    }
    if (!look_alike(*nearest, ours)) {
        throw Failure(FailureKind::refused,
                      title_of(ours.file).text + " does not look like a copy of " + of);
    }
    return *nearest;
}

std::size_t symbols_of(const SymbolSet &set, const std::string &path) {
    const Title file = title_of(set.file);
    const auto block = std::ranges::find_if(
        set.blocks, [&](const SetBlock &one) { return joined(file, one.path).text == path; });
    return block == set.blocks.end() ? 0 : symbols_in(block->data).size();
}

std::vector<Change> changes_of(const SymbolSet &before, const SymbolSet &after) {
    static const std::map<DifferenceKind, ChangeKind> kinds{
        {DifferenceKind::added, ChangeKind::added},
        {DifferenceKind::removed, ChangeKind::removed},
        {DifferenceKind::moved, ChangeKind::moved},
        {DifferenceKind::order, ChangeKind::moved},
        {DifferenceKind::symbols, ChangeKind::put}};
    std::vector<Change> changes;
    for (const Difference &one : differences_of(before, after)) {
        Change change{.kind = kinds.at(one.kind), .path = one.path, .to = one.to};
        if (change.kind == ChangeKind::removed) change.symbols = one.removed.size();
        if (change.kind == ChangeKind::added) change.symbols = one.added.size();
        if (change.kind == ChangeKind::put) {
            change.symbols = symbols_of(after, one.path);
            change.before = symbols_of(before, one.path);
        }
        changes.push_back(std::move(change));
    }
    return changes;
}

} // namespace

std::vector<std::string> keep_shipped_versions(const Directories &directories,
                                               const std::string &state) {
    std::vector<std::string> titles;
    for (const std::string &shipped : shipped_files(directories)) {
        try {
            if (auto title = keep(shipped, state)) titles.push_back(std::move(*title));
        } catch (const Failure &) {
            // An update asks for an earlier version then and says that there is none.
        }
    }
    return titles;
}

std::optional<std::string> noted_origin(const std::string &copy, const Directories &directories,
                                        const std::string &state) {
    const auto noted = noted_version(copy, state);
    if (!noted) return std::nullopt;
    for (const std::string &shipped : shipped_files(directories)) {
        if (is_version_of(*noted, shipped)) return shipped;
    }
    return std::nullopt;
}

void note_copy(const std::string &copy, const std::string &shipped, const std::string &state) {
    const auto identity = identity_of(shipped);
    if (!identity || copy.find_first_of("\t\n") != std::string::npos) return;
    const fs::path folder = fs::path(state) / folder_of_copies;
    try {
        make_private_directory(state);
        make_private_directory(folder.string());
        const FolderLock lock(folder.string(), {});
        std::string text;
        for (const std::string &line : noted_copies(state)) {
            if (!line.starts_with(copy + "\t")) text += line + "\n";
        }
        text += copy + "\t" + copy_of(shipped, *identity, state).string() + "\n";
        replace_file((folder / "copies").string(),
                     {reinterpret_cast<const unsigned char *>(text.data()), text.size()}, 0600);
    } catch (const Failure &) {
        // An update takes the nearest version then.
    }
}

std::vector<Conflict> update_set(Edit &edit, const std::string &shipped, const std::string &state) {
    const Snapshot &opened = edit.located()->snapshot;
    for (const std::string &path : {opened.path(), shipped}) {
        refuse_damage(path, read_file(path).bytes);
    }
    const SymbolSet ours = whole_set_of(opened);
    SymbolSet now = whole_set_of(Snapshot(shipped));
    now.file = ours.file;
    if (text_of(now) == text_of(ours)) return {};
    SymbolSet base = copied_version(shipped, opened.path(), now, ours, state);
    base.file = ours.file;
    MergedSet merged = merged_sets(base, ours, now);
    const Sjis text = text_of(merged.set);
    if (text != opened.text()) edit.replace_text(text, changes_of(ours, merged.set), true);
    return std::move(merged.conflicts);
}

} // namespace kigou
