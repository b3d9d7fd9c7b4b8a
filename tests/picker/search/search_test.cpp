// The index against the files, and what a search makes of codes, of missing sets and of odd text.
#include "picker/search/search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "fuzz/odd_files.h"
#include "picker/codes.h"
#include "picker/search/readings.h"
#include "picker/symbol_places.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

/** What a search finds: symbols, then what else it says. */
std::string found(const SearchIndex &index, const std::string &typed, const std::string &within = {}) {
    const SearchResult result = search(index, typed, to_sjis(within));
    std::string text;
    for (const FoundSymbol &symbol : result.found) {
        text += to_utf8(symbol.symbol) + (symbol.code.empty() ? "" : "(" + symbol.code + ")");
    }
    for (const std::string &line : result.no_symbols) text += "; " + line;
    if (!result.elsewhere.empty()) text += "; elsewhere ";
    for (const Sjis &symbol : result.elsewhere) text += to_utf8(symbol);
    for (const std::string &word : result.meant) text += "; meant " + word;
    return text;
}

class Index : public ::testing::Test {
  protected:
    SetFiles sets() const { return find_sets({workspace.program, workspace.common, {}}); }
    void refresh() { index.refresh(sets()); }

    Workspace workspace;
    SearchIndex index;
};

TEST_F(Index, follows_the_files) {
    const std::string first = symbol_file("甲", block("図", "→★\n") + block("図／星", "★★☆\n"));
    workspace.put("a.kig", first);
    workspace.put("b.kig", symbol_file("乙", block("図", "★\n")));
    write_file(workspace.common / "c.kig", symbol_file("乙", block("隠", "★\n"))); // hidden
    refresh();
    const auto stars = [&] {
        std::string paths;
        const SearchResult result = search(index, "★");
        for (const TitleNumber title : result.found.front().titles) paths += index.path(title) + " ";
        return paths;
    };
    EXPECT_EQ(stars().size(), std::string("甲／図 甲／図／星 乙／図 ").size());
    EXPECT_EQ(index.size(), 3U);
    // The same length at once: only the doubt about the clock tells.
    workspace.put("a.kig", symbol_file("甲", block("図", "→☆\n") + block("図／星", "☆★☆\n")));
    std::filesystem::remove(workspace.program / "b.kig");
    workspace.put("bad.kig", "no symbol file");
    std::filesystem::create_directory(workspace.program / "dir.kig");
    refresh();
    EXPECT_EQ(stars(), "甲／図／星 乙／隠 ");
    EXPECT_EQ(index.not_searched().size(), 2U);
    EXPECT_EQ(found(index, "★", "甲"), "★☆");
    EXPECT_EQ(found(index, "→", "甲／図／星"), "; elsewhere →");
    EXPECT_EQ(found(index, "2-10", "甲／図／星"), "; elsewhere →");
    EXPECT_EQ(found(index, "みぎ", "甲／図／星"), "; elsewhere →㊨⇒┐┘┓┛）");
    EXPECT_EQ(found(index, "ほし", "甲／図"), "☆★");
    EXPECT_EQ(found(index, "図/星"), "☆★");
    EXPECT_EQ(found(index, "隠"), "隠★");
    EXPECT_EQ(found(index, "隠", "甲"), "; elsewhere 隠");
    index.refresh({});
    EXPECT_EQ(index.size(), 0U);
    EXPECT_EQ(found(index, "ほし").substr(0, 12), "; elsewhere ");
}

TEST_F(Index, reads_ahead_and_sees_what_changed_since) {
    workspace.put("a.kig", symbol_file("甲", block("図", "→\n")));
    workspace.put("b.kig", symbol_file("乙", block("図", "★\n")));
    workspace.put("c.kig", symbol_file("丙", block("図", "★\n")));
    const SetFiles before = sets();
    std::filesystem::remove(workspace.program / "c.kig");
    for (const SetFile &set : before.sets) index.read_ahead(set);
    EXPECT_EQ(index.size(), 0U);
    workspace.put("a.kig", symbol_file("甲", block("図", "☆\n")));
    refresh();
    EXPECT_EQ(found(index, "ほし"), "☆★");
    EXPECT_EQ(index.size(), 2U);
    for (const SetFile &set : before.sets) index.read_ahead(set);
    EXPECT_EQ(found(index, "ほし"), "☆★");
    index.refresh(before);
    EXPECT_EQ(index.not_searched().size(), 1U);
}

TEST_F(Index, holds_every_symbol_of_odd_files) {
    std::size_t compared = 0;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        Choice choice(10, seed);
        OddFiles files(choice);
        workspace.put("a.kig", files.symbol_file(files.file_title()));
        refresh();
        std::vector<Sjis> symbols;
        for (const unsigned short code : index.all_symbols()) symbols.push_back(pair_of(code));
        const SymbolPlaces places = places_of(symbols, sets().sets);
        for (std::size_t i = 0; i < symbols.size(); ++i) {
            std::vector<std::string> paths;
            for (const TitleNumber title : index.titles_with(index.all_symbols()[i])) {
                paths.push_back(index.path(title));
            }
            EXPECT_EQ(paths, places.paths[i]) << seed;
            ++compared;
        }
    }
    EXPECT_GT(compared, 1000U);
}

TEST_F(Index, tells_codes_apart) {
    workspace.put("a.kig", symbol_file("甲", block("単位", "℃\n")));
    refresh();
    const struct {
        const char *typed, *expected;
    } rows[] = {
        {"1-78", "℃(k:1-78)"},
        {" 01-78 ", "℃(k:1-78)"},
        {"１－７８", "℃(k:1-78)"},
        {"K:1-78", "℃(k:1-78)"},
        {"u+2103", "℃(U+2103)"},
        {"0x818e", "℃(s:818E)"},
        {"s:818E", "℃(s:818E)"},
        {"j:216E", "℃(j:216E)"},
        {"e:a1ee", "℃(e:A1EE)"},
        {"216E", "℃(j:216E)"},
        {"2121", "　(j:2121)℡(U+2121)亀(k:21-21)"},
        {"8160", "〜(s:8160)驅(k:81-60)"},
        {"1-78 2-10", "℃(k:1-78)→(k:2-10)"},
        {"9-1", "; no character is assigned to kuten 9-1"},
        {"j:2921", "; no character is assigned to j:2921, which is kuten 9-1"},
        {"95-1", "; kuten 95-1 is outside of the table, which goes from 1-1 to 94-94"},
        {"1-0", "; kuten 1-0 is outside of the table, which goes from 1-1 to 94-94"},
        {"j:2021", "; JIS 2021 is outside of the table, which goes from 2121 to 7E7E"},
        {"e:A0A1", "; EUC-JP A0A1 is outside of the table, which goes from A1A1 to FEFE"},
        {"0x0041", "; s:0041 is no double-byte code of Shift_JIS"},
        {"U+1F600", "; Shift_JIS has no character U+1F600"},
        {"U+D800", "; Shift_JIS has no character U+D800"},
        {"U+0041", "Ａ(U+FF21); U+0041 is a single-byte character; its double-byte form is Ａ"},
        {"13-1", "①(k:13-1)"},
        {"€", "; Shift_JIS has no character € (U+20AC)"},
    };
    for (const auto &row : rows) EXPECT_EQ(found(index, row.typed), row.expected) << row.typed;
}

TEST_F(Index, says_what_other_sets_have) {
    workspace.put("a.kig", symbol_file("甲", block("図", "○\n")));
    refresh();
    EXPECT_EQ(found(index, "まるいち"), "; elsewhere ①");
    EXPECT_EQ(found(index, "ローマ数字").substr(0, 18), "; elsewhere ⅠⅡ");
    EXPECT_EQ(found(index, "まる").substr(0, 3), "○");
}

TEST(Readings, name_each_lookalike_once) {
    std::size_t lookalikes = 0;
    for (const SymbolNames &symbol : all_names()) {
        std::vector<Sjis> others = lookalikes_of(pair_of(symbol.code));
        lookalikes += others.size();
        std::ranges::sort(others);
        EXPECT_EQ(std::ranges::adjacent_find(others), others.end()) << symbol.name;
        EXPECT_FALSE(std::ranges::binary_search(others, pair_of(symbol.code))) << symbol.name;
    }
    EXPECT_GT(lookalikes, 500U);
}

TEST_F(Index, takes_any_text) {
    workspace.put("a.kig", symbol_file("甲", block("図", "→αβ\n")));
    refresh();
    EXPECT_EQ(found(index, "αβ"), "αβ");
    EXPECT_EQ(found(index, "β → α"), "β→α");
    std::string branching = "→";
    for (int i = 0; i < 300; ++i) branching += "na";
    for (const std::string &nothing :
         {std::string(), std::string("   "), std::string("\xFF\xFE\x80"), std::string("\0", 1), std::string(100000, 'n'),
          std::string(900, 'n'), branching, std::string("\u202E\u0301"), std::string("［図］"), std::string("%s%n")}) {
        const SearchResult result = search(index, nothing);
        for (const FoundSymbol &symbol : result.found) EXPECT_EQ(symbol.match, Match::itself);
    }
}

} // namespace
} // namespace kigou
