// table.cpp - see table.h.
#include "picker/table.h"

#include "picker/failure.h"

namespace kigou {

std::vector<TableRow> rows_of(std::string_view text, char comma) {
    std::vector<TableRow> rows;
    bool quoted = false, fresh = true;
    std::size_t line = 1, quoted_on = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char sign = text[i];
        if (fresh) rows.push_back({{""}, line});
        fresh = false;
        std::string &cell = rows.back().cells.back();
        if (comma == ',' && sign == '"') {
            const bool doubled = quoted && i + 1 < text.size() && text[i + 1] == '"';
            if (doubled)
                cell += text[++i];
            else {
                quoted = !quoted;
                quoted_on = line;
            }
        } else if (sign == '\n' && !quoted) {
            if (cell.ends_with('\r')) cell.pop_back();
            fresh = true;
        } else if (sign == comma && !quoted) {
            rows.back().cells.emplace_back();
        } else {
            cell += sign;
        }
        line += sign == '\n';
    }
    if (quoted) {
        throw Failure(FailureKind::refused,
                      "the quotation mark in line " + std::to_string(quoted_on) + " is not closed");
    }
    if (!rows.empty() && rows.back().cells.back().ends_with('\r'))
        rows.back().cells.back().pop_back();
    return rows;
}

} // namespace kigou
