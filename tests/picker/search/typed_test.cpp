// What people type and what they hope for: every row of tests/data/typed.tsv on the sets that
// come with the program.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "picker/search/search.h"

namespace {

using namespace kigou;

struct Row {
    std::string typed, hoped, place;
};

std::vector<Row> rows() {
    std::ifstream file(ACC_SOURCE_DIR "/tests/data/typed.tsv");
    std::vector<Row> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') continue;
        std::istringstream cells(line);
        Row row;
        std::getline(cells, row.typed, '\t');
        std::getline(cells, row.hoped, '\t');
        std::getline(cells, row.place, '\t');
        rows.push_back(row);
    }
    return rows;
}

std::string told(const SearchResult &result) {
    std::string text;
    for (std::size_t i = 0; i < std::min<std::size_t>(result.found.size(), 12); ++i) {
        text += to_utf8(result.found[i].symbol);
    }
    for (const std::string &word : result.meant) text += " meant " + word;
    for (const std::string &line : result.no_symbols) text += " " + line;
    return text;
}

TEST(Typed, brings_what_was_hoped_for) {
    SearchIndex index;
    index.refresh(find_sets({ACC_SOURCE_DIR "/data", "", ""}));
    ASSERT_TRUE(index.not_searched().empty());
    const std::vector<Row> all = rows();
    ASSERT_GE(all.size(), 150U);
    for (const Row &row : all) {
        const bool meant = row.typed.starts_with("? ");
        const SearchResult result = search(index, meant ? row.typed.substr(2) : row.typed);
        if (meant) {
            EXPECT_TRUE(result.found.empty() && std::ranges::count(result.meant, row.hoped) == 1) << row.typed << ": " << told(result);
            continue;
        }
        const auto found =
            std::ranges::find_if(result.found, [&](const FoundSymbol &symbol) { return to_utf8(symbol.symbol) == row.hoped; });
        EXPECT_TRUE(found != result.found.end() && found - result.found.begin() < std::stoi(row.place))
            << row.typed << " for " << row.hoped << ": " << told(result);
    }
}

} // namespace
