#include "sym/format.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace acc {
namespace {

Text view(const std::string &bytes) {
    return {::bytes(bytes), bytes.size()};
}

std::string slice(const std::string &text, Range range) {
    return to_utf8(text.substr(range.offset, range.length));
}

TEST(file_title, is_what_follows_the_first_name_header) {
    const struct {
        const char *name, *text;
        unsigned limit;
        const char *title; // null: none
    } cases[] = {
        {"as written", "〈記号〉\r\n名称=例\r\n", 1023, "例"},
        {"empty at the end of the text", "〈記号〉\r\n名称=", 1023, ""},
        {"on a later line", "〈記号〉\r\n\r\nxx名称=AB\r\n名称=CD\r\n", 1023, "AB"},
        {"stops at CR", "名称=AB\rCD\r\n", 1023, "AB"},
        {"stops before a byte followed by LF", "名称=AB\nCD", 1023, "A"},
        {"none", "〈記号〉\r\n", 1023, nullptr},
        {"begins one before the limit", "----名称=A", 10, "A"},
        {"begins at the limit", "-----名称=A", 10, nullptr},
    };
    for (const auto &c : cases) {
        const std::string text = to_sjis(c.text);
        Range title;
        const bool found = find_file_title(view(text), c.limit, title);
        EXPECT_EQ(found, c.title != nullptr) << c.name;
        if (found && c.title) {
            EXPECT_EQ(slice(text, title), c.title) << c.name;
        }
    }
}

/** Blocks of a text as "level path title units/symbols [data]", one a line. */
std::string walked(const std::string &text) {
    Range title;
    EXPECT_TRUE(find_file_title(view(text), static_cast<unsigned>(text.size()) + 6, title));
    BlockWalk walk(view(text), title);
    Block b;
    std::string result;
    while (walk.next(b)) {
        result += std::to_string(b.level) + ' ' + slice(text, b.path) + ' ' + slice(text, b.title) + ' ' + std::to_string(b.data_units) +
                  '/' + std::to_string(b.symbols) + "\n";
        EXPECT_LE(b.end, text.size());
        EXPECT_LE(b.data + 2 * b.data_units, text.size());
    }
    return result;
}

TEST(block_walk, recognises_what_a_file_may_hold) {
    const std::string line = hyphens + "\r\n";
    const std::string longer = "--" + line;
    const struct {
        const char *name;
        std::string blocks, expected;
    } cases[] = {
        {"no blocks", "", ""},
        {"one", "［A］\r\n" + line + "→←\r\n" + line, "2 A A 3/2\n"},
        {"empty, then a child", "［A］\r\n" + line + line + "［A／B］\r\n" + line + line, "2 A A 0/0\n3 A／B B 0/0\n"},
        {"only line ends", "［A］\r\n" + line + "\r\n\r\n" + line, "2 A A 2/0\n"},
        {"last line without its end", "［A］\r\n" + line + "→" + line, "2 A A 1/1\n"},
        {"lines of 42 hyphens", "［A］\r\n" + longer + "→\r\n" + longer + "［B］\r\n" + line + line, "2 A A 2/1\n2 B B 0/0\n"},
        {"38 hyphens are 19 symbols", "［A］\r\n" + line + std::string(38, '-') + "\r\n" + line, "2 A A 20/19\n"},
        {"remarks before the start line", "［A］\r\nremark\r\n" + line + "→" + line, "2 A A 1/1\n"},
        {"blank lines and remarks between", "［A］\r\n" + line + line + "\r\nremark\r\n［B］\r\n" + line + line + "\r\n",
         "2 A A 0/0\n2 B B 0/0\n"},
        {"bytes before the bracket", "xx［A］\r\n" + line + line + "  ［B］\r\n" + line + line, "2 A A 0/0\n2 B B 0/0\n"},
        {"two brackets: the last names it, the levels add up", "［x／y］［A］\r\n" + line + line, "3 A A 0/0\n"},
        {"title line that the text ends in", "［A］\r\n" + line + line + "［B］", "2 A A 0/0\n"},
        {"data to the end of the text", "［A］\r\n" + line + "→←", "2 A A 2/2\n"},
        {"second bytes are no separator and no bracket", "［ソ／メ^／ァ］\r\n" + line + line, "4 ソ／メ^／ァ ァ 0/0\n"},
        {"second bytes before a bracket's", "メnA\r\n［メmB］\r\n" + line + line, "2 メmB メmB 0/0\n"},
    };
    for (const auto &c : cases) {
        // 0x81 as a second byte: メ is 83 81, so メ^ メm メn hold 81 5E, 81 6D, 81 6E.
        EXPECT_EQ(walked(to_sjis("〈記号〉\r\n名称=例\r\n" + c.blocks)), c.expected) << c.name;
    }
    EXPECT_EQ(walked(to_sjis("〈記号〉\r\n名称=［例］\r\n［A］\r\n" + line + line)), "2 A A 0/0\n") << "a file title that holds a bracket";
}

} // namespace
} // namespace acc
