// cmd_tree.cpp - kigou tree: all titles of a symbol file.
#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "picker/set_files.h"
#include "picker/snapshot.h"

namespace kigou {
namespace {

struct Row {
    std::string path;
    std::string name;
    std::size_t level = 1; /**< 1 for the file itself */
    std::size_t symbols = 0;
    std::string branches{}; /**< what is drawn before the name */
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

std::vector<Row> rows_of(const Snapshot &snapshot) {
    std::vector<Row> rows;
    for (std::size_t i = 0; i < snapshot.size(); ++i) {
        const std::string path = snapshot.title(i).text;
        rows.push_back(
            {path, i == 0 ? path : last_title(path), snapshot.level(i), snapshot.symbol_count(i)});
    }
    draw_branches(rows);
    return rows;
}

Status run(const Context &context, const std::string &file) {
    const SetFiles sets = find_sets(context.directories);
    const std::vector<Row> rows = rows_of(Snapshot(sets.get(typed_title(file)).path));
    if (context.json) {
        nlohmann::ordered_json json = {
            {"file", rows.front().path}, {"titles", nlohmann::json::array()}, {"truncated", false}};
        for (const Row &row : rows) {
            if (row.level == 1) continue;
            json["titles"].push_back({{"path", row.path},
                                      {"title", row.name},
                                      {"level", row.level},
                                      {"symbols", row.symbols}});
        }
        write(json);
        return Status::found;
    }
    for (const Row &row : rows) {
        std::cout << row.branches << printable(row.name);
        if (row.symbols != 0) std::cout << " (" << row.symbols << ')';
        std::cout << '\n';
    }
    return Status::found;
}

Body declare(Arguments &arguments) {
    const auto file = std::make_shared<std::string>(standard_title);
    arguments.optional_word("TITLE", Value::file_title, *file, "Title of the symbol file");
    return [file](const Context &context) { return run(context, *file); };
}

} // namespace

const Command tree_command{
    .name = "tree",
    .summary = "Draw the titles of a symbol file, with the number of symbols of each",
    .examples =
        "  kigou tree\n"
        "  kigou tree 拡張の記号",
    .declare = declare};

} // namespace kigou
