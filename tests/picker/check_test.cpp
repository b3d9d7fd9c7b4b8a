// What is found in a symbol file, on files that the library would not take.
#include "picker/check.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "picker/disk_form.h"
#include "picker/mending.h"

namespace kigou {
namespace {

/** UTF-8 text in the disk form; \1 stands for CR, \2 for NUL and \3 for half a character. */
Sjis bytes_of(const std::string &text) {
    Sjis bytes = disk_form(to_sjis(text));
    std::replace(bytes.begin(), bytes.end(), '\1', '\r');
    std::replace(bytes.begin(), bytes.end(), '\2', '\0');
    std::replace(bytes.begin(), bytes.end(), '\3', '\xA1');
    return bytes;
}

const std::string rule = std::string(40, '-') + "\n";
const std::string head = "〈記号〉\n名称=例\n";

std::string block(const std::string &path, const std::string &lines) {
    return "［" + path + "］\n" + rule + lines + rule;
}

TEST(check, lists_what_is_wrong_by_line) {
    const std::string deep = "一／二／三／四／五／六／七／八／九／十";
    std::string of_300_bytes, of_70000_bytes;
    for (int i = 0; i < 150; ++i) of_300_bytes += "長";
    for (int i = 0; i < 35000; ++i) of_70000_bytes += "★";
    const struct {
        const char *name;
        std::string text, findings; /**< line and kind, "!" when an edit could lose what stands there */
    } cases[] = {
        {"clean", head + block("甲", "→\n←\n") + block("甲／乙", ""), ""},
        {"clean though the last line has no end", head + block("甲", "→←"), ""},
        {"wrong head", "記号\n名称=例\n", "1 head"},
        {"no name line", "〈記号〉\n例\n", "1 head"},
        {"file title", "〈記号〉\n名称=例／\n", "2 title"},
        {"too deep", head + block(deep, ""), "3 too_deep, 3 no_parent"},
        {"no title", head + block("", ""), "3 title"},
        {"long title", head + block(of_300_bytes, ""), "3 title"},
        {"long path", head + block("甲／" + of_300_bytes + "／" + of_300_bytes, ""), "3 title, 3 title, 3 no_parent"},
        {"off the grid", head + block("甲", "→\n←A\n↑\n"), "3 unterminated, 6 off_grid"},
        {"single bytes", head + block("甲", "→AB\n"), "5 off_grid"},
        {"long data", head + block("甲", of_70000_bytes + "\n"), "5 too_long, 5 duplicate"},
        {"outside JIS X 0208", head + block("甲", "→①\n"), "5 outside"},
        {"duplicate", head + block("甲", "→←\n→\n") + block("乙", "→\n"), "6 duplicate"},
        {"missing parent", head + block("甲／乙", ""), "3 no_parent"},
        {"same title twice", head + block("甲", "") + block("甲", ""), "6 duplicate_title"},
        {"siblings that begin alike", head + block("甲乙", "") + block("甲", "") + block("丙", ""), "6 prefix"},
        {"like the beginning of no sibling", head + block("甲", "") + block("丙", "") + block("丙／甲乙", ""), ""},
        {"no end line", head + "［甲］\n" + rule + "→\n", "3 unterminated"},
        {"no start line", head + "［甲］\n", "3 unterminated"},
        {"no end line within", head + "［甲］\n" + rule + "→\n" + block("乙", "←\n"), "6 unterminated, 8 outside_titles"},
        {"last title line cut off", head + block("甲", "") + "［乙", "6 unterminated!"},
        {"last title line without bracket", head + block("甲", "") + "remark\n［乙\n" + rule + "→\n" + rule,
         "6 outside_titles, 7 unterminated!, 9 outside_titles"},
        {"outside of titles", head + "→\n" + block("甲", "") + "\n" + rule + "←\n" + block("乙", "") + "↑",
         "3 outside_titles, 9 outside_titles, 13 outside_titles"},
        {"control character in a title", head + block("甲\x1B", ""), "3 title"},
        {"many siblings that begin alike", head + block("甲", "") + block("甲乙", "") + block("甲乙丙", ""), "6 prefix, 9 prefix"},
        {"title line without bracket", head + "［甲\n" + rule + "→\n" + rule + block("乙", "←\n"), "3 unterminated!"},
        {"CR LF", "〈記号〉\n名称=例\1\n" + block("甲", "→\1\n"), "2 cr!"},
        {"CR within lines", head + block("甲", "あ\1→い\1\1\n") + block("乙", "→\n\1") + "\1", "5 cr!, 5 cr!, 10 cr!, 11 cr!"},
        {"NUL", head + block("甲", "→\n\2") + "rest", "3 unterminated, 6 nul!"},
        {"no EUC-JP", head + block("甲", "→\3A\n←\n\3B\n"), "5 encoding!, 7 encoding!"},
    };
    for (const auto &c : cases) {
        std::string findings;
        for (const Finding &finding : check_symbol_file(bytes_of(c.text)).findings) {
            findings += (findings.empty() ? "" : ", ") + std::to_string(finding.line) + " " + finding.kind + (finding.unsafe ? "!" : "");
        }
        EXPECT_EQ(findings, c.findings) << c.name;
    }
}

TEST(check, advises_on_lines_that_an_edit_could_lose_and_on_no_others) {
    const CheckedFile harmless = check_symbol_file(bytes_of(head + block("甲", "→→①\n")));
    EXPECT_EQ(harmless.findings.size(), 2U);
    EXPECT_TRUE(lines_to_mend("x", harmless).empty());
    std::string lines = "→→\n";
    for (int i = 0; i < 25; ++i) lines += "\1←\n";
    const auto advice = lines_to_mend("x", check_symbol_file(bytes_of(head + block("甲", lines))));
    ASSERT_EQ(advice.size(), 22U);
    EXPECT_TRUE(advice[1].starts_with("x:6: 1 CR within")) << advice[1];
    EXPECT_EQ(advice[21], "5 more lines are not shown");
}

} // namespace
} // namespace kigou
