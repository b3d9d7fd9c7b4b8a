// cmd_tree.cpp - kigou tree: all titles of a symbol file.
#include <array>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/command.h"
#include "cli/host.h"
#include "cli/output.h"
#include "cli/title_path.h"

namespace kigou {
namespace {

// Counting positions the lists once per title, which takes time with the square of their
// number.
constexpr std::size_t titles_counted_unasked = 2000;

struct Options {
    std::string file{standard_title};
    bool counts = false;
};

struct Row {
    std::string path;
    std::string name;
    std::size_t level = 1; /**< 1 for the file itself */
    std::optional<std::size_t> symbols;
    std::string branches; /**< what is drawn before the name */
};

/** Draws from the last row up, so that each row knows whether a sibling follows. */
void draw_branches(std::vector<Row> &rows) {
    std::vector<bool> sibling_follows;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        sibling_follows.resize(std::max(row->level + 1, sibling_follows.size()));
        for (std::size_t level = 2; level < row->level; ++level) {
            row->branches += sibling_follows[level] ? "│   " : "    ";
        }
        if (row->level > 1) row->branches += sibling_follows[row->level] ? "├── " : "└── ";
        sibling_follows.resize(row->level);
        sibling_follows.push_back(true);
    }
}

/** Nothing for a title that the library cannot show, such as one whose parent is missing. */
std::optional<std::size_t> symbols_in(Host &host, const Title &title) {
    try {
        return host.contents(title).symbols.size();
    } catch (const Failure &failure) {
        complain(failure.what());
        return std::nullopt;
    }
}

Status run(const Context &context, const Options &options) {
    Host host(context.directories);
    host.open(typed_title(options.file));
    const Listing<Title> tree = host.tree();
    const bool counted = options.counts || tree.items.size() <= titles_counted_unasked;
    const std::string file = tree.items.front().text;
    std::vector<Row> rows;
    bool cut_short = tree.cut_short;
    for (const Title &title : tree.items) {
        Row row;
        row.path = title.text;
        row.level = level_of(title.text, file);
        row.name = row.level == 1 ? title.text : last_title(title.text);
        if (counted && row.level > 1) row.symbols = symbols_in(host, title);
        rows.push_back(std::move(row));
    }
    if (context.json) {
        nlohmann::ordered_json json = {
            {"file", file}, {"titles", nlohmann::json::array()}, {"truncated", cut_short}};
        for (const Row &row : rows) {
            if (row.level == 1) continue;
            nlohmann::ordered_json title = {
                {"path", row.path}, {"title", row.name}, {"level", row.level}};
            title["symbols"] = nullptr;
            if (row.symbols) title["symbols"] = *row.symbols;
            json["titles"].push_back(std::move(title));
        }
        std::cout << json.dump(2) << '\n';
    } else {
        draw_branches(rows);
        for (const Row &row : rows) {
            std::cout << row.branches << printable(row.name);
            if (row.symbols.value_or(0) != 0) std::cout << " (" << *row.symbols << ')';
            std::cout << '\n';
        }
    }
    if (cut_short) complain("the tree is cut short: " + file + " has more titles");
    if (!counted) {
        complain("symbols are not counted: " + file + " has more than " +
                 std::to_string(titles_counted_unasked) + " titles; --counts counts them");
    }
    return Status::found;
}

Body declare(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("TITLE", options->file, "Title of the symbol file")->capture_default_str();
    app.add_flag("--counts", options->counts, "Count the symbols of large files too");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command tree_command{"tree",
                           "Draw the titles of a symbol file, with the number of symbols of each",
                           "  kigou tree\n"
                           "  kigou tree 拡張の記号",
                           declare};

} // namespace kigou
