// opening.cpp - see opening.h.
#include "fcitx/opening.h"

#include <filesystem>
#include <utility>

#include "fcitx/folders.h"
#include "picker/failure.h"
#include "picker/favourites.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

std::string told(const std::vector<SpoiltFile> &spoilt) {
    if (spoilt.empty()) return {};
    const std::string name = std::filesystem::path(spoilt.front().path).filename();
    const std::string &reason = spoilt.front().reason;
    if (spoilt.size() == 1) return sentence("{1}: {2}", name, reason);
    return sentence("{1}: {2} (+{3})", name, reason, std::to_string(spoilt.size() - 1));
}

std::unique_ptr<Picking> picking_at(Shelf &shelf, const std::string &place) {
    try {
        return std::make_unique<Picking>(shelf, place, FirstColumn::opened);
    } catch (const Failure &) {
        return std::make_unique<Picking>(shelf, "", FirstColumn::opened);
    }
}

} // namespace

void Opening::use(OpeningSettings settings) {
    if (settings == settings_) return;
    close();
    shelf_.reset();
    settings_ = std::move(settings);
}

void Opening::open() {
    close();
    open_ = true;
    try {
        look();
        picking_ = picking_at(*shelf_, place_);
        picking_->set_rows(settings_.page_size);
        trouble_ = picking_->view(1).message;
        if (trouble_.empty()) trouble_ = std::exchange(untold_, {});
        if (trouble_.empty()) trouble_ = told(shelf_->files().spoilt);
        if (trouble_.empty() && shelf_->sets().empty()) {
            trouble_ = settings_.hidden.empty()
                           ? sentence("no symbol file in {1}", shelf_->directories().program)
                           : sentence("the settings leave no symbol file to show");
        }
        picking_->act({.act = Act::point, .number = cursor_});
        keep_place();
    } catch (const Failure &failure) {
        picking_.reset();
        trouble_ = failure.what();
    }
}

/** At the disk, and at what was done beside. */
void Opening::look() {
    if (auto troubles = beside_.troubles()) {
        unnoted_.clear();
        if (!troubles->empty()) untold_ = std::move(*troubles);
    }
    if (shelf_) {
        shelf_->refresh();
    } else {
        shelf_ = std::make_unique<Shelf>(module_directories(),
                                         Recents(state_directory(), settings_.recent_picks),
                                         settings_.hidden);
    }
    shelf_->show_recent(unnoted_, settings_.recent_picks);
}

void Opening::close() {
    picking_.reset();
    open_ = over_ = false;
    trouble_.clear();
}

std::vector<Sjis> Opening::act(const Action &action) {
    if (!picking_) {
        over_ = action.act == Act::cancel;
        return {};
    }
    trouble_.clear();
    const std::size_t before = picking_->picks().size();
    picking_->act(action);
    keep_place();
    const std::vector<Sjis> &picks = picking_->picks();
    if (picks.size() < before) return {}; // given back by a cancel
    return {picks.begin() + static_cast<std::ptrdiff_t>(before), picks.end()};
}

void Opening::keep_place() {
    const View view = picking_->view(1);
    if (view.searching) return;
    place_ = view.columns.front().path;
    cursor_ = view.columns.front().first + view.columns.front().cursor.value_or(0);
}

bool Opening::is_over() const {
    return over_ || (picking_ && picking_->end() != PickingEnd::going_on);
}

View Opening::view() const {
    View view = picking_ ? picking_->view(1) : View{};
    if (!trouble_.empty()) view.message = trouble_;
    return view;
}

std::optional<std::size_t> Opening::symbols_below(std::size_t index) const {
    return picking_ ? picking_->symbols_below(index) : std::nullopt;
}

void Opening::note(std::vector<Sjis> picks) {
    if (shelf_) shelf_->show_recent(picks, settings_.recent_picks);
    unnoted_.insert(unnoted_.end(), picks.begin(), picks.end());
    const Recents recents(state_directory(), settings_.recent_picks);
    beside_.run([recents, picks = std::move(picks)] {
        std::string trouble;
        for (const Sjis &pick : picks) {
            const RecentPicks now = recents.add(pick);
            if (!now.trouble.empty()) trouble = now.trouble;
        }
        return trouble;
    });
}

void Opening::toggle_favourite(std::function<void(std::string, bool)> done) {
    const View view = this->view();
    const ViewColumn column = view.columns.empty() ? ViewColumn{} : view.columns.front();
    const Sjis symbol = column.cursor ? column.items[*column.cursor].symbol : Sjis();
    if (symbol.empty()) {
        trouble_ = sentence("there is no symbol under the cursor");
        return;
    }
    beside_.run([symbol, done = std::move(done), favourites = Favourites(module_directories())] {
        try {
            const bool is_one = favourites.has(symbol);
            const std::string shown = to_utf8(symbol);
            if (is_one) {
                favourites.remove(symbol, SetEdits::hooks());
                done(sentence("{1} is no longer in {2}", shown, favourites_title), false);
            } else {
                favourites.add(symbol, SetEdits::hooks());
                done(sentence("{1} is in {2}", shown, favourites_title), false);
            }
        } catch (const std::exception &failure) {
            done(failure.what(), true);
        }
        return std::string();
    });
}

void Opening::show(const std::string &told, bool failed) {
    if (!picking_) {
        if (failed) untold_ = told;
        return;
    }
    trouble_ = told;
    try {
        picking_->refresh();
        keep_place();
    } catch (const Failure &failure) {
        trouble_ = failure.what();
    }
}

} // namespace kigou
