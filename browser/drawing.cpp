// drawing.cpp - see drawing.h. The first row is the path, the last three are the symbol, the
// picks or a message, and the hints.
#include "browser/drawing.h"

#include <algorithm>
#include <string>

#include "picker/search/readings.h"
#include "picker/title.h"

namespace kigou {
namespace {

constexpr std::size_t other_rows = 4;
constexpr std::size_t number_cells = 2; // and a blank
constexpr std::size_t symbol_cells = 3; // two and a gap
constexpr std::size_t least_cells = 8, most_cells = 28;
constexpr std::size_t most_numbered = 9;

std::string name_of(const PlaceItem &item) {
    const SymbolNames *const names = names_of(item.symbol);
    return names ? std::string(names->name) : std::string();
}

std::size_t cells_of(const PlaceItem &item) {
    if (item.kind == ItemKind::symbol) return symbol_cells + kigou::cells_of(name_of(item));
    return kigou::cells_of(item.label) + 2; // a mark behind
}

std::size_t cells_of(const ViewColumn &column) {
    std::size_t cells = least_cells;
    for (const PlaceItem &item : column.items)
        cells = std::max(cells, number_cells + cells_of(item));
    return std::min(cells, most_cells);
}

void draw_item(const PlaceItem &item, std::size_t row, std::size_t column, std::size_t cells,
               Style style, Screen &screen) {
    if (item.kind != ItemKind::symbol) {
        screen.put(row, column, item.label + (item.below ? " >" : ""), cells, style);
        return;
    }
    screen.put(row, column, item.label, std::min(cells, symbol_cells), style);
    if (cells <= symbol_cells) return;
    std::string text = name_of(item);
    if (!item.path.empty()) text += "  " + item.path;
    screen.put(row, column + symbol_cells, text, cells - symbol_cells, style);
}

void draw_column(const ViewColumn &column, std::size_t at, std::size_t cells, bool current,
                 Screen &screen) {
    for (std::size_t i = 0; i < column.items.size(); ++i) {
        const bool chosen = column.cursor == i;
        const Style style = !chosen ? Style::plain : current ? Style::chosen : Style::heading;
        const std::string number = current && i < most_numbered ? std::to_string(i + 1) : "";
        screen.put(1 + i, at, number, number_cells, Style::faint);
        if (cells > number_cells) {
            draw_item(column.items[i], 1 + i, at + number_cells, cells - number_cells, style,
                      screen);
        }
    }
    const bool more = column.first + column.items.size() < column.total;
    if (more) screen.put(1 + column.items.size(), at, "...", cells, Style::faint);
}

void draw_symbol(const SymbolTold &symbol, std::size_t row, Screen &screen) {
    screen.put(row, 0, symbol.symbol, symbol_cells);
    std::string text;
    const auto add = [&](const char *name, const std::string &value) {
        if (!value.empty()) text += (text.empty() ? "" : "  ") + std::string(name) + value;
    };
    add("", symbol.name);
    add("", symbol.unicode);
    add("kuten ", symbol.kuten);
    add("SJIS ", symbol.sjis);
    add("JIS ", symbol.jis);
    add("EUC ", symbol.euc);
    add("", symbol.readings);
    screen.put(row, symbol_cells, text, screen.columns());
}

std::string heading(const View &view) {
    if (view.searching) return "find: " + view.query + "_";
    return view.columns[view.current].path;
}

} // namespace

std::size_t item_rows(std::size_t screen_rows) {
    return screen_rows > other_rows + 1 ? screen_rows - other_rows - 1 : 1;
}

std::vector<DrawnItem> draw(const View &view, const std::string &hints, Screen &screen) {
    screen.clear();
    const std::size_t room = screen.columns(), rows = screen.rows();
    screen.put(0, 0, heading(view), room, Style::heading);
    std::vector<DrawnItem> drawn;
    if (view.searching) {
        drawn.push_back({0, room, 0});
    } else {
        std::vector<std::size_t> cells;
        for (const ViewColumn &column : view.columns) cells.push_back(cells_of(column) + 1);
        // From the current one leftwards; what is behind it has what is left.
        std::size_t first = view.current, taken = cells[view.current];
        while (first > 0 && taken + cells[first - 1] + least_cells <= room) taken += cells[--first];
        std::size_t at = 0;
        for (std::size_t i = first; i < view.columns.size() && at < room; ++i) {
            drawn.push_back({at, std::min(cells[i], room - at), i});
            at += cells[i];
        }
    }
    for (const DrawnItem &column : drawn) {
        draw_column(view.columns[column.number], column.column, column.cells,
                    column.number == view.current, screen);
    }
    if (rows < other_rows) return drawn;
    if (view.symbol) draw_symbol(*view.symbol, rows - 3, screen);
    const std::string line = !view.asking.empty()    ? view.asking + ": " + view.answer + "_"
                             : !view.message.empty() ? view.message
                             : view.picks.empty()    ? std::string()
                                                     : "taken: " + view.picks;
    screen.put(rows - 2, 0, line, room);
    screen.put(rows - 1, 0, hints, room - 1, Style::faint);
    return drawn;
}

std::size_t draw_help(const std::vector<std::string> &lines, std::size_t from, Screen &screen) {
    screen.clear();
    const std::size_t rows = std::max<std::size_t>(screen.rows(), 2) - 1;
    const std::size_t drawn = std::min(rows, lines.size() - from);
    for (std::size_t i = 0; i < drawn; ++i) screen.put(i, 0, lines[from + i], screen.columns());
    const bool more = from + drawn < lines.size();
    screen.put(rows, 0, more ? "any key: more" : "any key: back", screen.columns() - 1,
               Style::faint);
    return drawn;
}

} // namespace kigou
