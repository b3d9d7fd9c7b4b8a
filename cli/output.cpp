// output.cpp - see output.h.
#include "cli/output.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "picker/text.h"

namespace kigou {
namespace {

constexpr std::size_t usual_columns = 80;
constexpr std::size_t gap = 2; // columns between two of a table

/** Whether the terminal takes a command for the next column. */
bool terminal_places() {
    const char *terminal = std::getenv("TERM");
    return terminal && *terminal != '\0' && std::string_view(terminal) != "dumb";
}

std::string to_column(std::size_t column) {
    return "\033[" + std::to_string(column + 1) + "G";
}

} // namespace

std::size_t display_width(std::string_view utf8) {
    std::size_t columns = 0;
    for (const char32_t character : to_characters(utf8)) {
        const bool half = character < 0x80 || (character >= 0xFF61 && character <= 0xFF9F);
        columns += half ? 1 : 2;
    }
    return columns;
}

std::string padded(std::string_view utf8, std::size_t columns) {
    const std::size_t width = display_width(utf8);
    return std::string(utf8) + std::string(columns > width ? columns - width : 0, ' ');
}

std::string cell_text(const SymbolCodes &codes) {
    return codes.symbol == "\u3000" ? "[空白]" : printable(codes.symbol);
}

std::optional<std::size_t> terminal_columns() {
    if (!isatty(STDOUT_FILENO)) return std::nullopt;
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0) return size.ws_col;
    return usual_columns;
}

void write_grid(const std::vector<std::string> &cells, std::size_t terminal_columns) {
    std::size_t width = 2;
    for (const std::string &cell : cells) width = std::max(width, display_width(cell));
    const std::size_t a_row = std::max<std::size_t>(1, terminal_columns / (width + 1));
    const bool places = terminal_places();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t column = i % a_row;
        if (column != 0 && places) std::cout << to_column(column * (width + 1));
        const bool last = column + 1 == a_row || i + 1 == cells.size();
        std::cout << (last || places ? cells[i] : padded(cells[i], width + 1));
        if (last) std::cout << '\n';
    }
}

void write_table(const std::vector<std::vector<std::string>> &lines) {
    const bool in_columns = terminal_columns().has_value(), places = terminal_places();
    std::vector<std::size_t> widths;
    for (const auto &cells : lines) {
        widths.resize(std::max(widths.size(), cells.size()));
        for (std::size_t i = 0; i < cells.size(); ++i) {
            widths[i] = std::max(widths[i], display_width(cells[i]));
        }
    }
    for (const auto &cells : lines) {
        std::size_t column = 0;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const bool last = i + 1 == cells.size();
            if (in_columns && places && column != 0) std::cout << to_column(column);
            std::cout << (in_columns && !places && !last ? padded(cells[i], widths[i] + gap)
                                                         : cells[i]);
            if (!in_columns && !last) std::cout << '\t';
            column += widths[i] + gap;
        }
        std::cout << '\n';
    }
}

void complain(std::string_view text) {
    std::cerr << "kigou: " << printable(text) << '\n';
}

} // namespace kigou
