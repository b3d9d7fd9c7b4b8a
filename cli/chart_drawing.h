// chart_drawing.h - the program that draws charts, as a function.
#ifndef KIGOU_CHART_DRAWING_H
#define KIGOU_CHART_DRAWING_H

#include <string>
#include <vector>

#include "picker/chart.h"

namespace kigou {

struct DrawnChart {
    std::string picture;               /**< the bytes of a file */
    std::vector<std::string> no_glyph; /**< symbols that no font has, with their codes */
};

/**
 * @param format  "svg" or "pdf"
 * @throws Failure (failed) when the program is not there, or has said why it cannot draw it
 */
DrawnChart draw_chart(const Chart &chart, const std::string &format);

} // namespace kigou

#endif
