// picking_view.cpp - what a front end draws; see picking.h.
#include <algorithm>

#include "picker/codes.h"
#include "picker/failure.h"
#include "picker/picking/picking.h"
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

/** A column with a page of items, which are made one by one. */
template <typename Item>
ViewColumn page_of(std::size_t cursor, std::size_t rows, std::size_t total, const Item &item) {
    ViewColumn column{.path = {}, .items = {}, .first = cursor / rows * rows, .total = total};
    for (std::size_t i = column.first; i < std::min(column.first + rows, total); ++i) {
        column.items.push_back(item(i));
    }
    if (total != 0) column.cursor = cursor - column.first;
    return column;
}

} // namespace

PlaceItem Picking::found_item(std::size_t index) const {
    const FoundSymbol &found = found_.found[index];
    PlaceItem item{ItemKind::symbol, to_utf8(found.symbol), false, found.symbol};
    if (!found.titles.empty()) item.path = shelf_.index().path(found.titles.front());
    return item;
}

ViewColumn Picking::view_of(const Place &place, std::size_t cursor) const {
    ViewColumn column =
        page_of(cursor, rows_, place.size(), [&](std::size_t index) { return place.item(index); });
    column.path = place.path();
    column.read_only = place.snapshot() && shelf_.is_read_only(place.snapshot()->path());
    return column;
}

std::optional<std::size_t> Picking::symbols_below(std::size_t index) const {
    const Place &place = current().place;
    if (searching_ || index >= place.titles()) return std::nullopt;
    try {
        return place.symbols_below(shelf_, index);
    } catch (const Failure &) {
        return std::nullopt; // entering it says why
    }
}

View Picking::view(std::size_t most_columns) const {
    View view;
    view.searching = searching_;
    view.query = query_;
    view.message = message_;
    view.can_undo = edits_.can_undo();
    if (asking_) {
        view.asking = question();
        view.answer = asking_->answer;
    }
    if (number_ != 0) view.number = std::to_string(number_);
    for (const Sjis &pick : picks_) view.picks += to_utf8(pick);
    if (const auto under = symbol()) view.symbol = told(*under);
    if (searching_) {
        view.columns.push_back(page_of(found_cursor_, rows_, size(),
                                       [&](std::size_t index) { return found_item(index); }));
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
