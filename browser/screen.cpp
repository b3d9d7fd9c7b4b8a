// screen.cpp - see screen.h.
#include "browser/screen.h"

#include <unicode/uchar.h>

#include <algorithm>

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

std::string Screen::update(const TerminalWords &words) {
    std::string bytes;
    if (!known_) {
        bytes = words.plain + words.clear;
        shown_.assign(rows_, Row(columns_));
    }
    for (std::size_t row = 0; row < rows_; ++row) update_row(row, words, bytes);
    known_ = true;
    return bytes;
}

void Screen::update_row(std::size_t row, const TerminalWords &words, std::string &bytes) {
    Row &wanted = wanted_[row], &shown = shown_[row];
    const auto differs = std::ranges::mismatch(wanted, shown).in1;
    if (differs == wanted.end()) return;
    auto begin = static_cast<std::size_t>(differs - wanted.begin());
    std::size_t end = columns_;
    while (wanted[end - 1] == shown[end - 1]) --end;
    // Half of a character cannot be drawn over.
    const auto is_second = [&](std::size_t at) {
        return at < columns_ && (wanted[at].text.empty() || shown[at].text.empty());
    };
    while (begin > 0 && is_second(begin)) --begin;
    while (is_second(end)) ++end;

    const std::string *const styles[] = {&words.plain, &words.chosen, &words.heading, &words.faint};
    bool placed = false;
    Style style = Style::plain;
    for (std::size_t column = begin; column < end; ++column) {
        const Cell &cell = wanted[column];
        if (cell.text.empty()) continue;
        if (!placed) bytes += words.to_place(row, column);
        if (cell.style != style) bytes += *styles[static_cast<std::size_t>(cell.style)];
        style = cell.style;
        if (!cell.certain) {
            // It may be drawn in one of its two cells: both are blanked first.
            bytes += "  " + words.to_place(row, column);
        }
        bytes += cell.text;
        placed = cell.certain;
    }
    if (style != Style::plain) bytes += words.plain;
    shown = wanted;
}

} // namespace kigou
