// sheet.h - a chart on pages: what stands where, and how it is drawn.
#ifndef KIGOU_CHART_SHEET_H
#define KIGOU_CHART_SHEET_H

#include <cairo.h>

#include <cstddef>
#include <string>
#include <vector>

#include "chart/description.h"
#include "chart/pages.h"
#include "chart/text.h"

namespace chart {

/** Of the pages, in points. */
struct Paper {
    double width, height;
    double side, head, foot; /**< margins */
};

inline constexpr Paper a4{595.276, 841.89, 42, 54, 48};

class Sheet {
  public:
    /** The description must outlive it. */
    Sheet(const Description &description, Typesetter &typesetter);

    /** Height of all pieces below each other, in points. */
    double length() const;

    /** Places the pieces on pages with that much room between their margins. */
    std::vector<Placed> placed(double room) const;

    /** Draws a piece, its top left corner at a place. */
    void draw(cairo_t *cairo, const Piece &piece, double left, double top);

    /** Draws what stands at the head and the foot of one of several pages. */
    void draw_margins(cairo_t *cairo, const Paper &paper, std::size_t page, std::size_t pages);

    /** Symbols for which no font had a glyph so far, each once, with its codes. */
    const std::vector<std::string> &no_glyph() const { return no_glyph_; }

  private:
    void add_front();
    void add_title(std::size_t number);
    void add_row(std::size_t number, std::size_t row, double names);
    double gap_above(std::size_t number) const;
    void draw_heading(cairo_t *cairo, const Piece &piece, double left, double top);
    void draw_cell(cairo_t *cairo, const Cell &cell, const Box &box);

    const Description &description_;
    Typesetter &typesetter_;
    std::vector<Piece> pieces_;
    std::vector<std::string> no_glyph_;
};

} // namespace chart

#endif
