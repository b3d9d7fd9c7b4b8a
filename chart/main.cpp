// main.cpp - kigou-chart, which kigou starts to draw.
//
//   kigou-chart svg|pdf <description >picture
//
// Before the picture it writes a line of JSON: {"no_glyph": ["① U+2460", ...]}, the symbols that
// no font has; in place of both, when it fails, {"error": "why"}. It is a program of its own
// because its libraries would slow every start of kigou.
#include <exception>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "chart/description.h"
#include "chart/picture.h"

int main(int argc, char **argv) {
    try {
        const std::string_view format = argc == 2 ? argv[1] : "";
        if (format != "svg" && format != "pdf") {
            std::cerr << "usage: kigou-chart svg|pdf <description >picture\n";
            return 2;
        }
        std::ios::sync_with_stdio(false);
        const std::string text(std::istreambuf_iterator<char>(std::cin), {});
        const chart::Picture picture =
            chart::drawn(chart::read_description(text),
                         format == "svg" ? chart::Format::svg : chart::Format::pdf);
        std::cout << nlohmann::json{{"no_glyph", picture.no_glyph}}.dump() << '\n' << picture.bytes;
        return std::cout.flush() ? 0 : 2;
    } catch (const std::exception &error) {
        const nlohmann::json report{{"error", error.what()}};
        std::cout << report.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace) << '\n';
        return 2;
    }
}
