// The symbol files of data/ against their tables. Both are read here by themselves: the
// file's titles go through iconv and its cells are compared as numbers, so that a mistake
// of the generator cannot hide behind its own code.
#include <gtest/gtest.h>
#include <iconv.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Cell = std::pair<int, int>; // row and cell, 1 to 94

struct Block {
    std::string path; // UTF-8
    std::vector<Cell> cells;
    bool repeats; // marked "+" in the table; unknown to a file
};

std::string contents(const std::string &name) {
    std::ifstream in(std::string(ACC_SOURCE_DIR "/data/") + name, std::ios::binary);
    EXPECT_TRUE(in.is_open()) << name;
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string utf8_of(std::string euc) {
    const iconv_t converter = iconv_open("UTF-8", "EUC-JP");
    EXPECT_NE(converter, reinterpret_cast<iconv_t>(-1)) << "iconv knows no EUC-JP";
    std::string utf8(2 * euc.size() + 1, '\0');
    char *from = euc.data();
    char *to = utf8.data();
    size_t from_left = euc.size();
    size_t to_left = utf8.size();
    EXPECT_EQ(iconv(converter, &from, &from_left, &to, &to_left), 0U) << "after " << utf8;
    iconv_close(converter);
    utf8.resize(utf8.size() - to_left);
    return utf8;
}

std::string trimmed(const std::string &text) {
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? ""
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/** The blocks of a table; its title and check lines have no "|" and are passed over. */
std::vector<Block> table_blocks(const std::string &name) {
    std::vector<Block> blocks;
    std::istringstream lines(contents(name));
    for (std::string line; std::getline(lines, line);) {
        line = line.substr(0, line.find('#'));
        const size_t bar = line.find('|');
        if (bar == std::string::npos) continue;
        std::string path = trimmed(line.substr(0, bar));
        const bool repeats = path.back() == '+';
        if (repeats) path = trimmed(path.substr(0, path.size() - 1));
        Block block{path, {}, repeats};

        std::istringstream parts(line.substr(bar + 1, line.rfind('|') - bar - 1));
        for (std::string part; std::getline(parts, part, ',');) {
            int row = 0, first = 0, last_row = 0, last = 0;
            const int fields =
                std::sscanf(part.c_str(), " %d-%d..%d-%d", &row, &first, &last_row, &last);
            EXPECT_TRUE(fields == 2 || fields == 4) << line;
            for (int cell = first; cell <= (fields == 4 ? last : first); ++cell)
                block.cells.emplace_back(row, cell);
        }
        EXPECT_EQ(static_cast<int>(block.cells.size()), std::stoi(line.substr(line.rfind('|') + 1)))
            << line;
        blocks.push_back(block);
    }
    return blocks;
}

/** Every block of a symbol file, the empty ones too; holds the file to its exact shape. */
std::vector<Block> file_blocks(const std::string &name, const std::string &title) {
    const std::string text = contents(name);
    EXPECT_EQ(text.find('\r'), std::string::npos);
    EXPECT_TRUE(text.ends_with("\n"));
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(utf8_of(line), "〈記号〉");
    std::getline(lines, line);
    EXPECT_EQ(utf8_of(line), "名称=" + title);

    const std::string hyphens(40, '-');
    std::vector<Block> blocks;
    while (std::getline(lines, line)) {
        line = utf8_of(line);
        const bool is_title = line.starts_with("［") && line.ends_with("］");
        EXPECT_TRUE(is_title) << line << " where a title line was due";
        if (!is_title) break;
        Block block{line.substr(3, line.size() - 6), {}, false};
        std::getline(lines, line);
        EXPECT_EQ(line, hyphens) << block.path;
        while (std::getline(lines, line) && line != hyphens) {
            EXPECT_TRUE(!line.empty() && line.size() % 2 == 0 && line.size() <= 20) << block.path;
            for (size_t i = 0; i + 1 < line.size(); i += 2)
                block.cells.emplace_back(static_cast<unsigned char>(line[i]) - 0xA0,
                                         static_cast<unsigned char>(line[i + 1]) - 0xA0);
        }
        EXPECT_EQ(line, hyphens) << block.path;
        blocks.push_back(block);
    }
    return blocks;
}

struct SetCase {
    const char *name;
    const char *title;
    size_t entries, different, blocks, top_level;
};

class SymbolSet : public testing::TestWithParam<SetCase> {};

TEST_P(SymbolSet, file_holds_what_the_table_says) {
    const SetCase &set = GetParam();
    const std::vector<Block> table = table_blocks(std::string(set.name) + ".txt");
    size_t next = 0, entries = 0;
    std::set<Cell> different;
    std::set<std::string> seen;
    size_t top_level = 0;
    for (const Block &block : file_blocks(std::string(set.name) + ".kig", set.title)) {
        const size_t slash = block.path.rfind("／");
        EXPECT_TRUE(seen.insert(block.path).second) << block.path << " stands twice";
        if (slash == std::string::npos)
            ++top_level;
        else
            EXPECT_TRUE(seen.contains(block.path.substr(0, slash))) << block.path << " no parent";
        if (block.cells.empty()) continue;
        ASSERT_LT(next, table.size()) << block.path;
        EXPECT_EQ(block.path, table[next].path);
        EXPECT_EQ(block.cells, table[next].cells) << block.path;
        ++next;
        entries += block.cells.size();
        different.insert(block.cells.begin(), block.cells.end());
    }
    EXPECT_EQ(next, table.size());
    EXPECT_EQ(next, set.blocks);
    EXPECT_EQ(entries, set.entries);
    EXPECT_EQ(different.size(), set.different);
    EXPECT_EQ(top_level, set.top_level);
}

INSTANTIATE_TEST_SUITE_P(data, SymbolSet,
                         testing::Values(SetCase{"default", "標準の記号", 682, 670, 44, 10},
                                         SetCase{"extended", "拡張の記号", 74, 74, 9, 5}),
                         [](const auto &test) { return std::string(test.param.name); });

struct Range {
    int row, first, last;
};

// Rows 1 to 8 of JIS X 0208: the cells that hold a character.
constexpr std::array<Range, 17> NON_KANJI{{{1, 1, 94},
                                           {2, 1, 14},
                                           {2, 26, 33},
                                           {2, 42, 48},
                                           {2, 60, 74},
                                           {2, 82, 89},
                                           {2, 94, 94},
                                           {3, 16, 25},
                                           {3, 33, 58},
                                           {3, 65, 90},
                                           {4, 1, 83},
                                           {5, 1, 86},
                                           {6, 1, 24},
                                           {6, 33, 56},
                                           {7, 1, 33},
                                           {7, 49, 81},
                                           {8, 1, 32}}};

TEST(StandardSet, has_every_non_kanji_once_apart_from_marked_repeats) {
    std::map<Cell, int> homes; // how many blocks show a cell and may not repeat one
    std::set<Cell> in_repeats;
    for (const Block &block : table_blocks("default.txt"))
        for (const Cell &cell : block.cells)
            block.repeats ? (void)in_repeats.insert(cell) : (void)++homes[cell];
    int total = 0;
    for (const Range &range : NON_KANJI)
        for (int cell = range.first; cell <= range.last; ++cell, ++total) {
            const int count = homes[{range.row, cell}];
            EXPECT_TRUE(count == 1 || (count == 0 && in_repeats.contains({range.row, cell})))
                << range.row << "-" << cell << " in " << count << " unmarked blocks";
        }
    EXPECT_EQ(total, 524);
}

} // namespace
