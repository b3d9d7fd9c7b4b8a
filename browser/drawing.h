// drawing.h - a view of the picking on a screen.
#ifndef KIGOU_BROWSER_DRAWING_H
#define KIGOU_BROWSER_DRAWING_H

#include <cstddef>
#include <string>
#include <vector>

#include "browser/screen.h"
#include "picker/picking/picking.h"

namespace kigou {

/** Rows of a screen that show items. */
std::size_t item_rows(std::size_t screen_rows);

/** Where an item was drawn, for the mouse. */
struct DrawnItem {
    std::size_t column, cells; /**< of the screen; its row is 1 and its place on the page */
    std::size_t number;        /**< of the column in the view */
};

/** What was drawn, for the mouse and the terminal's cursor. */
struct Drawn {
    std::vector<DrawnItem> columns;  /**< from the left */
    std::size_t row = 0, column = 0; /**< where the person types, or the item under the cursor */
};

/**
 * Draws columns with the current one as far to the right as it must be, the symbol under the
 * cursor, the picks and a line of as many hints as fit. A window that is too narrow shows fewer
 * columns, and a long message takes the lines above it.
 */
Drawn draw(const View &view, const std::vector<std::string> &hints, Screen &screen);

/** Draws lines of help over all, from one of them on. @return how many lines were drawn */
std::size_t draw_help(const std::vector<std::string> &lines, std::size_t from, Screen &screen);

} // namespace kigou

#endif
