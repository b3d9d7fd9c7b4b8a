// picking_edits.cpp - edits out of the picking, each saved at once; see picking.h.
#include <algorithm>
#include <chrono>
#include <utility>

#include "picker/change_words.h"
#include "picker/failure.h"
#include "picker/favourites.h"
#include "picker/picking/picking.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

constexpr std::chrono::milliseconds patience{2000}; // for another program that edits

EditHooks hooks() {
    EditHooks hooks;
    hooks.patience = patience;
    return hooks;
}

} // namespace

/** @return whether the action was one of editing, or belongs to what is asked for */
bool Picking::edit_action(const Action &action) {
    if (action.act != Act::undo && action.act != Act::redo) warned_ = false;
    if (asking_) {
        if (action.act == Act::type) {
            answer_ += action.text;
        } else if (action.act == Act::erase || action.act == Act::drop_pick) {
            answer_ = without_last(answer_);
        } else if (action.act == Act::enter || action.act == Act::show) {
            answer();
        } else if (action.act == Act::back || action.act == Act::cancel) {
            asking_.reset();
        }
        return true;
    }
    switch (action.act) {
        case Act::copy_to:
        case Act::new_title:
        case Act::rename:
            ask(action.act);
            return true;
        case Act::remove:
            remove();
            return true;
        case Act::raise:
        case Act::lower:
            move_symbol(action.act == Act::lower);
            return true;
        case Act::undo:
        case Act::redo:
            take_back(action.act == Act::redo);
            return true;
        default:
            return false;
    }
}

std::string Picking::question() const {
    switch (*asking_) {
        case Act::copy_to:
            return "copy to";
        case Act::rename:
            return "new name";
        default:
            return current().place.snapshot() ? "new title" : "new set";
    }
}

void Picking::ask(Act what) {
    answer_.clear();
    if (what == Act::copy_to) {
        if (picks_.empty() && !symbol()) return;
        answer_ = copied_to_.empty() ? std::string(favourites_title) : copied_to_;
    }
    if (what == Act::rename) {
        if (searching_ || symbol() || size() == 0) return;
        const PlaceItem item = current().place.item(current().cursor);
        if (item.kind == ItemKind::recent) return;
        answer_ = item.label;
    }
    if (what == Act::new_title && searching_) return;
    asking_ = what;
}

void Picking::answer() {
    const Act what = *std::exchange(asking_, std::nullopt);
    if (answer_.empty()) return;
    if (what == Act::copy_to) copy_to(answer_);
    if (what == Act::new_title) add_title(answer_);
    if (what == Act::rename) rename(answer_);
}

/** Makes one edit, remembers it, and shows what is there then. */
void Picking::make_edit(const std::function<void(Edit &)> &work, bool may_make_file) {
    EditReport report;
    {
        Edit edit(shelf_.directories(), {}, hooks(), may_make_file);
        work(edit);
        report = history_.finish(edit);
    }
    tell(report, "");
}

void Picking::tell(const EditReport &report, const char *how) {
    refresh();
    message_ =
        report.changes.empty() ? "it is there already" : how + sentence_of(report.changes.front());
}

void Picking::copy_to(const std::string &path) {
    std::vector<Sjis> symbols = picks_;
    if (const auto under = symbol(); symbols.empty() && under) symbols.push_back(*under);
    const bool favourites = normalized(path) == favourites_title;
    make_edit(
        [&](Edit &edit) {
            if (favourites) return Favourites(shelf_.directories()).add(symbols, edit);
            edit.locate(path);
            edit.copy(symbols);
        },
        favourites);
    copied_to_ = path;
}

void Picking::add_title(const std::string &name) {
    const Title title = new_title(name);
    const std::string below = current().place.path();
    if (!current().place.snapshot()) {
        make_edit([&](Edit &edit) { edit.create(new_file_title(name)); }, true);
        return go_to(name);
    }
    make_edit([&](Edit &edit) {
        edit.locate(below);
        edit.add(title);
    });
    move_to(current().place.find_path(below + std::string(separator) + name));
}

void Picking::rename(const std::string &name) {
    const Title title = new_title(name);
    make_edit([&](Edit &edit) {
        edit.locate(path_under_cursor());
        edit.rename(title);
    });
}

void Picking::remove() {
    if (searching_ || size() == 0) return;
    const PlaceItem item = current().place.item(current().cursor);
    if (item.kind == ItemKind::set) {
        return tell(history_.delete_set(typed_title(item.label), {}, hooks()), "");
    }
    if (item.kind == ItemKind::title) {
        return make_edit([&](Edit &edit) {
            edit.locate(path_under_cursor());
            edit.remove();
        });
    }
    if (item.kind != ItemKind::symbol) return;
    if (!current().place.snapshot()) {
        shelf_.forget(item.symbol);
        return refresh();
    }
    change_symbols([](Sjis &data, const std::vector<std::size_t> &places, std::size_t at) {
        const auto begin = data.begin() + static_cast<std::ptrdiff_t>(places[at]);
        data.erase(begin, begin + 2);
        return at;
    });
}

void Picking::move_symbol(bool down) {
    if (searching_ || !symbol() || !current().place.snapshot()) return;
    change_symbols([&](Sjis &data, const std::vector<std::size_t> &places, std::size_t at) {
        const std::size_t other = down ? at + 1 : at - 1;
        if (other >= places.size()) return at;
        std::swap_ranges(data.begin() + static_cast<std::ptrdiff_t>(places[at]),
                         data.begin() + static_cast<std::ptrdiff_t>(places[at]) + 2,
                         data.begin() + static_cast<std::ptrdiff_t>(places[other]));
        return other;
    });
}

/** Changes the symbols of the current title; lines stay lines. @param change  gives the new place
 */
void Picking::change_symbols(
    const std::function<std::size_t(Sjis &, const std::vector<std::size_t> &, std::size_t)>
        &change) {
    const Place &place = current().place;
    const auto shown = place.snapshot()->data(place.number());
    Sjis data(shown.begin(), shown.end());
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        if (data[i] != '\r' || data[i + 1] != '\n') places.push_back(i);
    }
    const std::size_t titles = place.titles();
    const std::size_t now = change(data, places, current().cursor - titles);
    if (std::ranges::equal(data, shown)) return;
    make_edit([&](Edit &edit) {
        const Located &located = edit.locate(place.path());
        if (!std::ranges::equal(located.snapshot.data(located.number), shown)) {
            throw Failure(FailureKind::changed, place.path() + " was changed by another program");
        }
        edit.put(data, false);
    });
    move_to(titles + now);
}

std::string Picking::path_under_cursor() const {
    const Place &place = current().place;
    if (!place.snapshot()) return place.item(current().cursor).label;
    const std::size_t child = place.snapshot()->children(place.number())[current().cursor];
    return place.snapshot()->title(child).text;
}

void Picking::take_back(bool again) {
    const auto step = again ? history_.to_redo() : history_.to_undo();
    if (!step) {
        message_ = again ? "there is nothing to do again" : "there is nothing to undo";
        return;
    }
    if (!step->refusal.empty()) {
        message_ = step->refusal;
        return;
    }
    // What will not be as it was is said first, and done when asked for once more.
    if (!step->differences.empty() && !std::exchange(warned_, true)) {
        message_ = step->differences.front() + "; once more to do it all the same";
        return;
    }
    warned_ = false;
    const EditReport report = again ? history_.redo(hooks()) : history_.undo(hooks());
    tell(report, again ? "again: " : "undone: ");
}

} // namespace kigou
