// pages.h - what stands on which page. Lengths are points.
#ifndef KIGOU_CHART_PAGES_H
#define KIGOU_CHART_PAGES_H

#include <cstddef>
#include <vector>

namespace chart {

/** One of the things that stand below each other and are not divided. */
struct Piece {
    enum class Kind { front, heading, cells } kind;
    std::size_t title = 0;          /**< number of the title that it belongs to */
    std::size_t row = 0, first = 0; /**< of cells: which row, and the first cell of it */
    std::size_t count = 0;          /**< of cells: how many */
    double height = 0;
    double gap = 0;       /**< above it, but not at the top of a page */
    int level = 0;        /**< of a heading */
    bool repeats = false; /**< a heading once more, since its cells go on here */
};

struct Placed {
    Piece piece;
    std::size_t page;
    double top;
};

/**
 * Places pieces on pages of a height. A heading stands on the page of the cells or the deeper
 * heading that follow it, and is repeated above cells that go on on another page. A piece that is
 * higher than a page has one of its own.
 * @param repeated_height  of a heading that is repeated
 */
std::vector<Placed> placed_on_pages(const std::vector<Piece> &pieces, double page_height,
                                    double repeated_height);

} // namespace chart

#endif
