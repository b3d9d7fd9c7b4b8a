// Titles that come to stand elsewhere, in a sound file and in odd ones.
#include "picker/title_moves.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "picker/disk_form.h"
#include "tests/picker/edits.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

Snapshot snapshot_of(const std::string &file) {
    return Snapshot::of_text(text_form(Sjis(file.begin(), file.end())), "file");
}

/** A family that lies in pieces, a title that stands twice, remarks between the blocks and behind. */
Snapshot odd_set() {
    return snapshot_of(symbol_file("例", block("甲／子", "☆\n") + "remark\n" + block("乙", "→\n") + block("甲", "○\n") +
                                             block("乙／孫", "↑\n") + block("丙", "□\n") + block("甲", "●\n") + "rest\n"));
}

/** "甲=○ 甲／子=☆ ..." in file order; in brackets when the remark stands before it. */
std::string told(const Sjis &text) {
    const Snapshot set = Snapshot::of_text(text, "file");
    std::string told;
    for (std::size_t i = 1; i < set.size(); ++i) {
        const auto data = set.data(i);
        const std::string symbols = to_utf8(data.first(std::min<std::size_t>(data.size(), 2)));
        told += set.title(i).text.substr(std::string("例／").size()) + "=" + symbols + " ";
    }
    const std::string end = to_utf8(text);
    EXPECT_NE(end.find("remark"), std::string::npos);
    EXPECT_TRUE(end.ends_with("rest\r\n"));
    return told;
}

TEST(title_moves, change_places_with_a_sibling_and_go_below_another) {
    const Snapshot set = odd_set();
    const Sjis same = set.text();
    EXPECT_EQ(told(same), "甲／子=☆ 乙=→ 甲=○ 乙／孫=↑ 丙=□ 甲=● ");
    const struct {
        std::size_t number, other;
        const char *past, *below;
    } rows[] = {
        {2, 3, "甲／子=☆ 甲=○ 乙=→ 乙／孫=↑ 丙=□ 甲=● ", "甲／子=☆ 甲=○ 甲／乙=→ 甲／乙／孫=↑ 丙=□ 甲=● "},
        {3, 2, "甲／子=☆ 甲=○ 乙=→ 乙／孫=↑ 丙=□ 甲=● ", "乙=→ 乙／孫=↑ 乙／甲／子=☆ 乙／甲=○ 丙=□ 甲=● "},
        {3, 5, "乙=→ 乙／孫=↑ 丙=□ 甲／子=☆ 甲=○ 甲=● ", "乙=→ 乙／孫=↑ 丙=□ 丙／甲／子=☆ 丙／甲=○ 甲=● "},
        {5, 6, "甲／子=☆ 乙=→ 甲=○ 乙／孫=↑ 甲=● 丙=□ ", "甲／子=☆ 乙=→ 甲=○ 乙／孫=↑ 甲=● 甲／丙=□ "},
        {3, 6, "乙=→ 乙／孫=↑ 丙=□ 甲=● 甲／子=☆ 甲=○ ", nullptr},
        {6, 3, "乙=→ 甲／子=☆ 甲=● 甲=○ 乙／孫=↑ 丙=□ ", nullptr},
        {4, 0, nullptr, "甲／子=☆ 乙=→ 甲=○ 丙=□ 甲=● 孫=↑ "},
    };
    for (const auto &row : rows) {
        const std::string past = row.past ? told(with_title_past(set, row.number, row.other)) : "";
        const std::string below = row.below ? told(with_title_below(set, row.number, row.other)) : "";
        EXPECT_EQ(past, row.past ? row.past : "") << row.number << ' ' << row.other;
        EXPECT_EQ(below, row.below ? row.below : "") << row.number << ' ' << row.other;
    }
    EXPECT_EQ(kind_of([&] { with_title_below(set, 3, 1); }), FailureKind::refused);
    EXPECT_EQ(kind_of([&] { with_title_below(set, 1, 3); }), FailureKind::refused);
    EXPECT_EQ(set.text(), same);
}

TEST(title_moves, are_refused_where_a_path_or_a_level_does_not_fit) {
    std::string deep, blocks = block("甲", "○\n") + block("甲／子", "☆\n");
    for (int level = 2; level < 10; ++level) {
        deep += (level == 2 ? "" : "／") + std::string("深");
        blocks += block(deep, "→\n");
    }
    const std::string name = std::string(3 * 120, ' ').replace(0, 360, [] {
        std::string long_name;
        for (int i = 0; i < 120; ++i) long_name += "長";
        return long_name;
    }());
    const Snapshot set = snapshot_of(symbol_file("例", blocks + block(name, "") + block(name + "／" + name, "")));
    EXPECT_EQ(set.level(10), 9U);
    EXPECT_EQ(kind_of([&] { with_title_below(set, 1, 10); }), FailureKind::refused);
    EXPECT_EQ(Snapshot::of_text(with_title_below(set, 2, 10), "").level(10), 10U);
    EXPECT_EQ(kind_of([&] { with_title_below(set, 3, 12); }), FailureKind::refused);
    // Into another file the same rules hold.
    const Snapshot other = snapshot_of(symbol_file("別", block("甲", "※\n") + block("乙", "")));
    SetText text(other);
    EXPECT_EQ(kind_of([&] { add_titles(set, 1, other, 0, text); }), FailureKind::refused);
    EXPECT_EQ(add_titles(set, 1, other, 2, text).text, "別／乙／甲");
    const Snapshot moved = Snapshot::of_text(text.text(), "");
    EXPECT_EQ(moved.title(4).text, "別／乙／甲／子");
    EXPECT_EQ(to_utf8(moved.data(4)), "☆\r\n");
}

} // namespace
} // namespace kigou
