// cmd_list.cpp - kigou list: what stands below one title.
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/command.h"
#include "cli/host.h"
#include "cli/output.h"
#include "cli/symbol_codes.h"
#include "cli/title_path.h"

namespace kigou {
namespace {

constexpr std::size_t symbols_per_line = 10;

struct Options {
    std::string path;
    std::optional<std::string> file;
    bool codes = false;
};

void print_grid(const std::vector<SymbolCodes> &symbols) {
    std::size_t columns = 0;
    for (const SymbolCodes &codes : symbols) {
        columns = std::max(columns, display_width(cell_text(codes)));
    }
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const bool last = i + 1 == symbols.size() || (i + 1) % symbols_per_line == 0;
        const std::string cell = cell_text(symbols[i]);
        std::cout << (last ? cell + "\n" : padded(cell, columns + 1));
    }
}

/** The symbol comes last: terminals do not agree on the width of all symbols. */
void print_codes(const std::vector<SymbolCodes> &symbols) {
    const auto line = [](auto... cells) { ((std::cout << padded(cells, 10) << ' '), ...); };
    line("Shift_JIS", "JIS", "kuten", "Unicode");
    std::cout << "symbol\n";
    for (const SymbolCodes &codes : symbols) {
        const auto cell = [](const std::string &text) { return text.empty() ? "-" : text; };
        line(codes.sjis, cell(codes.jis), cell(codes.kuten), cell(codes.unicode));
        std::cout << cell_text(codes) << (codes.repertoire == Repertoire::vendor ? " (vendor)" : "")
                  << '\n';
    }
}

Status run(const Context &context, const Options &options) {
    Host host(context.directories);
    const Located located = locate(host, options.path, options.file);
    const Contents contents = host.contents(located.path);
    const auto has_children = [&](const Title &title) {
        return std::any_of(located.tree.items.begin(), located.tree.items.end(),
                           [&](const Title &other) { return lies_below(other.text, title.text); });
    };
    std::vector<SymbolCodes> symbols;
    for (const Sjis &symbol : contents.symbols) symbols.push_back(codes_of(symbol));
    if (context.json) {
        nlohmann::ordered_json json = {{"path", located.path.text},
                                       {"titles", nlohmann::json::array()},
                                       {"symbols", nlohmann::json::array()},
                                       {"truncated", contents.cut_short}};
        for (const Title &title : contents.titles) {
            json["titles"].push_back({{"path", title.text},
                                      {"title", last_title(title.text)},
                                      {"children", has_children(title)}});
        }
        for (const SymbolCodes &codes : symbols) json["symbols"].push_back(to_json(codes));
        std::cout << json.dump(2) << '\n';
    } else {
        std::cout << printable(located.path.text) << '\n';
        for (const Title &title : contents.titles) {
            std::cout << "  " << printable(last_title(title.text))
                      << (has_children(title) ? separator : "") << '\n';
        }
        if (options.codes && !symbols.empty()) {
            print_codes(symbols);
        } else {
            print_grid(symbols);
        }
    }
    if (contents.cut_short) {
        complain("the list is cut short: " + located.path.text +
                 " holds more than a list box can show");
    }
    return Status::found;
}

Body declare(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("PATH", options->path,
                   "Titles joined by \"／\" or \"/\", with or without the file title; "
                   "none: the titles of the first level");
    app.add_option("--file", options->file,
                   "Title of the symbol file when the path does not begin with it "
                   "(default: " +
                       std::string(standard_title) + ")");
    app.add_flag("--codes", options->codes, "Show the codes of each symbol");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command list_command{"list", "List the titles and the symbols below a title",
                           "  kigou list 標準の記号／一般記号／矢印\n"
                           "  kigou list 一般記号/矢印 --codes\n"
                           "  kigou list 丸数字 --file 拡張の記号 --json\n"
                           "A title that ends with \"／\" in the list has titles below it.",
                           declare};

} // namespace kigou
