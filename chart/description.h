// description.h - what is to be drawn: finished text, and nothing of where it came from.
#ifndef KIGOU_CHART_DESCRIPTION_H
#define KIGOU_CHART_DESCRIPTION_H

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace chart {

struct Cell {
    std::string symbol;               /**< empty for what cannot be drawn */
    std::array<std::string, 2> codes; /**< any may be empty */
    std::string name;
};

using Row = std::vector<Cell>;

struct Title {
    int level; /**< 2 for one of the first level, one more for each below */
    std::string above, name;
    std::vector<Row> rows;
};

struct Description {
    std::string heading, note;
    std::vector<Title> titles;
};

/**
 * Reads {"heading", "note", "titles": [{"level", "above", "name", "rows"}]}; a row is an array of
 * cells, a cell one of symbol, two codes and name.
 * @throws std::exception for any other text
 */
Description read_description(std::string_view json);

} // namespace chart

#endif
