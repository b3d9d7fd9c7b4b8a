// drawing.cpp - see drawing.h. The first row is the path, the last three are the symbol, the
// picks or a message, and the hints.
#include "browser/drawing.h"

#include <algorithm>
#include <string>

#include "picker/search/readings.h"
#include "picker/text.h"
#include "picker/word_list.h"

namespace kigou {
namespace {

constexpr std::size_t other_rows = 4;
constexpr std::size_t symbol_cells = 3; // two and a gap
constexpr std::size_t least_cells = 8, most_cells = 28;

std::string name_of(const PlaceItem &item) {
    const SymbolNames *const names = names_of(item.symbol);
    return names ? std::string(names->name) : std::string();
}

std::size_t cells_of(const PlaceItem &item) {
    if (item.kind == ItemKind::symbol) return symbol_cells + kigou::cells_of(name_of(item));
    return kigou::cells_of(item.label) + 2; // a mark behind
}

/** Cells of the number before an item, with a blank. */
std::size_t number_cells(const ViewColumn &column) {
    return std::to_string(column.items.size()).size() + 1;
}

std::size_t cells_of(const ViewColumn &column) {
    std::size_t cells = least_cells;
    for (const PlaceItem &item : column.items)
        cells = std::max(cells, number_cells(column) + cells_of(item));
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
    screen.put(row, column + symbol_cells, name_of(item), cells - symbol_cells, style);
}

/** A symbol that was found: its name, where it stands, and how it is read. */
void draw_found(const PlaceItem &item, std::size_t row, std::size_t column, std::size_t cells,
                Style style, Screen &screen) {
    const std::size_t name = cells / 4, path = cells / 2;
    if (cells < 4 * least_cells) return draw_item(item, row, column, cells, style, screen);
    draw_item(item, row, column, symbol_cells + name, style, screen);
    const auto put = [&](std::size_t at, const std::string &text, std::size_t room) {
        screen.put(row, at, "", 1, style);
        screen.put(row, at + 1, text, room - 1, style);
    };
    put(column + symbol_cells + name, item.path, path);
    put(column + symbol_cells + name + path, word_list(readings_of(item.symbol)),
        cells - symbol_cells - name - path);
}

void draw_column(const ViewColumn &column, std::size_t at, std::size_t cells, bool current,
                 bool found, Screen &screen) {
    const std::size_t in_front = number_cells(column);
    for (std::size_t i = 0; i < column.items.size(); ++i) {
        const bool chosen = column.cursor == i;
        const Style style = !chosen ? Style::plain : current ? Style::chosen : Style::heading;
        screen.put(1 + i, at, current ? std::to_string(i + 1) : "", in_front, Style::faint);
        if (cells <= in_front) continue;
        (found ? draw_found : draw_item)(column.items[i], 1 + i, at + in_front, cells - in_front,
                                         style, screen);
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

/** The end of a text, behind ~ when it does not fit. */
std::string end_of(const std::string &text, std::size_t cells) {
    if (kigou::cells_of(text) <= cells) return text;
    const std::u32string characters = to_characters(text);
    std::size_t first = characters.size();
    for (std::size_t taken = 1; first > 0; --first) {
        taken += kigou::cells_of(to_utf8(characters[first - 1]));
        if (taken > cells) break;
    }
    std::string end = "~";
    for (; first < characters.size(); ++first) end += to_utf8(characters[first]);
    return end;
}

/** @return where what is looked for is typed */
std::size_t draw_heading(const View &view, Screen &screen) {
    const ViewColumn &column = view.columns[view.current];
    const bool sets =
        view.current == 0 && !column.items.empty() && column.items.front().kind != ItemKind::title;
    const std::string path = !column.path.empty() ? column.path : sets ? "all sets" : "(no title)";
    const std::string mark = column.read_only ? "  (read-only)" : "";
    std::string place;
    if (column.cursor) {
        place =
            std::to_string(column.first + *column.cursor + 1) + "/" + std::to_string(column.total);
    }
    const std::size_t room = screen.columns();
    const std::size_t left = place.size() + 1 < room ? room - place.size() - 1 : room;
    std::size_t typed_at = 0;
    if (view.searching) {
        const std::string typed = "find: " + end_of(view.query, left > 7 ? left - 7 : 1);
        screen.put(0, 0, typed + "_", left, Style::heading);
        typed_at = kigou::cells_of(typed);
    } else {
        screen.put(0, 0, end_of(path, left > mark.size() ? left - mark.size() : 1) + mark, left,
                   Style::heading);
    }
    screen.put(0, left + 1, place, place.size(), Style::faint);
    return typed_at;
}

/** A text in lines of so many cells, cut at blanks where there are some. */
std::vector<std::string> lines_of(const std::string &text, std::size_t cells) {
    std::vector<std::string> lines;
    std::string rest = text;
    while (kigou::cells_of(rest) > cells) {
        std::string line;
        std::size_t blank = 0;
        for (const char32_t character : to_characters(rest)) {
            const std::string next = line + to_utf8(character);
            if (kigou::cells_of(next) > cells) break;
            if (character == U' ') blank = line.size();
            line = next;
        }
        if (line.empty()) break; // not even one fits
        if (blank != 0) line.resize(blank);
        lines.push_back(line);
        rest.erase(0, line.size() + (blank != 0 ? 1 : 0));
    }
    lines.push_back(rest);
    return lines;
}

/** Draws a text whose last line is to be in that row. */
void draw_upwards(const std::string &text, std::size_t row, Screen &screen) {
    std::vector<std::string> lines = lines_of(text, screen.columns());
    while (lines.size() > row) lines.pop_back(); // the first row stays
    for (std::size_t i = 0; i < lines.size(); ++i) {
        screen.put(row + 1 - lines.size() + i, 0, lines[i], screen.columns());
    }
}

/** The lines of a question, a message or the picks. @return where an answer is typed */
std::size_t draw_line(const View &view, std::size_t row, Screen &screen) {
    const std::size_t room = screen.columns();
    if (!view.asking.empty()) {
        const std::string question = view.asking + ": ";
        const std::size_t taken = kigou::cells_of(question) + 1;
        const std::string line = question + end_of(view.answer, room > taken ? room - taken : 1);
        screen.put(row, 0, line + "_", room);
        if (!view.message.empty()) draw_upwards(view.message, row - 1, screen);
        return kigou::cells_of(line);
    }
    if (view.message.empty()) {
        const std::string taken = "taken: ";
        const std::size_t left = room > taken.size() ? room - taken.size() : 1;
        screen.put(row, 0, view.picks.empty() ? "" : taken + end_of(view.picks, left), room);
    } else {
        draw_upwards(view.message, row, screen);
    }
    return 0;
}

} // namespace

std::size_t item_rows(std::size_t screen_rows) {
    return screen_rows > other_rows + 1 ? screen_rows - other_rows - 1 : 1;
}

Drawn draw(const View &view, const std::vector<std::string> &hints, Screen &screen) {
    screen.clear();
    const std::size_t room = screen.columns(), rows = screen.rows();
    Drawn done{{}, 0, draw_heading(view, screen)};
    std::vector<DrawnItem> &drawn = done.columns;
    if (view.searching) {
        drawn.push_back({0, room, 0});
    } else {
        std::vector<std::size_t> cells;
        for (const ViewColumn &column : view.columns) cells.push_back(cells_of(column) + 1);
        // From the current one leftwards; what is behind it has what is left.
        const std::size_t behind = view.current + 1 < view.columns.size() ? least_cells : 0;
        std::size_t first = view.current, taken = cells[view.current] + behind;
        while (first > 0 && taken + cells[first - 1] <= room) taken += cells[--first];
        std::size_t at = 0;
        for (std::size_t i = first; i < view.columns.size() && at < room; ++i) {
            drawn.push_back({at, std::min(cells[i], room - at), i});
            at += cells[i];
        }
    }
    for (const DrawnItem &column : drawn) {
        draw_column(view.columns[column.number], column.column, column.cells,
                    column.number == view.current, view.searching, screen);
    }
    const ViewColumn &current = view.columns[view.current];
    if (!view.searching && current.cursor) {
        const auto at = std::ranges::find(drawn, view.current, &DrawnItem::number);
        done.row = 1 + *current.cursor;
        done.column = at == drawn.end() ? 0 : at->column + number_cells(current);
    }
    if (rows < other_rows) return done;
    if (view.symbol) draw_symbol(*view.symbol, rows - 3, screen);
    const std::size_t typed_at = draw_line(view, rows - 2, screen);
    if (!view.asking.empty()) {
        done.row = rows - 2;
        done.column = typed_at;
    }
    std::string line_of_hints;
    for (const std::string &hint : hints) {
        const std::string more = (line_of_hints.empty() ? "" : "  ") + hint;
        if (line_of_hints.size() + more.size() < room) line_of_hints += more;
    }
    screen.put(rows - 1, 0, line_of_hints, room - 1, Style::faint);
    return done;
}

std::size_t draw_help(const std::vector<std::string> &lines, std::size_t from, Screen &screen) {
    screen.clear();
    const std::size_t rows = std::max<std::size_t>(screen.rows(), 2) - 1;
    const std::size_t drawn = std::min(rows, lines.size() - from);
    for (std::size_t i = 0; i < drawn; ++i) screen.put(i, 0, lines[from + i], screen.columns());
    const bool more = from + drawn < lines.size();
    screen.put(rows, 0, more ? "any key: more  Esc: back" : "any key: back", screen.columns() - 1,
               Style::faint);
    return drawn;
}

} // namespace kigou
