// set_diff.cpp - see set_diff.h.
#include "picker/compare/set_diff.h"

#include <algorithm>
#include <map>
#include <utility>

#include "picker/compare/title_tree.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

class Diff {
  public:
    Diff(TitleNode before, TitleNode after)
        : before_(std::move(before)), after_(std::move(after)) {}

    std::vector<Difference> run() {
        if (before_.name != after_.name) {
            all_.push_back({DifferenceKind::renamed, to_utf8(before_.name), to_utf8(after_.name)});
        }
        for (const MovedTitle &move : moved_titles(before_, after_)) {
            all_.push_back(
                {DifferenceKind::moved, told(before_, move.from), told(after_, move.to)});
            move_title(before_, move);
        }
        add_all(before_, after_, {});
        return std::move(all_);
    }

  private:
    static std::string told(const TitleNode &tree, const Sjis &path) {
        return to_utf8(path.empty() ? tree.name : path_below(tree.name, path));
    }

    void add_family(const TitleNode &title, const TitleNode &tree, const Sjis &path, bool came) {
        Difference one{came ? DifferenceKind::added : DifferenceKind::removed, told(tree, path)};
        (came ? one.added : one.removed) = symbols_in(title.data);
        all_.push_back(std::move(one));
        for (const TitleNode &below : title.below) {
            add_family(below, tree, path_below(path, below.name), came);
        }
    }

    void add_all(const TitleNode &before, const TitleNode &after, const Sjis &path) {
        add_symbols(before, after, path);
        std::map<Sjis, const TitleNode *> old, now;
        for (const TitleNode &title : before.below) old.emplace(title.name, &title);
        for (const TitleNode &title : after.below) now.emplace(title.name, &title);
        Sequence kept;
        for (const TitleNode &title : before.below) {
            if (now.contains(title.name)) {
                kept.push_back(title.name);
            } else {
                add_family(title, before_, path_below(path, title.name), false);
            }
        }
        if (kept_in(kept, after.names()).size() != kept.size()) {
            all_.push_back({DifferenceKind::order, told(after_, path)});
        }
        for (const TitleNode &title : after.below) {
            const Sjis its = path_below(path, title.name);
            if (const auto found = old.find(title.name); found != old.end()) {
                add_all(*found->second, title, its);
            } else {
                add_family(title, after_, its, true);
            }
        }
    }

    void add_symbols(const TitleNode &before, const TitleNode &after, const Sjis &path) {
        if (before.data == after.data) return;
        Difference one{DifferenceKind::symbols, told(after_, path)};
        const Sequence old = symbols_in(before.data), now = symbols_in(after.data);
        std::map<Sjis, long> more, fewer; // in the later version
        for (const Sjis &symbol : now) ++more[symbol];
        for (const Sjis &symbol : old) --more[symbol];
        for (const auto &[symbol, count] : more) fewer[symbol] = -count;
        std::vector<bool> stays(now.size());
        for (const auto &[was, is] : kept_in(old, now)) stays[is] = true;
        for (std::size_t i = now.size(); i-- > 0;) {
            if (stays[i]) continue;
            (more[now[i]]-- > 0 ? one.added : one.moved).push_back(now[i]);
        }
        std::ranges::reverse(one.added);
        std::ranges::reverse(one.moved);
        for (std::size_t i = old.size(); i-- > 0;) {
            if (fewer[old[i]]-- > 0) one.removed.push_back(old[i]);
        }
        std::ranges::reverse(one.removed);
        one.lines = old == now;
        all_.push_back(std::move(one));
    }

    TitleNode before_, after_;
    std::vector<Difference> all_;
};

} // namespace

std::vector<Difference> differences_of(const SymbolSet &before, const SymbolSet &after,
                                       const std::string &before_name,
                                       const std::string &after_name) {
    return Diff(tree_of(before, before_name), tree_of(after, after_name)).run();
}

} // namespace kigou
