// shelf.cpp - see shelf.h.
#include "picker/picking/shelf.h"

#include <set>
#include <utility>

#include "picker/file_bytes.h"

namespace kigou {

Shelf::Shelf(Directories directories, Recents recents)
    : directories_(std::move(directories)), recents_(std::move(recents)) {
    refresh();
}

void Shelf::refresh() {
    found_ = find_sets(directories_);
    shown_.clear();
    std::set<Sjis> seen;
    for (const SetFile &set : found_.sets) {
        if (seen.insert(set.title.sjis).second) shown_.push_back(set);
    }
    std::erase_if(read_,
                  [](const auto &set) { return identity_of(set.first) != set.second->identity(); });
    recent_ = recents_.read().symbols;
    indexed_ = false;
}

std::shared_ptr<const Snapshot> Shelf::snapshot(const std::string &path) const {
    auto &set = read_[path];
    if (!set) {
        try {
            set = std::make_shared<const Snapshot>(path);
        } catch (...) {
            read_.erase(path);
            throw;
        }
    }
    return set;
}

const SearchIndex &Shelf::index() const {
    if (!std::exchange(indexed_, true)) index_.refresh(found_);
    return index_;
}

std::string Shelf::note(const std::vector<Sjis> &picks) {
    std::string trouble;
    for (const Sjis &symbol : picks) {
        RecentPicks now = recents_.add(symbol);
        if (!now.trouble.empty()) trouble = std::move(now.trouble);
        recent_ = std::move(now.symbols);
    }
    return trouble;
}

std::string Shelf::forget(const Sjis &symbol) {
    RecentPicks now = recents_.remove(symbol);
    recent_ = std::move(now.symbols);
    return std::move(now.trouble);
}

} // namespace kigou
