// What the list boxes show.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "fuzz/choice.h"
#include "support/editing.h"
#include "support/faults.h"
#include "support/text.h"

namespace {

TEST(lists, show_child_titles_then_symbols) {
    Editing e(worked_example());
    EXPECT_EQ(e.host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>");
    EXPECT_EQ(e.host.position("例／数学"), 1);
    EXPECT_EQ(e.host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>");
    EXPECT_EQ(e.host.shown(2), "1: 例／数学／比較<2> 1: ＋<4> 2: ×<4> 3: ÷<4> 4: ±<4>");
    EXPECT_EQ(e.host.list(2).cchLBListLen, 19 + 4 * 7);
    EXPECT_EQ(e.host.list(2).cchLBItemNum, 1);
    EXPECT_EQ(e.host.list(2).cchLBItemPageFirst, 1);
    EXPECT_EQ(to_utf8(text(e.host.list(2).lpchLBLevel)), "例／数学");
    EXPECT_EQ(e.host.position("例／数学／比較"), 1);
    EXPECT_EQ(e.host.record.wCurrentList, 3);
    EXPECT_EQ(e.host.shown(3), "");
}

/** Up to 25 blocks; one in four lies a level lower than its path says. */
std::string odd_tree(std::uint64_t seed) {
    static const char *const names[] = {"A", "AB", "ABC", "B", "あ", "メ^", "矢印"};
    Choice choice(1, seed);
    std::string blocks;
    for (std::size_t i = choice.below(26); i > 0; --i) {
        std::string path = choice.of(names);
        for (std::size_t depth = choice.below(4); depth > 0; --depth) path += std::string("／") + choice.of(names);
        if (choice.one_in(4)) blocks += "［x／y］"; // a second bracket on the line: a level more
        blocks += block(path, choice.one_in(2) ? "→☆\nab--→\n" : "");
    }
    return symbol_file("例", blocks);
}

/** What a list without headers must show of each path; one scan a title, one more for each child. */
std::map<std::string, std::string> lists_by_definition(const Temp &temp) {
    std::map<std::string, const TempInfo *> nodes; // the first record of each path
    for (const TempInfo &r : temp.records) nodes.emplace(text(r.ucPath), &r);
    const auto is_child = [](const TempInfo &r, const TempInfo &of) {
        const std::string path = text(r.ucPath), parent = text(of.ucPath);
        const std::size_t both = std::min(path.size(), parent.size());
        return r.usLevel == of.usLevel + 1 && path.compare(0, both, parent, 0, both) == 0;
    };
    std::map<std::string, std::string> lists;
    for (const auto &[path, node] : nodes) {
        std::string &list = lists[path];
        const auto add = [&](const std::string &sjis, int kind) {
            list += (list.empty() ? "" : " ") + to_utf8(sjis) + '<' + std::to_string(kind) + '>';
        };
        for (const TempInfo &r : temp.records) {
            if (!is_child(r, *node)) continue;
            const TempInfo &child = *nodes.at(text(r.ucPath));
            const auto below_it = [&](const TempInfo &other) { return is_child(other, child); };
            add(text(r.ucPath), std::any_of(temp.records.begin(), temp.records.end(), below_it) ? 3 : 2);
        }
        for (std::size_t at = node->ulDataPos; at < node->ulDataPos + 2 * node->ulDataLen; at += 2) {
            if (temp.text.compare(at, 2, "\r\n") != 0) add(temp.text.substr(at, 2), 4);
        }
    }
    return lists;
}

TEST(lists, show_what_the_definition_of_a_child_says_in_odd_trees_too) {
    for (std::uint64_t round = 0; round < 60; ++round) {
        Editing e(odd_tree(round));
        e.host.geometry(0, 1);
        for (const auto &[path, list] : lists_by_definition(read_temp())) {
            e.host.position(to_utf8(path));
            EXPECT_EQ(e.host.shown(e.host.record.wCurrentList), list) << to_utf8(path) << " round " << round;
        }
    }
}

TEST(lists, empty_the_current_one_when_a_position_is_not_found) {
    Editing e(worked_example());
    for (const std::string &path : {std::string("例／無"), std::string("例／数"), std::string(515, 'a'), std::string(2000, 'a')}) {
        EXPECT_EQ(e.host.position("例／数学"), 1);
        ListBox &list = e.host.list(2);
        unsigned char *const buffers[] = {list.lpchLBList, list.lpchLBListInfo, list.lpchLBItemInfo};
        for (unsigned char *buffer : buffers) buffer[0] = buffer[1] = 'x';
        list.cchLBItemInfoSize = 15;
        EXPECT_EQ(e.host.position(path), -1) << path;
        EXPECT_EQ(list.cchLBListLen | list.cchLBItemPageFirst | list.cchLBItemTotal | list.cchLBItemNum | list.cchLBItemInfoSize, 0);
        for (const unsigned char *buffer : buffers) EXPECT_EQ(buffer[0] | buffer[1], 0) << path;
        EXPECT_EQ(e.host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>") << path;
    }
}

TEST(lists, number_their_items_by_the_geometry) {
    Editing e(symbol_file("例", block("A", "→←↑↓＋√±×÷＝\n") + block("B", "\n\n")));
    const struct {
        int per_page, header;
        const char *expected;
    } cases[] = {
        {9, 4, "1: →<4> 2: ←<4> 3: ↑<4> 4: ↓<4> 5: ＋<4> 6: √<4> 7: ±<4> 8: ×<4> 9: ÷<4> 1: ＝<4>"},
        {3, 3, "1:→<4> 2:←<4> 3:↑<4> 1:↓<4> 2:＋<4> 3:√<4> 1:±<4> 2:×<4> 3:÷<4> 1:＝<4>"},
        {0, 4, "1: →<4> 2: ←<4> 3: ↑<4> 4: ↓<4> 5: ＋<4> 6: √<4> 7: ±<4> 8: ×<4> 9: ÷<4> 10:＝<4>"},
        {0, 2, "1→<4> 2←<4> 3↑<4> 4↓<4> 5＋<4> 6√<4> 7±<4> 8×<4> 9÷<4> 10＝<4>"},
        {1, 0, "→<4> ←<4> ↑<4> ↓<4> ＋<4> √<4> ±<4> ×<4> ÷<4> ＝<4>"},
        {9, 1, "→<4> ←<4> ↑<4> ↓<4> ＋<4> √<4> ±<4> ×<4> ÷<4> ＝<4>"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(e.host.position("例／A"), 1);
        EXPECT_EQ(e.host.geometry(c.per_page, c.header, 77, "題"), 1);
        EXPECT_EQ(e.host.shown(2), c.expected);
        EXPECT_EQ(e.host.list(10).cchLBItemLenMax, 77);
        EXPECT_EQ(to_utf8(text(e.host.list(10).lpchLBTitle)), "題");
        // Decision gets the symbol alone, whatever its header looks like.
        e.host.list(2).cchLBItemPageFirst = 10;
        e.host.list(2).cchLBItemNum = 1;
        e.host.run(ACC_VKEY_DECISION);
        EXPECT_EQ(to_utf8(text(e.host.record.lpchResult)), "＝");
    }
    EXPECT_EQ(e.host.position("例／B"), 1);
    EXPECT_EQ(e.host.shown(2), "");
}

TEST(lists, end_with_message_9_before_their_buffer_does) {
    std::string symbols, titles;
    for (int i = 0; i < 32500; ++i) symbols += "☆";
    for (int i = 0; i < 20000; ++i) titles += block("題" + std::to_string(i));
    Editing e(symbol_file("例", block("A", symbols + "\n") + titles));
    const struct {
        int per_page, header, list, total, length;
    } cases[] = {
        {9, 4, 2, 9362, 65534},  // 7 bytes a symbol
        {9, 0, 2, 21845, 65535}, // 3 bytes
        {9, 1, 2, 16383, 65532}, // 4 bytes
        {0, 2, 2, 8330, 65533},  // digits and 4 bytes
        {9, 40000, 2, 1, 40003}, // a header as wide as that
        {9, 65535, 2, 0, 0},
    };
    for (const auto &c : cases) {
        e.host.geometry(c.per_page, c.header);
        EXPECT_EQ(e.host.position("例／A"), 1);
        EXPECT_EQ(e.host.message(), "リストボックスのメモリが足りません。");
        EXPECT_EQ(e.host.list(c.list).cchLBItemTotal, c.total) << c.header;
        EXPECT_EQ(e.host.list(c.list).cchLBListLen, c.length) << c.header;
    }
    EXPECT_EQ(e.host.run(ACC_VKEY_TREE_TITLES), 1);
    EXPECT_EQ(e.host.message(), "リストボックスのメモリが足りません。");
    EXPECT_GT(e.host.record.cchDisplay, 65500);
    e.host.displayed();
}

TEST(refresh, fails_with_message_7_and_leaves_the_rest) {
    Editing e(worked_example());
    EXPECT_EQ(e.host.position("例／数学"), 1);
    // A path that the host has broken, and one without an end.
    for (const std::string &path : {std::string("none"), std::string(600, 'x')}) {
        std::copy_n(path.c_str(), std::min(path.size() + 1, std::size_t{ACC_SIZE_LB_LEVEL}), e.host.list(2).lpchLBLevel);
        EXPECT_EQ(e.host.geometry(9, 4), 0);
        EXPECT_EQ(e.host.message(), "ファイルの読み込みに失敗しました。");
    }
    EXPECT_EQ(e.host.position("例／数学"), 1);
    each_fault([&](Fault &fault) {
        fault.arm();
        const int result = e.host.position("例／数学");
        fault.disarm();
        EXPECT_EQ(result, fault.fired() ? 0 : 1);
        EXPECT_EQ(e.host.message(), fault.fired() ? "ファイルの読み込みに失敗しました。" : "");
        EXPECT_EQ(e.host.position("例／数学"), 1);
    });
}

} // namespace
