// What people type and what they hope for: every row of tests/data/typed.tsv on the sets that
// come with the program.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "picker/search/search.h"

namespace {

using namespace kigou;

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
    std::ifstream file(ACC_SOURCE_DIR "/tests/data/typed.tsv");
    int rows = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') continue;
        ++rows;
        std::istringstream cells(line);
        std::string typed, hoped, place;
        for (std::string *const cell : {&typed, &hoped, &place}) std::getline(cells, *cell, '\t');
        const bool meant = typed.starts_with("? ");
        const SearchResult result = search(index, meant ? typed.substr(2) : typed);
        if (meant) {
            EXPECT_TRUE(result.found.empty() && std::ranges::count(result.meant, hoped) == 1) << typed << ": " << told(result);
            continue;
        }
        const auto found = std::ranges::find_if(result.found, [&](const FoundSymbol &symbol) { return to_utf8(symbol.symbol) == hoped; });
        EXPECT_TRUE(found != result.found.end() && found - result.found.begin() < std::stoi(place))
            << typed << " for " << hoped << ": " << told(result);
    }
    EXPECT_GE(rows, 150);
}

} // namespace
