// picture.h - a chart as the bytes of a file.
#ifndef KIGOU_CHART_PICTURE_H
#define KIGOU_CHART_PICTURE_H

#include <string>
#include <vector>

#include "chart/description.h"

namespace chart {

enum class Format {
    svg, /**< one picture, with the outlines of the glyphs; of a long chart columns side by side */
    pdf  /**< pages of A4, whose text is text */
};

struct Picture {
    std::string bytes;
    std::vector<std::string> no_glyph; /**< symbols without a glyph, each once, with their codes */
};

/** @throws std::runtime_error with the reason when it cannot be drawn */
Picture drawn(const Description &description, Format format);

} // namespace chart

#endif
