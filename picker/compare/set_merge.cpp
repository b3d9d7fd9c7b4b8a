// set_merge.cpp - see set_merge.h.
#include "picker/compare/set_merge.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "picker/compare/merged_symbols.h"
#include "picker/compare/title_tree.h"
#include "picker/failure.h"
#include "picker/title.h"

namespace kigou {
namespace {

// Before the title of their symbols: the library takes one that begins like its sibling for one
// below that.
constexpr std::string_view other_version = "別版";

class Merge {
  public:
    Merge(TitleNode base, TitleNode ours, TitleNode theirs)
        : base_(std::move(base)), ours_(std::move(ours)), theirs_(std::move(theirs)) {}

    MergedSet run() {
        TitleNode merged;
        merged.name = merged_name();
        file_ = merged.name;
        follow_moves();
        merge_below(base_, ours_, theirs_, {}, merged);
        return {set_of(merged), std::move(conflicts_)};
    }

  private:
    Sjis merged_name() {
        if (ours_.name == theirs_.name || theirs_.name == base_.name) return ours_.name;
        if (ours_.name == base_.name) return theirs_.name;
        conflicts_.push_back(
            {ConflictKind::file_title, to_utf8(ours_.name), to_utf8(theirs_.name)});
        return ours_.name;
    }

    std::string told(const Sjis &path) const {
        return to_utf8(path.empty() ? file_ : path_below(file_, path));
    }

    /** A family that one of them moved is moved in the others too, with what they changed. The
        uppermost first: then those below it are found in all. */
    void follow_moves() {
        for (;;) {
            const auto ours = moved_titles(base_, ours_), theirs = moved_titles(base_, theirs_);
            std::vector<MovedTitle> moves(ours);
            moves.insert(moves.end(), theirs.begin(), theirs.end());
            std::erase_if(moves, [&](const MovedTitle &one) { return seen_.contains(one.from); });
            const auto first = std::ranges::min_element(moves, {}, level);
            if (first == moves.end()) return;
            const std::size_t uppermost = level(*first);
            for (const MovedTitle &move : moves) {
                if (level(move) == uppermost && !seen_.contains(move.from))
                    follow(move, ours, theirs);
            }
        }
    }

    static std::size_t level(const MovedTitle &move) { return level_of(to_utf8(move.from), {}); }

    void follow(const MovedTitle &move, const std::vector<MovedTitle> &ours,
                const std::vector<MovedTitle> &theirs) {
        const auto left = std::ranges::find(ours, move.from, &MovedTitle::from);
        const auto right = std::ranges::find(theirs, move.from, &MovedTitle::from);
        seen_.insert(move.from);
        if (left != ours.end() && right != theirs.end() && left->to != right->to) {
            conflicts_.push_back({ConflictKind::moved, told(left->to), told(right->to)});
            return;
        }
        if (left == ours.end()) move_title(ours_, move);
        if (right == theirs.end()) move_title(theirs_, move);
        move_title(base_, move);
    }

    /** What one of them removed and the other changed stays in both. */
    void keep_changed(const TitleNode &base, TitleNode &remover, const TitleNode &other,
                      const Sjis &path) {
        std::map<Sjis, const TitleNode *> left, changed;
        for (const TitleNode &title : remover.below) left.emplace(title.name, &title);
        for (const TitleNode &title : other.below) changed.emplace(title.name, &title);
        std::size_t place = 0;
        for (const TitleNode &title : base.below) {
            const auto in_other = changed.find(title.name);
            if (!left.contains(title.name) && in_other != changed.end() &&
                *in_other->second != title) {
                conflicts_.push_back({ConflictKind::removed, told(path_below(path, title.name))});
                const auto before = remover.below.begin() + static_cast<std::ptrdiff_t>(std::min(
                                                                place, remover.below.size()));
                remover.below.insert(before, title);
            }
            ++place;
        }
    }

    void merge_below(const TitleNode &base, TitleNode &ours, TitleNode &theirs, const Sjis &path,
                     TitleNode &merged) {
        keep_changed(base, ours, theirs, path);
        keep_changed(base, theirs, ours, path);
        std::vector<TitleNode> beside; // their versions of what both changed
        const MergedSequence names = merged_sequence(base.names(), ours.names(), theirs.names());
        if (names.conflict) conflicts_.push_back({ConflictKind::order, told(path)});
        std::map<Sjis, const TitleNode *> in_base;
        std::map<Sjis, TitleNode *> in_ours, in_theirs;
        for (const TitleNode &title : base.below) in_base.emplace(title.name, &title);
        for (TitleNode &title : ours.below) in_ours.emplace(title.name, &title);
        for (TitleNode &title : theirs.below) in_theirs.emplace(title.name, &title);
        for (const MergedItem &item : names.items) {
            const auto left = in_ours.find(item.item), right = in_theirs.find(item.item);
            const auto before = in_base.find(item.item);
            if (left == in_ours.end() || right == in_theirs.end()) {
                // The other one has it not and had no part in it; or it goes, for it was left
                // alone.
                TitleNode &title = left == in_ours.end() ? *right->second : *left->second;
                if (before == in_base.end()) merged.below.push_back(title);
                continue;
            }
            const TitleNode nothing;
            const TitleNode &old = before == in_base.end() ? nothing : *before->second;
            const Sjis its = path_below(path, item.item);
            const auto data = merged_symbols(old.data, left->second->data, right->second->data);
            TitleNode title{item.item, data.value_or(left->second->data), {}};
            merge_below(old, *left->second, *right->second, its, title);
            merged.below.push_back(std::move(title));
            if (!data) beside.push_back({item.item, right->second->data, {}});
        }
        for (TitleNode &title : beside) {
            const std::string ours_at = told(path_below(path, title.name));
            title.name = free_name(title.name, merged);
            conflicts_.push_back(
                {ConflictKind::symbols, ours_at, told(path_below(path, title.name))});
            merged.below.push_back(std::move(title));
        }
    }

    /** @throws Failure (refused) when there is no room for such a title */
    static Sjis free_name(const Sjis &title, const TitleNode &parent) {
        for (std::size_t number = 1;; ++number) {
            std::string name(other_version);
            if (number > 1) name += std::to_string(number);
            Sjis whole = typed_title(name + "：").sjis;
            whole.insert(whole.end(), title.begin(), title.end());
            if (whole.size() > most_title) {
                throw Failure(FailureKind::refused,
                              "both changed the same symbols of " + to_utf8(title) +
                                  ", and its name is too long to put theirs beside it");
            }
            if (!parent.find(whole)) return whole;
        }
    }

    TitleNode base_, ours_, theirs_;
    Sjis file_;
    std::set<Sjis> seen_; /**< paths of moved families */
    std::vector<Conflict> conflicts_;
};

} // namespace

MergedSet merged_sets(const SymbolSet &base, const SymbolSet &ours, const SymbolSet &theirs) {
    return Merge(tree_of(base, "the old version"), tree_of(ours, "our version"),
                 tree_of(theirs, "their version"))
        .run();
}

std::string sentence_of(const Conflict &conflict) {
    switch (conflict.kind) {
        case ConflictKind::symbols:
            return "both changed the same symbols of " + conflict.path + "; theirs are in " +
                   conflict.other;
        case ConflictKind::removed:
            return "one removed " + conflict.path + ", which the other changed; it stays";
        case ConflictKind::moved:
            return "both moved the same title: it is " + conflict.path + " and " + conflict.other;
        case ConflictKind::order:
            return "both changed the order of the titles below " + conflict.path + "; it is ours";
        case ConflictKind::file_title:
            break;
    }
    return "both renamed the set: " + conflict.path + " (ours) and " + conflict.other;
}

} // namespace kigou
