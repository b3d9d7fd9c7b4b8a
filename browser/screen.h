// screen.h - what the terminal is to show, and the bytes that make it show that.
//
// Terminals do not agree on the width of half of the symbols. So every character that they may
// differ on has two cells of its own, and whatever follows it is placed by its column: nothing
// relies on where the terminal's cursor was left.
#ifndef KIGOU_BROWSER_SCREEN_H
#define KIGOU_BROWSER_SCREEN_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kigou {

enum class Style : unsigned char { plain, chosen, heading, faint };

/** How a terminal is told things; strings for it, as its description has them. */
struct TerminalWords {
    std::string clear, clear_rest; /**< all of it; a row from the cursor on, empty if it cannot */
    std::string plain, chosen, heading, faint; /**< each begins by taking the others back */
    std::string (*to_place)(std::size_t row, std::size_t column) = nullptr; /**< from 0 */
};

/** Cells that a text takes: one for narrow characters, two for all others. */
std::size_t cells_of(std::string_view utf8);

/**
 * The text without what a terminal may take for a command: control characters, and those without
 * a place of their own, become ?.
 */
std::string shown_text(std::string_view utf8);

class Screen {
  public:
    /** All blank, and unlike anything that was shown. */
    void resize(std::size_t rows, std::size_t columns);

    std::size_t rows() const { return rows_; }
    std::size_t columns() const { return columns_; }

    /** Blanks all that is to be shown; what the terminal shows is remembered. */
    void clear();

    /**
     * Puts a text into cells of a row. What does not fit is cut, and ~ stands for it; the rest of
     * the cells is blank. Control characters and those without a place of their own become ?.
     */
    void put(std::size_t row, std::size_t column, std::string_view utf8, std::size_t cells,
             Style style = Style::plain);

    /** The bytes that change what the terminal shows into this. */
    std::string update(const TerminalWords &words);

    /** The next update draws all anew. */
    void forget();

  private:
    /** A character in its first cell; empty in the second. */
    struct Cell {
        std::string text = " ";
        Style style = Style::plain;
        bool certain = true; /**< the terminal's cursor goes on by as many cells as it takes */
        bool operator==(const Cell &) const = default;
    };
    using Row = std::vector<Cell>;
    class Pen;

    void update_row(std::size_t row, Pen &pen, bool can_clear_rest);

    std::size_t rows_ = 0, columns_ = 0;
    std::vector<Row> wanted_, shown_;
    bool known_ = false; /**< whether the terminal shows what is in shown_ */
};

} // namespace kigou

#endif
