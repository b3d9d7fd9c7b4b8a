// picking.cpp - see picking.h.
#include "picker/picking/picking.h"

#include <algorithm>
#include <utility>

#include "picker/codes.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/search/readings.h"
#include "picker/word_list.h"

namespace kigou {
namespace {

SymbolTold told(const Sjis &symbol) {
    const SymbolCodes codes = codes_of(symbol);
    const SymbolNames *const names = names_of(symbol);
    return {codes.symbol,
            names ? std::string(names->name) : "",
            word_list(readings_of(symbol)),
            codes.kuten,
            codes.unicode,
            codes.sjis,
            codes.jis,
            codes.euc};
}

} // namespace

Picking::Picking(Shelf &shelf, const std::string &start)
    : shelf_(shelf), history_(shelf.directories()) {
    columns_.push_back({Place::all_sets(shelf_)});
    go_to(start.empty() ? std::string(standard_title) : start);
}

void Picking::act(const Action &action) {
    if (end_ != PickingEnd::going_on) return;
    message_.clear();
    try {
        if (!edit_action(action)) go(action);
    } catch (const Failure &failure) {
        message_ = failure.what();
    }
}

void Picking::go(const Action &action) {
    const std::size_t page = cursor() / rows_ * rows_;
    switch (action.act) {
        case Act::next:
            return move_to(cursor() + 1);
        case Act::previous:
            return move_to(cursor() == 0 ? 0 : cursor() - 1);
        case Act::next_page:
            return move_to(page + rows_ < size() ? page + rows_ : size() - 1);
        case Act::previous_page:
            return move_to(page < rows_ ? 0 : page - rows_);
        case Act::first:
            return move_to(0);
        case Act::last:
            return move_to(size() - 1);
        case Act::point:
            return move_to(action.number);
        case Act::enter:
            return enter();
        case Act::enter_title:
            if (!symbol()) enter();
            return;
        case Act::back:
            return back();
        case Act::take:
            if (take()) end_ = PickingEnd::done;
            return;
        case Act::take_and_stay:
            take();
            return;
        case Act::take_number:
            if (action.number == 0 || action.number > rows_ || page + action.number > size())
                return;
            move_to(page + action.number - 1);
            return enter();
        case Act::drop_pick:
            if (!picks_.empty()) picks_.pop_back();
            return;
        case Act::next_title:
            return step_title(true);
        case Act::previous_title:
            return step_title(false);
        case Act::search:
            return look_for(searching_ ? std::string() : query_);
        case Act::type:
            return look_for(query_ + action.text);
        case Act::erase:
            return look_for(without_last(query_));
        case Act::show:
            return show_found();
        case Act::finish:
            end_ = PickingEnd::done;
            return;
        case Act::cancel:
            picks_.clear();
            end_ = PickingEnd::cancelled;
            return;
        default:
            return; // an edit
    }
}

void Picking::move_to(std::size_t index) {
    if (size() != 0) cursor() = std::min(index, size() - 1);
}

std::optional<Sjis> Picking::symbol() const {
    if (cursor() >= size()) return std::nullopt;
    if (searching_) return found_.found[found_cursor_].symbol;
    const PlaceItem item = current().place.item(current().cursor);
    if (item.kind != ItemKind::symbol) return std::nullopt;
    return item.symbol;
}

/** Makes a place the current one, with the cursor where it was left. */
void Picking::push(Place place) {
    const auto left = left_at_.find(place.key());
    const std::size_t at = left == left_at_.end() ? 0 : left->second;
    const std::size_t items = place.size();
    columns_.push_back({std::move(place), at < items ? at : 0});
}

void Picking::enter() {
    if (symbol()) {
        take();
        end_ = PickingEnd::done;
    } else if (size() != 0) {
        push(current().place.below(shelf_, current().cursor));
    }
}

void Picking::back() {
    if (searching_) {
        searching_ = false;
    } else if (columns_.size() > 1) {
        left_at_[current().place.key()] = current().cursor;
        columns_.pop_back();
    }
}

bool Picking::take() {
    const auto taken = symbol();
    if (!taken) return false;
    picks_.push_back(*taken);
    return true;
}

void Picking::step_title(bool forward) {
    const auto snapshot = current().place.snapshot();
    if (searching_ || !snapshot || snapshot->size() < 2) return;
    const std::size_t titles = snapshot->size() - 1, number = current().place.number();
    const std::size_t next = forward ? number % titles + 1 : (number + titles - 2) % titles + 1;
    go_to_title(snapshot, number == 0 && !forward ? titles : next);
}

/** Shows a full path; as much of it as there is, with a message, when it is gone. */
void Picking::go_to(const std::string &path) {
    const auto set = std::ranges::find_if(shelf_.sets(), [&](const SetFile &one) {
        return path == one.title.text || lies_below(path, one.title.text);
    });
    if (set == shelf_.sets().end()) {
        message_ = "there is no title " + path;
        return;
    }
    const auto snapshot = shelf_.snapshot(set->path);
    for (std::size_t number = 0; number < snapshot->size(); ++number) {
        if (snapshot->title(number).text == path) return go_to_title(snapshot, number);
    }
    message_ = "there is no title " + path;
    go_to_title(snapshot, 0);
}

void Picking::go_to_title(const std::shared_ptr<const Snapshot> &snapshot, std::size_t number) {
    while (columns_.size() > 1) back();
    std::vector<std::size_t> way;
    const std::size_t file_bytes = snapshot->path_of(0).size();
    for (std::optional<std::size_t> at = number; at && *at != 0;
         at = snapshot->find(above(snapshot->path_of(*at), file_bytes))) {
        way.push_back(*at);
    }
    way.push_back(0);
    std::ranges::reverse(way);
    for (const std::size_t title : way) {
        const std::size_t leads = current().place.find_path(snapshot->title(title).text);
        if (leads < current().place.size()) current().cursor = leads;
        push(Place::title(snapshot, title));
    }
}

void Picking::look_for(std::string query) {
    searching_ = true;
    query_ = std::move(query);
    found_cursor_ = 0;
    found_ = search(shelf_.index(), query_);
    if (found_.found.empty()) message_ = word_list(found_.no_symbols);
    if (!found_.meant.empty()) message_ = "meant " + word_list(found_.meant) + "?";
}

void Picking::show_found() {
    if (!searching_ || cursor() >= size()) return;
    const FoundSymbol found = found_.found[found_cursor_];
    if (found.titles.empty()) {
        message_ = "it stands in no set";
        return;
    }
    searching_ = false;
    go_to(shelf_.index().path(found.titles.front()));
    move_to(current().place.find(found.symbol));
}

void Picking::refresh() {
    // The titles that were found have other numbers in the next index.
    const bool searching = std::exchange(searching_, false);
    const std::size_t found_at = found_cursor_, left = current().cursor;
    const std::string path = current().place.path();
    const auto at = symbol();
    shelf_.refresh();
    columns_.assign(1, {Place::all_sets(shelf_)});
    if (!path.empty()) go_to(path);
    move_to(at ? current().place.find(*at) : left);
    if (!searching) return;
    look_for(query_);
    move_to(found_at);
}

PlaceItem Picking::found_item(std::size_t index) const {
    const FoundSymbol &found = found_.found[index];
    PlaceItem item{ItemKind::symbol, to_utf8(found.symbol), false, found.symbol};
    if (!found.titles.empty()) item.path = shelf_.index().path(found.titles.front());
    return item;
}

ViewColumn Picking::view_of(const Place &place, std::size_t cursor) const {
    ViewColumn column{place.path(), {}, cursor / rows_ * rows_, place.size()};
    for (std::size_t i = column.first; i < std::min(column.first + rows_, column.total); ++i) {
        column.items.push_back(place.item(i));
    }
    if (column.total != 0) column.cursor = cursor - column.first;
    return column;
}

View Picking::view(std::size_t most_columns) const {
    View view;
    view.searching = searching_;
    view.query = query_;
    view.message = message_;
    if (asking_) view.asking = question();
    view.answer = answer_;
    for (const Sjis &pick : picks_) view.picks += to_utf8(pick);
    if (const auto under = symbol()) view.symbol = told(*under);
    if (searching_) {
        ViewColumn column{{}, {}, cursor() / rows_ * rows_, size()};
        for (std::size_t i = column.first; i < std::min(column.first + rows_, column.total); ++i) {
            column.items.push_back(found_item(i));
        }
        if (column.total != 0) column.cursor = cursor() - column.first;
        view.columns.push_back(std::move(column));
        return view;
    }
    const bool leads = size() != 0 && !view.symbol;
    const std::size_t room = std::max<std::size_t>(1, most_columns - (leads && most_columns > 1));
    const std::size_t from = columns_.size() > room ? columns_.size() - room : 0;
    for (std::size_t i = from; i < columns_.size(); ++i) {
        view.columns.push_back(view_of(columns_[i].place, columns_[i].cursor));
    }
    view.current = view.columns.size() - 1;
    if (leads && most_columns > 1) {
        try {
            view.columns.push_back(view_of(current().place.below(shelf_, current().cursor), 0));
            view.columns.back().cursor.reset();
        } catch (const Failure &failure) {
            view.message = failure.what();
        }
    }
    return view;
}

} // namespace kigou
