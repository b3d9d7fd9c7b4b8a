// title_tree.cpp - see title_tree.h.
#include "picker/compare/title_tree.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "picker/failure.h"
#include "picker/title.h"

namespace kigou {
namespace {

constexpr unsigned char separator_bytes[] = {0x81, 0x5E};

Sjis without_last(const Sjis &path) {
    const auto parent = parent_of(path);
    return {parent.begin(), parent.end()};
}

Sjis last_of(const Sjis &path) {
    const std::size_t parent = parent_of(path).size();
    const std::size_t begin = parent == 0 ? 0 : parent + sizeof separator_bytes;
    return {path.begin() + static_cast<std::ptrdiff_t>(begin), path.end()};
}

TitleNode *node_at(TitleNode &tree, const Sjis &path) {
    if (path.empty()) return &tree;
    TitleNode *const parent = node_at(tree, without_last(path));
    return parent ? parent->find(last_of(path)) : nullptr;
}

void add_blocks(const TitleNode &node, const Sjis &path, SymbolSet &set) {
    for (const TitleNode &title : node.below) {
        const Sjis its = path_below(path, title.name);
        set.blocks.push_back({its, title.data});
        add_blocks(title, its, set);
    }
}

using Families = std::vector<std::pair<Sjis, const TitleNode *>>;

/** Titles that the other one lacks under their path, the uppermost ones. */
void add_missing(const TitleNode &tree, const Sjis &path, const TitleNode &other,
                 Families &missing) {
    std::map<Sjis, const TitleNode *> there;
    for (const TitleNode &title : other.below) there.emplace(title.name, &title);
    for (const TitleNode &title : tree.below) {
        const Sjis its = path_below(path, title.name);
        if (const auto found = there.find(title.name); found != there.end()) {
            add_missing(title, its, *found->second, missing);
        } else {
            missing.emplace_back(its, &title);
        }
    }
}

} // namespace

const TitleNode *TitleNode::find(const Sjis &title) const {
    const auto found = std::ranges::find(below, title, &TitleNode::name);
    return found == below.end() ? nullptr : &*found;
}

TitleNode *TitleNode::find(const Sjis &title) {
    return const_cast<TitleNode *>(std::as_const(*this).find(title));
}

Sequence TitleNode::names() const {
    Sequence names;
    for (const TitleNode &title : below) names.push_back(title.name);
    return names;
}

Sjis path_below(const Sjis &parent, const Sjis &title) {
    Sjis path = parent;
    if (!path.empty()) path.insert(path.end(), separator_bytes, std::end(separator_bytes));
    path.insert(path.end(), title.begin(), title.end());
    return path;
}

TitleNode tree_of(const SymbolSet &set, const std::string &name) {
    const auto refuse = [&](const SetBlock &block, const std::string &why) {
        throw Failure(FailureKind::refused,
                      "cannot compare " + name + ": " + to_utf8(block.path) + " " + why, {},
                      {{Remedy::mend_file, name}});
    };
    TitleNode tree{set.file, {}, {}};
    std::vector<std::pair<Sjis, TitleNode *>> way{{Sjis(), &tree}}; // to the last title
    std::set<Sjis> seen;
    for (const SetBlock &block : set.blocks) {
        const Sjis parent = without_last(block.path);
        if (block.data.size() % 2 != 0) refuse(block, "ends with half a symbol");
        if (!seen.insert(block.path).second) refuse(block, "stands twice");
        while (way.size() > 1 && way.back().first != parent) way.pop_back();
        if (way.back().first != parent) refuse(block, "does not stand below its parent");
        auto &below = way.back().second->below;
        below.push_back({last_of(block.path), block.data, {}});
        way.emplace_back(block.path, &below.back());
    }
    return tree;
}

SymbolSet set_of(const TitleNode &tree) {
    SymbolSet set{tree.name, {}};
    add_blocks(tree, {}, set);
    return set;
}

const TitleNode *title_at(const TitleNode &tree, const Sjis &path) {
    return node_at(const_cast<TitleNode &>(tree), path);
}

std::vector<MovedTitle> moved_titles(const TitleNode &before, const TitleNode &after) {
    Families gone, come;
    add_missing(before, {}, after, gone);
    add_missing(after, {}, before, come);
    std::vector<MovedTitle> moves;
    for (const auto &[from, title] : gone) {
        const TitleNode &old = *title;
        if (old.data.empty() && old.below.empty()) continue;
        const auto same = std::ranges::find_if(come, [&old](const auto &one) {
            return one.second->data == old.data && one.second->below == old.below;
        });
        if (same == come.end()) continue;
        moves.push_back({from, same->first});
        come.erase(same);
    }
    return moves;
}

void move_title(TitleNode &tree, const MovedTitle &move) {
    const Sjis from = without_last(move.from), to = without_last(move.to);
    TitleNode *const title = node_at(tree, move.from);
    if (!title || !node_at(tree, to) || node_at(tree, move.to) || lies_below(move.to, move.from))
        return;
    title->name = last_of(move.to);
    if (from == to) return;
    auto &old_family = node_at(tree, from)->below;
    const auto place = old_family.begin() + (title - old_family.data());
    TitleNode moved = std::move(*place);
    old_family.erase(place);
    node_at(tree, to)->below.push_back(std::move(moved));
}

} // namespace kigou
