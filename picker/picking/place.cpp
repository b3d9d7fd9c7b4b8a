// place.cpp - see place.h.
#include "picker/picking/place.h"

#include <algorithm>
#include <utility>

#include "picker/codes.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

constexpr std::string_view recent_label = "最近";

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

Place Place::recent_picks(const Shelf &shelf) {
    Place place;
    place.path_ = recent_label;
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
    return sets_.size() + (has_recent_ ? 1 : 0);
}

PlaceItem Place::item(std::size_t index) const {
    if (index >= titles()) {
        Sjis symbol = pair_of(symbols_[index - titles()]);
        return {ItemKind::symbol, to_utf8(symbol), false, std::move(symbol)};
    }
    if (snapshot_) {
        const std::size_t child = snapshot_->children(number_)[index];
        return {ItemKind::title, last_title(snapshot_->title(child).text),
                !snapshot_->children(child).empty()};
    }
    if (has_recent_ && index == 0) return {ItemKind::recent, std::string(recent_label)};
    return {ItemKind::set, sets_[index - (has_recent_ ? 1 : 0)].title.text, true};
}

Place Place::below(const Shelf &shelf, std::size_t index) const {
    if (snapshot_) return title(snapshot_, snapshot_->children(number_)[index]);
    if (has_recent_ && index == 0) return recent_picks(shelf);
    return title(shelf.snapshot(sets_[index - (has_recent_ ? 1 : 0)].path), 0);
}

std::size_t Place::find(const Sjis &symbol) const {
    const unsigned short code = code_of(std::span(symbol).first<2>());
    return titles() +
           static_cast<std::size_t>(std::ranges::find(symbols_, code) - symbols_.begin());
}

std::size_t Place::find_path(const std::string &path) const {
    for (std::size_t i = 0; i < titles(); ++i) {
        const bool recent = has_recent_ && i == 0 && !snapshot_;
        const std::string own =
            snapshot_ ? snapshot_->title(snapshot_->children(number_)[i]).text : item(i).label;
        if (own == path && !recent) return i;
    }
    return size();
}

std::string Place::key() const {
    return (snapshot_ ? snapshot_->path() : std::string()) + '\n' + path_;
}

} // namespace kigou
