// chart.h - a title with all below it, or a whole file, as a chart shows it: text that only has
// to be drawn.
#ifndef KIGOU_PICKER_CHART_H
#define KIGOU_PICKER_CHART_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "picker/snapshot.h"

namespace kigou {

// Texts are UTF-8 with U+FFFD for control characters.

struct ChartCell {
    std::string symbol;               /**< empty for bytes that are no character */
    std::array<std::string, 2> codes; /**< "2-10" or nothing; "U+2192", or the bytes, "{8540}" */
    std::string name;                 /**< that is shipped for it, or empty */
};

using ChartRow = std::vector<ChartCell>; /**< a line as it stands in the file; never empty */

struct ChartTitle {
    std::size_t level; /**< 2 for one of the first level */
    std::string above; /**< its path up to it, "一般記号／"; without the title of the file */
    std::string name;
    std::vector<ChartRow> rows;
};

struct Chart {
    std::string file; /**< its title */
    std::vector<ChartTitle> titles;

    std::size_t symbol_count() const;
};

/**
 * @param number  of the title that is shown with all below it; 0 for the whole file
 * @param names   whether the cells have names
 */
Chart chart_of(const Snapshot &snapshot, std::size_t number, bool names);

} // namespace kigou

#endif
