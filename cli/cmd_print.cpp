// cmd_print.cpp - kigou print: the symbols of ranges of codes, as text or as a code chart.
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/symbol_format.h"
#include "picker/code_range.h"
#include "picker/codes.h"
#include "picker/failure.h"

namespace kigou {
namespace {

constexpr std::size_t symbols_a_line = 10;

struct Options {
    std::vector<std::string> ranges;
    std::string as = "text";
    std::optional<std::string> format;
};

/** The characters of all ranges; codes without one are passed over. */
std::vector<Sjis> symbols_of(const std::vector<std::string> &ranges) {
    std::vector<Sjis> symbols;
    for (const std::string &range : ranges) {
        for (Sjis &code : codes_in(range)) {
            if (repertoire_of(code) != Repertoire::none) symbols.push_back(std::move(code));
        }
    }
    return symbols;
}

void write_as_text(const std::vector<Sjis> &symbols) {
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const bool last = i % symbols_a_line + 1 == symbols_a_line || i + 1 == symbols.size();
        std::cout << to_utf8(symbols[i]) << (last ? "\n" : "");
    }
}

/** Ten cells a line, each under its last digit: 2-10 stands in the line 2-10 below 0. */
void write_as_chart(const std::vector<Sjis> &symbols) {
    constexpr unsigned a_line = 10;
    std::map<std::pair<unsigned, unsigned>, std::vector<std::string>> lines;
    for (const Sjis &symbol : symbols) {
        const SymbolCodes codes = codes_of(symbol);
        const auto dash = codes.kuten.find('-');
        if (dash == std::string::npos) {
            throw Failure(FailureKind::refused,
                          codes.sjis + " is outside of a chart's rows, 1 to 94");
        }
        const unsigned row = number_of(std::string_view(codes.kuten).substr(0, dash), 10).value();
        const unsigned cell = number_of(std::string_view(codes.kuten).substr(dash + 1), 10).value();
        auto &line = lines[{row, cell / a_line}];
        line.resize(a_line);
        line[cell % a_line] = cell_text(codes);
    }
    std::vector<std::vector<std::string>> table(1, {""});
    for (unsigned digit = 0; digit < a_line; ++digit) table[0].push_back(std::to_string(digit));
    for (auto &[place, cells] : lines) {
        cells.insert(cells.begin(),
                     std::to_string(place.first) + "-" + std::to_string(place.second * a_line));
        table.push_back(std::move(cells));
    }
    write_table(table);
}

Status run(const Context &context, const Options &options) {
    const std::vector<Sjis> symbols = symbols_of(options.ranges);
    if (context.json) {
        nlohmann::ordered_json json = {{"symbols", nlohmann::json::array()}};
        for (const Sjis &symbol : symbols) json["symbols"].push_back(json_of(codes_of(symbol)));
        write(json);
    } else if (options.format) {
        const SymbolFormat format(*options.format);
        for (const Sjis &symbol : symbols) std::cout << format.line({symbol, {}}) << '\n';
    } else if (options.as == "table") {
        write_as_chart(symbols);
    } else {
        write_as_text(symbols);
    }
    if (!symbols.empty()) return Status::found;
    if (!context.json) complain("no code of these has a character");
    return Status::nothing_found;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.words("RANGE", Value::symbols, options->ranges,
                    "1-1..1-37 (kuten), 13 (a whole row), or two other codes: U+2190..U+2199");
    arguments.choice("--as", options->as, {"text", "table"},
                     "text (default), ten symbols a line, or a table like a code chart");
    arguments.option("-f,--format", Value::format, options->format,
                     "A line for each symbol: " + SymbolFormat::fields() + ", \\t, \\n");
    arguments.exclude("--format", "--json");
    arguments.exclude("--as", "--json");
    arguments.exclude("--format", "--as");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command print_command{.name = "print",
                            .summary = "Print the symbols of ranges of codes",
                            .examples =
                                "  kigou print 1-1..1-37\n"
                                "  kigou print 13 --as table\n"
                                "  kigou print U+2190..U+2199 -f '%(symbol) %(unicode) %(name)'",
                            .declare = declare};

} // namespace kigou
