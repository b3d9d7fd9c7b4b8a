// screen.cpp - see screen.h.
#include "browser/screen.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "picker/text.h"

namespace kigou {
namespace {

/** What a character takes. */
struct Width {
    std::size_t cells;
    bool certain;
};

Width width_of(char32_t character) {
    if (character < 0x7F) return {1, true};
    const auto width =
        u_getIntPropertyValue(static_cast<UChar32>(character), UCHAR_EAST_ASIAN_WIDTH);
    if (width == U_EA_HALFWIDTH || width == U_EA_NARROW) return {1, true};
    return {2, width == U_EA_WIDE || width == U_EA_FULLWIDTH};
}

/** The character itself, or ? for one that takes no cell or commands the terminal. */
char32_t shown_as(char32_t character) {
    const auto code = static_cast<UChar32>(character);
    const auto mask = U_GET_GC_MASK(code);
    const bool no_cell = (mask & (U_GC_C_MASK | U_GC_M_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK)) != 0;
    return no_cell ? U'?' : character;
}

} // namespace

std::string shown_text(std::string_view utf8) {
    std::string text;
    for (const char32_t character : to_characters(utf8)) text += to_utf8(shown_as(character));
    return text;
}

std::size_t cells_of(std::string_view utf8) {
    std::size_t cells = 0;
    for (const char32_t character : to_characters(utf8))
        cells += width_of(shown_as(character)).cells;
    return cells;
}

void Screen::resize(std::size_t rows, std::size_t columns) {
    rows_ = rows;
    columns_ = columns;
    shown_.assign(rows, Row(columns));
    clear();
    forget();
}

void Screen::clear() {
    wanted_.assign(rows_, Row(columns_));
}

void Screen::forget() {
    known_ = false;
}

void Screen::put(std::size_t row, std::size_t column, std::string_view utf8, std::size_t cells,
                 Style style) {
    if (row >= rows_ || column >= columns_) return;
    const std::size_t end = std::min(column + cells, columns_);
    Row &line = wanted_[row];
    // A character that is covered in part goes.
    if (line[column].text.empty()) line[column - 1] = {" ", style, true};
    if (end < columns_ && line[end].text.empty()) line[end] = {" ", style, true};
    const bool fits = cells_of(utf8) <= end - column;
    for (char32_t character : to_characters(utf8)) {
        character = shown_as(character);
        const Width width = width_of(character);
        if (column + width.cells + (fits ? 0 : 1) > end) break;
        line[column] = {to_utf8(character), style, width.certain};
        if (width.cells == 2) line[column + 1] = {"", style, width.certain};
        column += width.cells;
    }
    if (!fits && column < end) line[column++] = {"~", style, true};
    for (; column < end; ++column) line[column] = {" ", style, true};
}

/** Draws characters, and knows how it leaves the terminal. */
class Screen::Pen {
  public:
    explicit Pen(const TerminalWords &words) : words_(&words) {}

    void draw(std::size_t row, std::size_t column, const Cell &cell) {
        if (cell.text.empty()) return;
        if (!is_in(row) || column_ != column) bytes_ += words_->to_place(row, column);
        change(cell.style);
        if (!cell.certain) {
            // It may be drawn in one of its two cells: both are blanked first.
            bytes_ += "  " + words_->to_place(row, column);
        }
        bytes_ += cell.text;
        row_.reset();
        if (cell.certain) row_ = row;
        column_ = column + cells_of(cell.text);
    }

    /** Blanks a row from a column on. */
    void clear_rest(std::size_t row, std::size_t column) {
        if (!is_in(row) || column_ != column) bytes_ += words_->to_place(row, column);
        change(Style::plain);
        bytes_ += words_->clear_rest;
        row_ = row;
        column_ = column;
    }

    /** Whether the terminal's cursor is in a row, at column(), whatever widths it knows. */
    bool is_in(std::size_t row) const { return row_ == row; }
    std::size_t column() const { return column_; }

    void change(Style style) {
        const std::string *const styles[] = {&words_->plain, &words_->chosen, &words_->heading,
                                             &words_->faint};
        if (style != style_) bytes_ += *styles[static_cast<std::size_t>(style)];
        style_ = style;
    }

    /** A pen that goes on where this one is. */
    Pen next() const {
        Pen pen(*words_);
        pen.row_ = row_;
        pen.column_ = column_;
        pen.style_ = style_;
        return pen;
    }

    /** Takes over what a pen did that went on from here. */
    void add(const Pen &pen) {
        bytes_ += pen.bytes_;
        row_ = pen.row_;
        column_ = pen.column_;
        style_ = pen.style_;
    }

    const std::string &bytes() const { return bytes_; }

  private:
    const TerminalWords *words_;
    std::optional<std::size_t> row_;
    std::size_t column_ = 0;
    Style style_ = Style::plain;
    std::string bytes_;
};

std::string Screen::update(const TerminalWords &words) {
    std::string bytes;
    if (!known_) {
        bytes = words.plain + words.clear;
        shown_.assign(rows_, Row(columns_));
    }
    Pen pen(words);
    for (std::size_t row = 0; row < rows_; ++row) {
        update_row(row, pen, !words.clear_rest.empty());
    }
    pen.change(Style::plain);
    known_ = true;
    return bytes + pen.bytes();
}

void Screen::update_row(std::size_t row, Pen &pen, bool can_clear_rest) {
    const Row &wanted = wanted_[row];
    std::size_t blank = columns_, end = columns_; // the last cell that is not, and that differs
    while (blank > 0 && wanted[blank - 1] == Cell()) --blank;
    while (end > 0 && wanted[end - 1] == shown_[row][end - 1]) --end;
    for (std::size_t column = 0; column < columns_; ++column) {
        // Where the second cell of a character differs its first one does.
        const Cell &cell = wanted[column];
        if (cell == shown_[row][column] || cell.text.empty()) continue;
        if (Pen rest = pen.next(); column >= blank && can_clear_rest) {
            rest.clear_rest(row, column);
            if (rest.bytes().size() < end - column) {
                pen.add(rest);
                break;
            }
        }
        // What is equal is passed over, or drawn once more where that takes fewer bytes.
        Pen over = pen.next();
        over.draw(row, column, cell);
        if (pen.is_in(row)) {
            Pen through = pen.next();
            for (std::size_t at = pen.column(); at <= column; ++at)
                through.draw(row, at, wanted[at]);
            if (through.bytes().size() < over.bytes().size()) over = std::move(through);
        }
        pen.add(over);
    }
    shown_[row] = wanted;
}

} // namespace kigou
