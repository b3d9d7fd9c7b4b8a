// text.h - text set in whatever fonts have its characters, Japanese ones first. Lengths are
// points.
#ifndef KIGOU_CHART_TEXT_H
#define KIGOU_CHART_TEXT_H

#include <cairo.h>
#include <pango/pango.h>

#include <string>

#include "chart/owned.h"

namespace chart {

struct Colour {
    double red, green, blue;
};

struct Style {
    double size;
    bool bold;
    Colour colour;
    PangoAlignment alignment = PANGO_ALIGN_LEFT;
    int most_lines = 0;    /**< then it ends with an ellipsis; 0 for as many as it takes */
    bool balanced = false; /**< lines of about the same length */
};

/** Where something is drawn. */
struct Box {
    double left, top, width, height;
};

class Typesetter {
  public:
    /** @throws std::runtime_error where there is no font at all */
    Typesetter();

    /** Height of a text that is wrapped to a width. */
    double height(const std::string &text, const Style &style, double width);

    /** @param faint  text before it, less prominent */
    double height(const std::string &faint, const std::string &text, const Style &style,
                  double width);

    void draw(cairo_t *cairo, const std::string &text, const Style &style, double left, double top,
              double width);
    void draw(cairo_t *cairo, const std::string &faint, const std::string &text, const Style &style,
              double left, double top, double width);

    /** One line with a text at each end, made smaller where the two would meet. */
    void draw_pair(cairo_t *cairo, const std::string &left, const std::string &right,
                   const Style &style, const Box &box);

    /**
     * Draws a character in the middle of a box, never beyond it. One without ink, such as a
     * blank, is shown by the outline of its place.
     * @return false, and nothing is drawn, when no font has a glyph for it
     */
    bool draw_symbol(cairo_t *cairo, const std::string &symbol, const Style &style, const Box &box);

  private:
    void balance();
    void set(const std::string &faint, const std::string &text, const Style &style, double width);

    Owned<PangoContext, g_object_unref> context_;
    Owned<PangoLayout, g_object_unref> layout_;
};

/** Sets the colour of what is drawn next. */
void take(cairo_t *cairo, const Colour &colour);

} // namespace chart

#endif
