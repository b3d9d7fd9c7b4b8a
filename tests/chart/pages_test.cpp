// What stands on which page.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "chart/pages.h"

namespace chart {
namespace {

/** "1" to "9" are headings of that level, c is a line of cells, C one of another title: each 10
 * high, with a gap of 2 above a heading; H is a heading of the first level that is 95 high. */
std::vector<Piece> pieces_of(const std::string &text) {
    std::vector<Piece> pieces;
    for (const char letter : text) {
        const bool is_cells = letter == 'c' || letter == 'C';
        Piece piece{is_cells ? Piece::Kind::cells : Piece::Kind::heading, letter == 'C' ? 1U : 0U};
        piece.height = letter == 'H' ? 95 : 10;
        piece.gap = is_cells ? 0 : 2;
        if (!is_cells) piece.level = letter == 'H' ? 1 : letter - '0';
        pieces.push_back(piece);
    }
    return pieces;
}

/** The same with "|" between pages, and r for a heading that is repeated, 5 high. */
std::string written(const std::vector<Placed> &placed) {
    std::string text;
    std::size_t page = 0;
    double bottom = 0;
    for (const auto &[piece, on_page, top] : placed) {
        for (; page < on_page; ++page, bottom = 0) text += '|';
        EXPECT_EQ(top, bottom == 0 ? 0 : bottom + piece.gap);
        bottom = top + piece.height;
        const bool is_cells = piece.kind == Piece::Kind::cells;
        text += piece.repeats       ? 'r'
                : piece.height > 90 ? 'H'
                : is_cells          ? (piece.title == 0 ? 'c' : 'C')
                                    : static_cast<char>('0' + piece.level);
    }
    return text;
}

TEST(Pages, are_filled_but_no_heading_stands_alone_at_a_foot) {
    const struct {
        const char *name, *pieces, *expected;
    } rows[] = {
        {"nothing", "", ""},
        {"one full page", "1cccc", "1cccc"},
        {"cells go on below their heading", "1cccccccc", "1cccc|rcccc"},
        {"and on", "1ccccccccc", "1cccc|rcccc|rc"},
        {"a heading goes to its cells", "1ccc2cc", "1ccc|2cc"},
        {"headings go together to their cells", "1cc23cc", "1cc|23cc"},
        {"a title that has nothing may be the last", "1ccc1", "1ccc1"},
        {"and others follow it", "1cc11cc", "1cc1|1cc"},
        {"the heading of the title that goes on", "1c1CCCCC", "1c1CC|rCCC"},
        {"more headings than a page holds", "12345678c", "1234|5|678c"},
        {"one that no page holds", "1cHc", "1c|H|rc"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(written(placed_on_pages(pieces_of(row.pieces), 52, 5)), row.expected) << row.name;
    }
}

} // namespace
} // namespace chart
