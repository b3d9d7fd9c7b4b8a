// picture.cpp - see picture.h.
#include "chart/picture.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "chart/sheet.h"

namespace chart {
namespace {

using Surface = Owned<cairo_surface_t, cairo_surface_destroy>;
using Cairo = Owned<cairo_t, cairo_destroy>;

/** More of it in one direction programs do not show: 32,767 dots of which 96 are 72 points. */
constexpr double most_side = 32767 * 0.75;

cairo_status_t append(void *bytes, const unsigned char *data, unsigned size) {
    static_cast<std::string *>(bytes)->append(reinterpret_cast<const char *>(data), size);
    return CAIRO_STATUS_SUCCESS;
}

void check(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

/** Ends a surface, after which all of it is written. */
void finish(cairo_t *cairo, cairo_surface_t *surface) {
    check(cairo_status(cairo));
    cairo_surface_finish(surface);
    check(cairo_surface_status(surface));
}

std::string with_escapes(const std::string &text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '&')
            escaped += "&amp;";
        else if (character == '<')
            escaped += "&lt;";
        else
            escaped += character;
    }
    return escaped;
}

/** The picture with a title, which cairo gives none. */
std::string titled(const std::string &svg, const std::string &title) {
    const auto behind_head = svg.find(">\n", svg.find("<svg ")) + 2;
    return svg.substr(0, behind_head) + "<title>" + with_escapes(title) + "</title>\n" +
           svg.substr(behind_head);
}

std::string drawn_as_svg(const Description &description, Sheet &sheet) {
    // As few columns of equal length as there have to be.
    const double margins = 2 * a4.side, most_room = most_side - margins;
    const double least = std::ceil(sheet.length() / most_room);
    // Columns end a little earlier, where a row does.
    const double room =
        least > 1 ? std::min(most_room, sheet.length() / least + a4.height) : most_room;
    const std::vector<Placed> placed = sheet.placed(room);
    double height = 0;
    for (const Placed &one : placed) height = std::max(height, one.top + one.piece.height);
    const double width = a4.width * static_cast<double>(placed.back().page + 1);
    if (width > most_side)
        throw std::runtime_error("it is too large for one picture; a PDF has pages");
    std::string bytes;
    const Surface surface(
        cairo_svg_surface_create_for_stream(append, &bytes, width, height + margins));
    cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PT);
    const Cairo cairo(cairo_create(surface.get()));
    cairo_set_source_rgb(cairo.get(), 1, 1, 1);
    cairo_paint(cairo.get());
    for (const Placed &one : placed) {
        const double left = a4.width * static_cast<double>(one.page);
        sheet.draw(cairo.get(), one.piece, left + a4.side, a4.side + one.top);
    }
    finish(cairo.get(), surface.get());
    return titled(bytes, description.heading);
}

/** The titles at the side of a reader, each below the one above it. */
class Outline {
  public:
    Outline(cairo_surface_t *surface, const Description &description)
        : surface_(surface), description_(description) {}

    void add(const Piece &heading, std::size_t page, double top) {
        const Title &title = description_.titles[heading.title];
        while (!above_.empty() && above_.back().first >= title.level) above_.pop_back();
        const int parent = above_.empty() ? CAIRO_PDF_OUTLINE_ROOT : above_.back().second;
        const std::string place = "page=" + std::to_string(page + 1) + " pos=[" +
                                  std::to_string(static_cast<int>(a4.side)) + " " +
                                  std::to_string(static_cast<int>(top)) + "]";
        const int entry = cairo_pdf_surface_add_outline(surface_, parent, title.name.c_str(),
                                                        place.c_str(), CAIRO_PDF_OUTLINE_FLAG_OPEN);
        above_.emplace_back(title.level, entry);
    }

  private:
    cairo_surface_t *surface_;
    const Description &description_;
    std::vector<std::pair<int, int>> above_; /**< levels and entries down to the last title */
};

std::string drawn_as_pdf(const Description &description, Sheet &sheet) {
    std::string bytes;
    const Surface surface(cairo_pdf_surface_create_for_stream(append, &bytes, a4.width, a4.height));
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE,
                                   description.heading.c_str());
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATOR, "kigou");
    const Cairo cairo(cairo_create(surface.get()));
    Outline outline(surface.get(), description);
    const std::vector<Placed> placed = sheet.placed(a4.height - a4.head - a4.foot);
    const std::size_t pages = placed.back().page + 1;
    sheet.draw_margins(cairo.get(), a4, 0, pages);
    for (std::size_t i = 0; i < placed.size(); ++i) {
        const auto &[piece, page, top] = placed[i];
        if (i != 0 && page != placed[i - 1].page) {
            cairo_show_page(cairo.get());
            sheet.draw_margins(cairo.get(), a4, page, pages);
        }
        sheet.draw(cairo.get(), piece, a4.side, a4.head + top);
        if (piece.kind == Piece::Kind::heading && !piece.repeats) {
            outline.add(piece, page, a4.head + top);
        }
    }
    finish(cairo.get(), surface.get());
    return bytes;
}

} // namespace

Picture drawn(const Description &description, Format format) {
    Typesetter typesetter;
    Sheet sheet(description, typesetter);
    std::string bytes =
        format == Format::svg ? drawn_as_svg(description, sheet) : drawn_as_pdf(description, sheet);
    return {std::move(bytes), sheet.no_glyph()};
}

} // namespace chart
