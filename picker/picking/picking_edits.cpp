// picking_edits.cpp - edits of what is under the cursor, each saved at once; see picking.h.
#include <algorithm>
#include <filesystem>
#include <utility>

#include "picker/failure.h"
#include "picker/picking/picking.h"
#include "picker/symbol_data.h"
#include "picker/writable.h"

namespace kigou {
namespace {

Change one_symbol(ChangeKind kind) {
    return {.kind = kind, .path = {}, .symbols = 1};
}

/** Where the symbols of data stand, in bytes. */
std::vector<std::size_t> places_in(std::span<const unsigned char> data) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        if (data[i] != '\r' || data[i + 1] != '\n') places.push_back(i);
    }
    return places;
}

} // namespace

/** @return whether the action was one of editing */
bool Picking::edit_action(const Action &action) {
    switch (action.act) {
        case Act::copy_to:
        case Act::move_to:
        case Act::add_symbols:
        case Act::new_title:
        case Act::rename:
            ask(action.act);
            return true;
        case Act::remove:
            remove();
            return true;
        case Act::raise:
        case Act::lower:
            move_item(action.act == Act::lower);
            return true;
        case Act::undo:
        case Act::redo:
            tell(action.act == Act::undo ? edits_.undo() : edits_.redo());
            move_to_found(current().place.find_path(edits_.touched()));
            return true;
        case Act::save:
            message_ = "every edit is saved already";
            return true;
        default:
            return false;
    }
}

/** Shows what is there behind an edit, and says what was done. */
void Picking::tell(std::string done) {
    refresh();
    message_ = std::move(done);
}

ShownTitle Picking::shown() const {
    return {current().place.snapshot(), current().place.number()};
}

/** Full path of the title or set under the cursor; empty when there is none. */
std::string Picking::path_under_cursor() const {
    return searching_ ? std::string() : current().place.path_at(current().cursor);
}

/**
 * Says at once that nothing here can be changed, and not when an answer was typed.
 * @param item  it is what the cursor stands on that is to be changed
 */
void Picking::refuse_read_only(bool item) const {
    auto set = current().place.snapshot();
    const SetFile *const under = item && !set ? shelf_.find(path_under_cursor()) : nullptr;
    if (under) set = shelf_.snapshot(under->path);
    if (!set || !shelf_.is_read_only(set->path())) return;
    const std::string title = set->file().text;
    if (title == standard_title) {
        throw Failure(
            FailureKind::refused,
            title + " cannot be changed; its symbols can be copied to a title of your own");
    }
    throw Failure(FailureKind::refused, title + " cannot be changed",
                  why_not_written(std::filesystem::path(set->path()).parent_path(), set->path()));
}

/** The title or set under the cursor, as it is shown. @throws Failure when it cannot be read */
std::optional<ShownTitle> Picking::title_under_cursor() const {
    if (path_under_cursor().empty()) return {};
    const Place below = current().place.below(shelf_, current().cursor);
    return ShownTitle{below.snapshot(), below.number()};
}

void Picking::remove() {
    if (searching_ || size() == 0) {
        message_ = searching_ ? "go to where it stands to remove it" : "there is nothing to remove";
        return;
    }
    const PlaceItem item = current().place.item(current().cursor);
    refuse_read_only(true);
    if (const auto under = title_under_cursor()) {
        return tell(under->number == 0 ? edits_.delete_set(*under) : edits_.remove_title(*under));
    }
    if (item.kind != ItemKind::symbol) {
        message_ = "recent picks are removed one by one";
        return;
    }
    const std::size_t at = current().cursor;
    if (current().place.snapshot()) {
        const Sjis rest = without_pair(shown(), place_in_data());
        tell(edits_.change(shown(), rest, one_symbol(ChangeKind::removed)));
    } else {
        const std::string trouble = shelf_.forget(item.symbol);
        tell(trouble.empty() ? item.label + " is no recent pick any more" : trouble);
    }
    move_to(at);
}

/** The byte in the data of the current title at which the symbol under the cursor stands. */
std::size_t Picking::place_in_data() const {
    return places_in(
        shown().set->data(shown().number))[current().cursor - current().place.titles()];
}

/** Data of a title without the symbol at that byte. */
Sjis Picking::without_pair(const ShownTitle &title, std::size_t place) {
    const auto data = title.set->data(title.number);
    const auto begin = data.begin() + static_cast<std::ptrdiff_t>(place);
    Sjis rest(data.begin(), begin);
    rest.insert(rest.end(), begin + 2, data.end());
    return rest;
}

/** Moves what is under the cursor past its neighbour of the same kind. */
void Picking::move_item(bool down) {
    const Place &place = current().place;
    if (searching_ || size() == 0) return;
    if (!place.snapshot()) {
        message_ = "only titles and symbols of a set can be moved";
        return;
    }
    refuse_read_only(true);
    const bool is_title = !symbol();
    const std::size_t at = current().cursor, first = is_title ? 0 : place.titles();
    const std::size_t end = is_title ? place.titles() : place.size();
    if (down ? at + 1 >= end : at <= first) return;
    const std::size_t other = down ? at + 1 : at - 1;
    if (is_title) {
        const std::vector<std::size_t> &titles = place.snapshot()->children(place.number());
        tell(edits_.move_past({place.snapshot(), titles[at]}, titles[other]));
    } else {
        const auto data = place.snapshot()->data(place.number());
        Sjis changed(data.begin(), data.end());
        const std::vector<std::size_t> places = places_in(changed);
        const auto pair = [&](std::size_t item) {
            return changed.begin() + static_cast<std::ptrdiff_t>(places[item - first]);
        };
        std::swap_ranges(pair(at), pair(at) + 2, pair(other));
        if (std::ranges::equal(changed, data)) return move_to(other);
        tell(edits_.change(shown(), changed, one_symbol(ChangeKind::moved)));
    }
    move_to(other);
}

} // namespace kigou
