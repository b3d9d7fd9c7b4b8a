// set_update.cpp - see set_update.h.
#include "picker/compare/set_update.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "picker/compare/set_diff.h"
#include "picker/compare/shipped_versions.h"
#include "picker/compare/whole_set.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

/** How much two sets differ. */
std::size_t distance(const SymbolSet &one, const SymbolSet &other) {
    std::size_t distance = 0;
    for (const Difference &difference : differences_of(one, other)) {
        distance +=
            1 + difference.added.size() + difference.removed.size() + difference.moved.size();
    }
    return distance;
}

/** Whether at least half of the titles of the smaller set are in the other one. */
bool look_alike(const SymbolSet &one, const SymbolSet &other) {
    std::set<Sjis> paths;
    for (const SetBlock &block : one.blocks) paths.insert(block.path);
    const auto common = static_cast<std::size_t>(std::ranges::count_if(
        other.blocks, [&](const SetBlock &block) { return paths.contains(block.path); }));
    return common > 0 && 2 * common >= std::min(one.blocks.size(), other.blocks.size());
}

/** A kept version; nothing when it is gone or damaged, and so of no use. */
std::optional<SymbolSet> read_version(const std::string &kept) {
    try {
        return set_of(Snapshot(kept));
    } catch (const Failure &) {
        return std::nullopt;
    }
}

/** The kept version that is nearest to a set, but for the one that ships now. */
std::optional<SymbolSet> nearest_version(const std::string &shipped, const SymbolSet &now,
                                         const SymbolSet &ours, const std::string &state) {
    std::optional<SymbolSet> nearest;
    std::size_t least = 0;
    for (const std::string &kept : kept_versions(shipped, state)) {
        auto version = read_version(kept);
        if (!version) continue;
        version->file = ours.file; // a copy under another title is as near
        if (text_of(*version) == text_of(now)) continue;
        const std::size_t far = distance(*version, ours);
        if (nearest && far >= least) continue;
        nearest = std::move(version);
        least = far;
    }
    return nearest;
}

/** The version that a set is a copy of. @throws Failure (refused) when none is known */
SymbolSet copied_version(const SetFile &shipped, const std::string &copy, const SymbolSet &now,
                         const SymbolSet &ours, const std::string &state) {
    const std::string own = title_of(ours.file).text, &of = shipped.title.text;
    if (const auto noted = noted_version(copy, state)) {
        if (!is_version_of(*noted, shipped.path)) {
            throw Failure(FailureKind::refused, own + " is no copy of " + of);
        }
        if (auto version = read_version(*noted)) return *version;
    }
    auto nearest = nearest_version(shipped.path, now, ours, state);
    if (!nearest) {
        throw Failure(
            FailureKind::refused,
            "no earlier version of " + of + " is known, so what is new in it cannot be told",
            {"'kigou diff' compares the two"});
    }
    if (!look_alike(*nearest, ours)) {
        throw Failure(FailureKind::refused, own + " does not look like a copy of " + of);
    }
    return std::move(*nearest);
}

/** How many symbols the titles have, by their full paths. */
std::map<std::string, std::size_t> counts_of(const SymbolSet &set) {
    std::map<std::string, std::size_t> counts;
    const Title file = title_of(set.file);
    for (const SetBlock &block : set.blocks) {
        counts[joined(file, block.path).text] = symbols_in(block.data).size();
    }
    return counts;
}

std::vector<Change> changes_of(const SymbolSet &before, const SymbolSet &after) {
    static const std::map<DifferenceKind, ChangeKind> kinds{
        {DifferenceKind::added, ChangeKind::added},
        {DifferenceKind::removed, ChangeKind::removed},
        {DifferenceKind::moved, ChangeKind::moved},
        {DifferenceKind::order, ChangeKind::moved},
        {DifferenceKind::symbols, ChangeKind::put}};
    const auto had = counts_of(before), have = counts_of(after);
    std::vector<Change> changes;
    for (const Difference &one : differences_of(before, after)) {
        Change change{.kind = kinds.at(one.kind), .path = one.path, .to = one.to};
        if (change.kind == ChangeKind::removed) change.symbols = one.removed.size();
        if (change.kind == ChangeKind::added) change.symbols = one.added.size();
        if (change.kind == ChangeKind::put) {
            change.symbols = have.at(one.path);
            // One that was moved too had another path.
            const auto was = had.find(one.path);
            change.before = was == had.end() ? 0 : was->second;
        }
        changes.push_back(std::move(change));
    }
    return changes;
}

} // namespace

std::vector<Conflict> update_set(Edit &edit, const SetFile &shipped, const std::string &state) {
    const Snapshot &opened = edit.located()->snapshot;
    refuse_damage(opened.path(), read_file(opened.path()).bytes); // what a snapshot closes is cut
    const SymbolSet ours = whole_set_of(opened);
    const Sjis bytes = read_file(shipped.path).bytes;
    refuse_damage(shipped.path, bytes);
    SymbolSet now = whole_set_of(Snapshot::of_text(text_form(bytes), shipped.path));
    now.file = ours.file;
    if (text_of(now) == text_of(ours)) return {};
    MergedSet merged =
        merged_sets(copied_version(shipped, opened.path(), now, ours, state), ours, now);
    const Sjis text = text_of(merged.set);
    if (text != opened.text()) edit.replace_text(text, changes_of(ours, merged.set), true);
    return std::move(merged.conflicts);
}

} // namespace kigou
