// picking.cpp - see picking.h.
#include "picker/picking/picking.h"

#include <algorithm>
#include <utility>

#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/sentence.h"

namespace kigou {
Picking::Picking(Shelf &shelf, const std::string &start, FirstColumn first)
    : shelf_(shelf), edits_(shelf.directories()), first_(first) {
    columns_.push_back({first_column()});
    if (!start.empty()) {
        go_to(start);
    } else if (first_ == FirstColumn::sets) {
        go_to(std::string(standard_title));
    }
}

/** A set that cannot be opened stands there as one. */
Place Picking::first_column() {
    try {
        if (first_ == FirstColumn::opened) return Place::all_sets_opened(shelf_);
    } catch (const Failure &failure) {
        message_ = failure.what();
    }
    return Place::all_sets(shelf_);
}

void Picking::act(const Action &action) {
    if (end_ != PickingEnd::going_on) return;
    message_.clear();
    if (action.act != Act::undo && action.act != Act::redo) edits_.forget_warning();
    const std::size_t number = action.act == Act::digit ? number_ : std::exchange(number_, 0);
    try {
        if (action.act == Act::drop_pick && number != 0 && !asking_) {
            number_ = number / 10;
        } else if (action.act == Act::back && number != 0) {
            return; // it is the number that is left
        } else if (!question_action(action) && !search_action(action) && !edit_action(action)) {
            go(action);
        }
    } catch (const Failure &failure) {
        tell(failure);
    }
}

void Picking::tell(const Failure &failure) {
    // Shown as it is now: another program changed it, or an edit was taken back in its middle.
    look();
    message_ = failure.what();
    if (failure.details().empty()) return;
    message_ = sentence("{1}; {2}", message_, failure.details().front());
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
        case Act::all_sets:
            searching_ = false;
            while (columns_.size() > 1) back();
            return;
        case Act::digit:
            return take_digit(action.number);
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
        case Act::next_sibling:
        case Act::previous_sibling:
            return step_sibling(action.act == Act::next_sibling);
        case Act::finish:
            end_ = PickingEnd::done;
            return;
        case Act::cancel:
            picks_.clear();
            end_ = PickingEnd::cancelled;
            return;
        default:
            return; // of the search, a question or an edit
    }
}

void Picking::move_to(std::size_t index) {
    if (size() != 0) cursor() = std::min(index, size() - 1);
}

/** The same for what a place found, which may be nothing. */
void Picking::move_to_found(std::size_t index) {
    if (index < current().place.size()) move_to(index);
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

/** An item of two digits is not entered at its first one, but the cursor goes there. */
void Picking::take_digit(std::size_t digit) {
    const std::size_t page = cursor() / rows_ * rows_, items = std::min(rows_, size() - page);
    number_ = number_ * 10 + digit;
    if (number_ == 0 || number_ > items) {
        message_ = "there is no item " + std::to_string(std::exchange(number_, 0));
        return;
    }
    move_to(page + number_ - 1);
    if (number_ * 10 > items) {
        number_ = 0;
        enter();
    }
}

void Picking::step_title(bool forward) {
    const auto snapshot = current().place.snapshot();
    if (searching_ || !snapshot || snapshot->size() < 2) return;
    const std::size_t titles = snapshot->size() - 1, number = current().place.number();
    const std::size_t next = forward ? number % titles + 1 : (number + titles - 2) % titles + 1;
    go_to_title(snapshot, number == 0 && !forward ? titles : next);
}

void Picking::step_sibling(bool forward) {
    if (searching_ || columns_.size() < 2) return;
    back();
    const std::size_t titles = current().place.titles();
    if (titles == 0) return;
    move_to((current().cursor + (forward ? 1 : titles - 1)) % titles);
    enter();
}

/** Shows a full path; as much of it as there is, with a message, when it is gone. */
void Picking::go_to(const std::string &path) {
    if (path == recents_title && !shelf_.recent().empty()) {
        while (columns_.size() > 1) back();
        move_to(0);
        return push(Place::recent_picks(shelf_));
    }
    const auto set = std::ranges::find_if(shelf_.sets(), [&](const SetFile &one) {
        return path == one.title.text || lies_below(path, one.title.text);
    });
    if (set == shelf_.sets().end()) {
        message_ = sentence("there is no title {1}", path);
        return;
    }
    const auto snapshot = shelf_.snapshot(set->path);
    for (std::size_t number = 0; number < snapshot->size(); ++number) {
        if (snapshot->title(number).text == path) return go_to_title(snapshot, number);
    }
    message_ = sentence("there is no title {1}", path);
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
    if (columns_.front().place.opened() != snapshot) way.push_back(0);
    std::ranges::reverse(way);
    for (const std::size_t title : way) {
        const std::size_t leads = current().place.find_path(snapshot->title(title).text);
        if (leads < current().place.size()) current().cursor = leads;
        push(Place::title(snapshot, title));
    }
}

void Picking::refresh() {
    // The titles that were found have other numbers in the next index.
    const bool searching = std::exchange(searching_, false);
    const std::size_t found_at = found_cursor_, left = current().cursor;
    const std::string path = current().place.path();
    const auto at = symbol();
    const std::string title = path_under_cursor();
    found_is_old_ = true;
    shelf_.refresh();
    columns_.assign(1, {first_column()});
    if (!path.empty()) go_to(path);
    move_to(left);
    if (at && symbol() != at) move_to_found(current().place.find(*at));
    if (!at && path_under_cursor() != title) move_to_found(current().place.find_path(title));
    if (!searching) return;
    look_for(query_);
    move_to(found_at);
}

bool Picking::look() {
    if (end_ != PickingEnd::going_on || !shelf_.is_stale()) return false;
    try {
        const auto before = shelf_.versions();
        refresh();
        if (shelf_.versions() == before) return false;
        message_ = "another program changed a set; it is shown as it is now";
    } catch (const Failure &failure) {
        message_ = failure.what();
    }
    return true;
}

} // namespace kigou
