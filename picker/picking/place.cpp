// place.cpp - see place.h.
#include "picker/picking/place.h"

#include <algorithm>
#include <utility>

#include "picker/codes.h"
#include "picker/favourites.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

std::vector<unsigned short> codes_of_symbols(const std::vector<Sjis> &symbols) {
    std::vector<unsigned short> codes;
    codes.reserve(symbols.size());
    for (const Sjis &symbol : symbols) codes.push_back(code_of(std::span(symbol).first<2>()));
    return codes;
}

} // namespace

Place Place::all_sets(const Shelf &shelf) {
    Place place;
    place.has_recent_ = !shelf.recent().empty();
    place.sets_ = shelf.sets();
    return place;
}

Place Place::all_sets_opened(const Shelf &shelf) {
    Place place = all_sets(shelf);
    const bool favourites =
        !place.sets_.empty() && place.sets_.front().title.text == favourites_title;
    if (place.sets_.size() != (favourites ? 2U : 1U) ||
        place.sets_.back().title.text != standard_title)
        return place;
    place.opened_ = shelf.snapshot(place.sets_.back().path);
    place.sets_.pop_back();
    return place;
}

Place Place::recent_picks(const Shelf &shelf) {
    Place place;
    place.path_ = recents_title;
    place.symbols_ = codes_of_symbols(shelf.recent());
    return place;
}

Place Place::title(std::shared_ptr<const Snapshot> snapshot, std::size_t number) {
    Place place;
    place.path_ = snapshot->title(number).text;
    place.symbols_ = codes_of_symbols(symbols_in(snapshot->data(number)));
    place.snapshot_ = std::move(snapshot);
    place.number_ = number;
    return place;
}

std::size_t Place::titles() const {
    if (snapshot_) return snapshot_->children(number_).size();
    return recents() + sets_.size() + (opened_ ? opened_->children(0).size() : 0);
}

std::pair<std::shared_ptr<const Snapshot>, std::size_t> Place::title_at(std::size_t index) const {
    if (snapshot_) return {snapshot_, snapshot_->children(number_)[index]};
    if (index < recents() + sets_.size()) return {};
    return {opened_, opened_->children(0)[index - recents() - sets_.size()]};
}

PlaceItem Place::item(std::size_t index) const {
    if (index >= titles()) {
        Sjis symbol = pair_of(symbols_[index - titles()]);
        return {ItemKind::symbol, to_utf8(symbol), false, std::move(symbol)};
    }
    if (const auto &[set, title] = title_at(index); set) {
        return {ItemKind::title, last_title(set->title(title).text), !set->children(title).empty()};
    }
    if (index < recents()) return {ItemKind::recent, std::string(recents_title)};
    return {ItemKind::set, sets_[index - recents()].title.text, true};
}

Place Place::below(const Shelf &shelf, std::size_t index) const {
    if (auto [set, number] = title_at(index); set) return title(std::move(set), number);
    if (index < recents()) return recent_picks(shelf);
    return title(shelf.snapshot(sets_[index - recents()].path), 0);
}

std::size_t Place::find(const Sjis &symbol) const {
    const unsigned short code = code_of(std::span(symbol).first<2>());
    return titles() +
           static_cast<std::size_t>(std::ranges::find(symbols_, code) - symbols_.begin());
}

std::size_t Place::find_path(const std::string &path) const {
    for (std::size_t i = 0; i < titles(); ++i) {
        if (path_at(i) == path && !path.empty()) return i;
    }
    return size();
}

std::string Place::path_at(std::size_t index) const {
    if (index >= titles()) return {};
    if (const auto &[set, title] = title_at(index); set) return set->title(title).text;
    return index < recents() ? std::string() : sets_[index - recents()].title.text;
}

std::size_t Place::symbols_below(const Shelf &shelf, std::size_t index) const {
    auto [set, title] = title_at(index);
    if (!set && index < recents()) return shelf.recent().size();
    if (!set) set = shelf.snapshot(sets_[index - recents()].path);
    std::size_t symbols = set->symbol_count(title);
    for (const std::size_t below : set->below(title)) symbols += set->symbol_count(below);
    return symbols;
}

std::string Place::key() const {
    return (snapshot_ ? snapshot_->path() : std::string()) + '\n' + path_;
}

} // namespace kigou
