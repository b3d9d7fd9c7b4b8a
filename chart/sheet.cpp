// sheet.cpp - see sheet.h.
#include "chart/sheet.h"

#include <algorithm>
#include <span>

namespace chart {
namespace {

constexpr Colour ink{0.1, 0.1, 0.1}, grey{0.35, 0.35, 0.35}, line_colour{0.78, 0.78, 0.78},
    accent{0.16, 0.31, 0.47};

constexpr double inner_width = a4.width - 2 * a4.side;
constexpr int first_level = 2;           // of a title, as the description counts
constexpr std::size_t cells_a_line = 10; // as kigou writes lines of symbols
constexpr double cell_width = inner_width / cells_a_line;
constexpr double cell_padding = 3, symbol_height = 34, codes_height = 10, cell_foot = 1;
constexpr double name_padding = 1.4, name_width = cell_width - 2 * name_padding, name_foot = 2;
constexpr double row_gap = 3, heading_gap = 12, first_level_gap = 20, child_gap = 3,
                 under_heading = 4, front_gap = 3, front_foot = 6, hatch_step = 4;
constexpr double bar_width = 2.5, heading_indent = 7, most_indent = 70;
constexpr double line_width = 0.5;

constexpr Style front_style{24, true, ink}, note_style{9, false, grey},
    symbol_style{24, false, ink}, codes_style{6.2, false, grey, PANGO_ALIGN_LEFT, 1},
    name_style{5.9, false, ink, PANGO_ALIGN_CENTER, 3, true},
    margin_style{8, false, grey, PANGO_ALIGN_LEFT, 1},
    page_style{8, false, grey, PANGO_ALIGN_CENTER, 1};

/** Smaller the deeper the title. */
Style heading_style(int level, bool repeats) {
    const double size = repeats ? 9 : std::max(9.0, 14.5 - 1.5 * (level - first_level));
    return {size, !repeats, ink, PANGO_ALIGN_LEFT, repeats ? 1 : 0};
}

double indent_of(int level) {
    return std::min(most_indent, heading_indent * (level - first_level + 1));
}

constexpr const char *goes_on = "（続き）";

std::string label_of(const Cell &cell) {
    std::string label = cell.symbol;
    for (const std::string &code : cell.codes) {
        if (!code.empty()) label += ' ' + code;
    }
    return label;
}

void hatch(cairo_t *cairo, const Box &box) {
    cairo_save(cairo);
    cairo_rectangle(cairo, box.left, box.top, box.width, box.height);
    cairo_clip(cairo);
    const int strokes = static_cast<int>((box.width + box.height) / hatch_step);
    for (int stroke = 0; stroke <= strokes; ++stroke) {
        const double x = stroke * hatch_step - box.height;
        cairo_move_to(cairo, box.left + x, box.top + box.height);
        cairo_line_to(cairo, box.left + x + box.height, box.top);
    }
    take(cairo, grey);
    cairo_stroke(cairo);
    cairo_restore(cairo);
    take(cairo, grey);
    cairo_rectangle(cairo, box.left, box.top, box.width, box.height);
    cairo_stroke(cairo);
}

} // namespace

Sheet::Sheet(const Description &description, Typesetter &typesetter)
    : description_(description), typesetter_(typesetter) {
    add_front();
    for (std::size_t i = 0; i < description.titles.size(); ++i) add_title(i);
}

void Sheet::add_front() {
    Piece front{Piece::Kind::front};
    front.height = typesetter_.height(description_.heading, front_style, inner_width) + front_gap +
                   typesetter_.height(description_.note, note_style, inner_width) + front_foot;
    pieces_.push_back(front);
}

/** A title comes closer to one before it that has nothing of its own. */
double Sheet::gap_above(std::size_t number) const {
    const Title &title = description_.titles[number];
    if (number == 0) return heading_gap;
    const Title &before = description_.titles[number - 1];
    if (before.rows.empty() && before.level <= title.level) return child_gap;
    return title.level <= first_level ? first_level_gap : heading_gap;
}

void Sheet::add_title(std::size_t number) {
    const Title &title = description_.titles[number];
    Piece heading{Piece::Kind::heading, number};
    heading.level = title.level;
    heading.gap = gap_above(number);
    heading.height = typesetter_.height(title.above, title.name, heading_style(title.level, false),
                                        inner_width - indent_of(title.level)) +
                     under_heading;
    pieces_.push_back(heading);
    double names = 0; // one height for all that have some, so that the grid is even
    for (const Row &row : title.rows) {
        for (const Cell &cell : row) {
            if (cell.name.empty()) continue;
            names =
                std::max(names, name_foot + typesetter_.height(cell.name, name_style, name_width));
        }
    }
    for (std::size_t row = 0; row < title.rows.size(); ++row) add_row(number, row, names);
}

void Sheet::add_row(std::size_t number, std::size_t row, double names) {
    const std::span<const Cell> all(description_.titles[number].rows[row]);
    for (std::size_t first = 0; first < all.size(); first += cells_a_line) {
        Piece cells{Piece::Kind::cells, number, row, first};
        cells.count = std::min(cells_a_line, all.size() - first);
        const auto line = all.subspan(first, cells.count);
        const bool has_names = std::any_of(line.begin(), line.end(),
                                           [](const Cell &cell) { return !cell.name.empty(); });
        cells.height = symbol_height + codes_height + (has_names ? names : 0) + cell_foot;
        cells.gap = row != 0 && first == 0 ? row_gap : 0;
        pieces_.push_back(cells);
    }
}

double Sheet::length() const {
    double length = 0;
    for (const Piece &piece : pieces_) length += piece.gap + piece.height;
    return length;
}

std::vector<Placed> Sheet::placed(double room) const {
    const double repeated =
        typesetter_.height("", goes_on, heading_style(0, true), inner_width) + under_heading;
    return placed_on_pages(pieces_, room, repeated);
}

void Sheet::draw(cairo_t *cairo, const Piece &piece, double left, double top) {
    cairo_set_line_width(cairo, line_width);
    if (piece.kind == Piece::Kind::heading) return draw_heading(cairo, piece, left, top);
    if (piece.kind == Piece::Kind::front) {
        typesetter_.draw(cairo, description_.heading, front_style, left, top, inner_width);
        top += typesetter_.height(description_.heading, front_style, inner_width) + front_gap;
        return typesetter_.draw(cairo, description_.note, note_style, left, top, inner_width);
    }
    const Row &row = description_.titles[piece.title].rows[piece.row];
    for (std::size_t i = 0; i < piece.count; ++i) {
        draw_cell(cairo, row[piece.first + i],
                  {left + static_cast<double>(i) * cell_width, top, cell_width, piece.height});
    }
}

void Sheet::draw_heading(cairo_t *cairo, const Piece &piece, double left, double top) {
    const Title &title = description_.titles[piece.title];
    const double indent = indent_of(title.level);
    take(cairo, accent);
    cairo_rectangle(cairo, left + indent - heading_indent, top + 1, bar_width,
                    piece.height - under_heading - 1);
    cairo_fill(cairo);
    typesetter_.draw(cairo, title.above, title.name + (piece.repeats ? goes_on : ""),
                     heading_style(title.level, piece.repeats), left + indent, top,
                     inner_width - indent);
}

void Sheet::draw_cell(cairo_t *cairo, const Cell &cell, const Box &box) {
    cairo_rectangle(cairo, box.left, box.top, box.width, box.height);
    take(cairo, line_colour);
    cairo_stroke(cairo);
    const double left = box.left + cell_padding, width = box.width - 2 * cell_padding;
    const Box place{left, box.top + cell_padding, width, symbol_height - 2 * cell_padding};
    const bool is_character = !cell.symbol.empty();
    if (!is_character || !typesetter_.draw_symbol(cairo, cell.symbol, symbol_style, place)) {
        const double side = place.height;
        hatch(cairo, {place.left + (place.width - side) / 2, place.top, side, side});
        const std::string label = label_of(cell);
        if (is_character && std::find(no_glyph_.begin(), no_glyph_.end(), label) == no_glyph_.end())
            no_glyph_.push_back(label);
    }
    typesetter_.draw_pair(cairo, cell.codes[0], cell.codes[1], codes_style,
                          {left, box.top + symbol_height, width, codes_height});
    typesetter_.draw(cairo, cell.name, name_style, box.left + name_padding,
                     box.top + symbol_height + codes_height, name_width);
}

void Sheet::draw_margins(cairo_t *cairo, const Paper &paper, std::size_t page, std::size_t pages) {
    const double width = paper.width - 2 * paper.side;
    if (page != 0) {
        constexpr double above_text = 22;
        typesetter_.draw(cairo, description_.heading, margin_style, paper.side,
                         paper.head - above_text, width);
    }
    typesetter_.draw(cairo, std::to_string(page + 1) + " / " + std::to_string(pages), page_style,
                     paper.side, paper.height - paper.foot * 0.6, width);
}

} // namespace chart
