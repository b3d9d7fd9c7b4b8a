// opening.cpp - see opening.h.
#include "fcitx/opening.h"

#include <chrono>
#include <filesystem>
#include <utility>

#include "fcitx/folders.h"
#include "picker/failure.h"

namespace kigou {
namespace {

std::string told(const std::vector<SpoiltFile> &spoilt) {
    if (spoilt.empty()) return {};
    const std::string name = std::filesystem::path(spoilt.front().path).filename();
    const std::string text = name + ": " + spoilt.front().reason;
    return spoilt.size() == 1 ? text : text + " (+" + std::to_string(spoilt.size() - 1) + ")";
}

std::unique_ptr<Picking> picking_at(Shelf &shelf, const std::string &place) {
    try {
        return std::make_unique<Picking>(shelf, place, FirstColumn::opened);
    } catch (const Failure &) {
        return std::make_unique<Picking>(shelf, "", FirstColumn::opened);
    }
}

} // namespace

void Opening::keep_recent(std::size_t picks) {
    if (picks == recent_picks_) return;
    close();
    shelf_.reset();
    recent_picks_ = picks;
}

void Opening::open(std::size_t page_size) {
    close();
    open_ = true;
    try {
        const std::string unkept = noted();
        if (shelf_) {
            shelf_->refresh();
        } else {
            shelf_ = std::make_unique<Shelf>(module_directories(),
                                             Recents(state_directory(), recent_picks_));
        }
        shelf_->show_recent(unnoted_, recent_picks_);
        picking_ = picking_at(*shelf_, place_);
        picking_->set_rows(page_size);
        trouble_ = picking_->view(1).message;
        if (trouble_.empty()) trouble_ = unkept;
        if (trouble_.empty()) trouble_ = told(shelf_->files().spoilt);
        if (trouble_.empty() && shelf_->sets().empty()) {
            trouble_ = "no symbol file in " + shelf_->directories().program;
        }
        picking_->act({.act = Act::point, .number = cursor_});
        keep_place();
    } catch (const Failure &failure) {
        picking_.reset();
        trouble_ = failure.what();
    }
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
    if (view.message.empty()) view.message = trouble_;
    return view;
}

std::optional<std::size_t> Opening::symbols_below(std::size_t index) const {
    return picking_ ? picking_->symbols_below(index) : std::nullopt;
}

void Opening::note(std::vector<Sjis> picks) {
    if (shelf_) shelf_->show_recent(picks, recent_picks_);
    unnoted_.insert(unnoted_.end(), picks.begin(), picks.end());
    noting_ = std::async(std::launch::async,
                         [recents = Recents(state_directory(), recent_picks_),
                          picks = std::move(picks), before = std::move(noting_)]() mutable {
                             std::string trouble = before.valid() ? before.get() : std::string();
                             for (const Sjis &pick : picks) {
                                 const RecentPicks now = recents.add(pick);
                                 if (!now.trouble.empty()) trouble = now.trouble;
                             }
                             return trouble;
                         });
}

/** What went wrong with the notes; nothing while they are not done. */
std::string Opening::noted() {
    constexpr std::chrono::seconds at_once{0};
    if (!noting_.valid() || noting_.wait_for(at_once) != std::future_status::ready) return {};
    unnoted_.clear();
    return noting_.get();
}

} // namespace kigou
