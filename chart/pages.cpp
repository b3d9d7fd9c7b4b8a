// pages.cpp - see pages.h.
#include "chart/pages.h"

namespace chart {
namespace {

/** Height of a piece with what has to stand on the same page behind it. */
double height_together(const std::vector<Piece> &pieces, std::size_t first, double most) {
    double height = pieces[first].height;
    for (std::size_t i = first; i + 1 < pieces.size() && height <= most; ++i) {
        const Piece &piece = pieces[i], &next = pieces[i + 1];
        const bool next_belongs = piece.kind == Piece::Kind::heading &&
                                  (next.kind == Piece::Kind::cells || next.level > piece.level);
        if (!next_belongs) break;
        height += next.gap + next.height;
    }
    return height;
}

} // namespace

std::vector<Placed> placed_on_pages(const std::vector<Piece> &pieces, double page_height,
                                    double repeated_height) {
    std::vector<Placed> placed;
    std::size_t page = 0;
    double bottom = 0; // of what stands on the page
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece &piece = pieces[i];
        const double together = height_together(pieces, i, page_height);
        // What is too long for any page is divided where a page ends.
        const double needed = together <= page_height ? together : piece.height;
        if (bottom > 0 && bottom + piece.gap + needed > page_height) {
            ++page;
            bottom = 0;
            if (piece.kind == Piece::Kind::cells) {
                Piece heading{Piece::Kind::heading, piece.title};
                heading.height = repeated_height;
                heading.repeats = true;
                placed.push_back({heading, page, 0});
                bottom = repeated_height;
            }
        }
        const double top = bottom > 0 ? bottom + piece.gap : 0;
        placed.push_back({piece, page, top});
        bottom = top + piece.height;
    }
    return placed;
}

} // namespace chart
