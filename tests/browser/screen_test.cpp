// The bytes that change a terminal's picture, with places as <row,column>.
#include "browser/screen.h"

#include <gtest/gtest.h>

namespace kigou {
namespace {

std::string to_place(std::size_t row, std::size_t column) {
    return "<" + std::to_string(row) + "," + std::to_string(column) + ">";
}

TEST(screen, sends_what_differs_and_relies_on_no_width) {
    const TerminalWords words{"[clear]", "", "[plain]", "[chosen]", "[heading]", "[faint]", to_place};
    Screen screen;
    screen.resize(2, 8);
    EXPECT_EQ(screen.update(words), "[plain][clear]");
    const struct {
        const char *text;
        std::size_t cells;
        Style style;
        const char *bytes;
    } rows[] = {
        {"ab→x", 8, Style::plain, "<0,0>ab  <0,2>→<0,4>x"},
        {"ab→x", 8, Style::plain, ""},
        {"ab→y", 8, Style::plain, "<0,4>y"},
        {"abあy", 8, Style::plain, "<0,2>あ"},
        {"ab　y", 8, Style::plain, "<0,2>　"},
        {"abcdefghi", 8, Style::plain, "<0,2>cdefg~"},
        {"ｱい", 4, Style::chosen, "<0,0>[chosen]ｱい [plain]"},
        {"ｱい", 4, Style::plain, "<0,0>ｱい "},
        {"→→→", 5, Style::plain, "<0,0>  <0,0>→<0,2>  <0,2>→<0,4>~"},
        {"\x1b[2J\u202e\u0301", 8, Style::plain, "<0,0>?[2J??  "},
        {"", 8, Style::plain, "<0,0>      "},
        {"a      z", 8, Style::plain, "<0,0>a<0,7>z"},
        {"b    c z", 8, Style::plain, "<0,0>b    c"},
        {"→   c y", 8, Style::plain, "<0,0>  <0,0>→<0,7>y"},
        {"★bあ  y", 8, Style::plain, "<0,0>  <0,0>★<0,2>bあ "},
        {"○bい  z", 8, Style::plain, "<0,0>  <0,0>○<0,3>い  z"},
        {"a→b→c", 8, Style::plain, "<0,0>a  <0,1>→<0,3>b  <0,4>→<0,6>c "},
        {"x→b→y", 8, Style::plain, "<0,0>x<0,6>y"},
        {"xああ y", 8, Style::plain, "<0,1>ああ "},
        {"zああ z", 8, Style::plain, "<0,0>z<0,6>z"},
    };
    for (const auto &row : rows) {
        screen.put(0, 0, row.text, row.cells, row.style);
        EXPECT_EQ(screen.update(words), row.bytes) << row.text;
    }
    // What is drawn once more counts with its style.
    for (const char *ends : {"ab", "xy"}) {
        screen.put(1, 0, {ends, 1}, 1, Style::faint);
        screen.put(1, 1, "-", 1);
        screen.put(1, 2, {ends + 1, 1}, 1, Style::faint);
        const std::string bytes = *ends == 'a' ? "a[plain]-[faint]b" : "x<1,2>y";
        EXPECT_EQ(screen.update(words), "<1,0>[faint]" + bytes + "[plain]");
    }
    // A row that is blank to its end is cleared where that is shorter.
    TerminalWords erasing = words;
    erasing.clear_rest = "E";
    screen.put(1, 0, "abc   gh", 8);
    screen.update(erasing);
    screen.put(1, 0, "ab", 8);
    EXPECT_EQ(screen.update(erasing), "<1,2>      ");
    screen.put(1, 0, "x", 8);
    EXPECT_EQ(screen.update(erasing), "<1,0>x ");
    screen.put(1, 0, "xbcdefgh", 8);
    screen.update(erasing);
    screen.put(1, 0, "x", 8);
    EXPECT_EQ(screen.update(erasing), "<1,1>E");
    screen.put(1, 0, "x", 1);
    screen.put(1, 3, "あ", 2, Style::faint);
    EXPECT_EQ(screen.update(erasing), "<1,3>[faint]あ[plain]");
    screen.put(1, 0, "", 8);
    screen.update(erasing);
    // A style lasts from row to row.
    screen.put(0, 0, "1", 1, Style::faint);
    screen.put(1, 1, "2", 1, Style::faint);
    EXPECT_EQ(screen.update(words), "<0,0>[faint]1<1,1>2[plain]");
    screen.put(9, 0, "x", 1);
    screen.put(0, 9, "x", 1);
    EXPECT_EQ(screen.update(words), "");
    screen.put(1, 7, "→", 2);
    EXPECT_EQ(screen.update(words), "<1,7>~");
}

} // namespace
} // namespace kigou
