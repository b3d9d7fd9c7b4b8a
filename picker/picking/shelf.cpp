// shelf.cpp - see shelf.h.
#include "picker/picking/shelf.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "picker/favourites.h"
#include "picker/writable.h"

namespace kigou {
namespace {

constexpr std::size_t folders = 2; // of Directories that hold sets

} // namespace

Shelf::Shelf(Directories directories, Recents recents, std::vector<std::string> hidden)
    : directories_(std::move(directories)),
      recents_(std::move(recents)),
      hidden_(std::move(hidden)) {
    refresh();
}

void Shelf::refresh() {
    found_ = find_sets(directories_);
    const auto is_hidden = [&](const std::string &name) {
        return std::ranges::count(hidden_, name) != 0;
    };
    const auto is_hidden_file = [&](const auto &file) {
        return is_hidden(std::filesystem::path(file.path).filename());
    };
    std::erase_if(found_.sets, [&](const SetFile &set) {
        return is_hidden(set.title.text) || is_hidden_file(set);
    });
    std::erase_if(found_.spoilt, is_hidden_file);
    seen_ = identities();
    shown_.clear();
    std::set<Sjis> seen;
    for (const SetFile &set : found_.sets) {
        if (seen.insert(set.title.sjis).second) shown_.push_back(set);
    }
    for (const std::string_view first : {standard_title, favourites_title}) {
        std::stable_partition(shown_.begin(), shown_.end(),
                              [&](const SetFile &set) { return set.title.text == first; });
    }
    std::erase_if(read_,
                  [](const auto &set) { return identity_of(set.first) != set.second->identity(); });
    recent_ = recents_.read().symbols;
    indexed_ = false;
    prepared_ = 0;
}

Shelf::Identities Shelf::identities() const {
    Identities identities{identity_of(directories_.program), identity_of(directories_.common)};
    for (const SetFile &set : found_.sets) identities.push_back(identity_of(set.path));
    return identities;
}

std::vector<std::pair<std::string, std::optional<FileIdentity>>> Shelf::versions() const {
    std::vector<std::pair<std::string, std::optional<FileIdentity>>> versions;
    for (std::size_t i = 0; i < found_.sets.size(); ++i) {
        versions.emplace_back(found_.sets[i].path, seen_[folders + i]);
    }
    return versions;
}

const SetFile *Shelf::find(std::string_view title) const {
    const auto set = std::find_if(shown_.begin(), shown_.end(),
                                  [&](const SetFile &one) { return one.title.text == title; });
    return set == shown_.end() ? nullptr : &*set;
}

bool Shelf::is_read_only(const std::string &path) const {
    const auto set = std::ranges::find(shown_, path, &SetFile::path);
    return set == shown_.end() || set->title.text == standard_title || !is_writable(path);
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

bool Shelf::prepare_index() const {
    if (!indexed_ && prepared_ < found_.sets.size()) {
        index_.read_ahead(found_.sets[prepared_++]);
        return true;
    }
    index();
    return false;
}

void Shelf::show_recent(const std::vector<Sjis> &picks, std::size_t most) {
    for (const Sjis &symbol : picks) {
        std::erase(recent_, symbol);
        recent_.insert(recent_.begin(), symbol);
    }
    recent_.resize(std::min(recent_.size(), most));
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
