// table.h - tables as spreadsheets write them: rows of cells with tabs or commas between.
#ifndef KIGOU_PICKER_TABLE_H
#define KIGOU_PICKER_TABLE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kigou {

struct TableRow {
    std::vector<std::string> cells; /**< one at least */
    std::size_t line = 1;           /**< of the text, on which it begins */
};

/**
 * Rows of a table. With commas a cell may stand in quotation marks, and then hold commas, line
 * ends, and quotation marks that are doubled (RFC 4180).
 * @param comma  ',' or a tab
 * @throws Failure (refused) for a quotation mark that is not closed
 */
std::vector<TableRow> rows_of(std::string_view text, char comma);

} // namespace kigou

#endif
