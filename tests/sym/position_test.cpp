// What the list boxes show.
#include <gtest/gtest.h>

#include <random>

#include "common/acccom.h"
#include "support/faults.h"
#include "support/host.h"
#include "support/text.h"
#include "sym/engine.h"

namespace {

/** A host with one open file; geometry is set back to the defaults first. */
struct Open {
    explicit Open(const std::string &disk_bytes, const std::string &title = "例") : host((ws.put("a.kig", disk_bytes), ws)) {
        host.record.wCurrentList = 1;
        host.geometry(9, 4);
        EXPECT_EQ(host.open(title), 1) << host.message();
    }
    Workspace ws;
    Host host;
};

TEST(lists, show_child_titles_then_symbols) {
    Open f(worked_example());
    EXPECT_EQ(f.host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>");
    f.host.record.wCurrentList = 2;
    EXPECT_EQ(f.host.position("例／数学"), 1);
    EXPECT_EQ(f.host.shown(2), "1: 例／数学／比較<2> 1: ＋<4> 2: ×<4> 3: ÷<4> 4: ±<4>");
    EXPECT_EQ(f.host.list(2).cchLBListLen, 19 + 4 * 7);
    EXPECT_EQ(f.host.list(2).cchLBItemNum, 1);
    EXPECT_EQ(f.host.list(2).cchLBItemPageFirst, 1);
    EXPECT_EQ(to_utf8(text(f.host.list(2).lpchLBLevel)), "例／数学");
    EXPECT_EQ(f.host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>");
    EXPECT_EQ(f.host.position("例／数学／比較"), 1);
    EXPECT_EQ(f.host.record.wCurrentList, 3);
    EXPECT_EQ(f.host.shown(3), "");
    EXPECT_EQ(f.host.list(3).lpchLBList[0] + f.host.list(3).lpchLBList[1], 0);
}

TEST(lists, keep_what_they_held_when_a_position_is_not_found) {
    Open f(worked_example());
    f.host.record.wCurrentList = 2;
    for (const std::string &path : {std::string("例／無"), std::string("例／数"), std::string(515, 'a'), std::string(2000, 'a')}) {
        f.host.position("例／数学");
        f.host.record.wCurrentList = 2;
        EXPECT_EQ(f.host.position(path), -1) << path;
        EXPECT_EQ(f.host.shown(2), "") << path;
        EXPECT_EQ(f.host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>") << path;
    }
}

TEST(lists, number_their_items_by_the_geometry) {
    Open f(symbol_file("例", block("A", "→←↑↓＋√±×÷＝\n") + block("B", "\n\n")));
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
        EXPECT_EQ(f.host.position("例／A"), 1);
        EXPECT_EQ(f.host.geometry(c.per_page, c.header, 77, "題"), 1);
        EXPECT_EQ(f.host.shown(2), c.expected);
        EXPECT_EQ(f.host.list(10).cchLBItemLenMax, 77);
        EXPECT_EQ(to_utf8(text(f.host.list(10).lpchLBTitle)), "題");
        // Decision gets the symbol alone, whatever its header looks like.
        f.host.list(2).cchLBItemPageFirst = 10;
        f.host.list(2).cchLBItemNum = 1;
        f.host.run(ACC_VKEY_DECISION);
        EXPECT_EQ(to_utf8(text(f.host.record.lpchResult)), "＝");
    }
    f.host.geometry(9, 4);
    EXPECT_EQ(f.host.position("例／B"), 1);
    EXPECT_EQ(f.host.shown(2), "");
}

/** The children and their flags by the definition: one scan a title, one more each. */
std::string children_by_definition(acc::Records records, std::size_t node) {
    const auto children = [&](std::size_t of, const auto &each) {
        const unsigned char *path = records[of].ucPath;
        for (const TempInfo &r : records) {
            if (r.usLevel == records[of].usLevel + 1 && CM_strncmp(r.ucPath, path, static_cast<short>(CM_strlen(path))) == 0) {
                each(r);
            }
        }
    };
    std::string result;
    children(node, [&](const TempInfo &child) {
        const int first = acc::SymGetIndex2(records, child.ucPath);
        int flag = 2;
        children(static_cast<std::size_t>(first), [&](const TempInfo &) { flag = 3; });
        result += (result.empty() ? "" : " ") + to_utf8(text(child.ucPath)) + '<' + std::to_string(flag) + '>';
    });
    return result;
}

TEST(lists, agree_with_the_definition_of_a_child_in_odd_trees_too) {
    std::mt19937 random(1);
    const char *const names[] = {"A", "AB", "ABC", "B", "あ"};
    for (int round = 0; round < 60; ++round) {
        std::string blocks;
        const auto count = 1 + random() % 25;
        for (auto i = 0u; i < count; ++i) {
            std::string path = names[random() % 5];
            for (auto depth = random() % 4; depth > 0; --depth) path += std::string("／") + names[random() % 5];
            // Two brackets on a line: a level that the path does not show.
            const bool odd = random() % 4 == 0;
            blocks += (odd ? "［x／y］" : "") + block(path);
        }
        Open f(symbol_file("例", blocks));
        f.host.geometry(0, 1);
        const acc::Records records = acc::open_records();
        for (std::size_t i = 0; i < records.size(); ++i) {
            // The first record of its path is the one that is shown.
            const int first = acc::SymGetIndex2(records, records[i].ucPath);
            f.host.position(to_utf8(text(records[i].ucPath)));
            const std::string path = to_utf8(text(records[i].ucPath));
            EXPECT_EQ(f.host.shown(f.host.record.wCurrentList), children_by_definition(records, static_cast<std::size_t>(first)))
                << path << " round " << round;
        }
    }
}

TEST(lists, end_with_message_9_before_their_buffer_does) {
    std::string symbols, titles;
    for (int i = 0; i < 32500; ++i) symbols += "☆";
    for (int i = 0; i < 20000; ++i) titles += block("題" + std::to_string(i));
    Open f(symbol_file("例", block("A", symbols + "\n") + titles));
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
        f.host.geometry(c.per_page, c.header);
        EXPECT_EQ(f.host.position("例／A"), 1);
        EXPECT_EQ(f.host.message(), "リストボックスのメモリが足りません。");
        EXPECT_EQ(f.host.list(c.list).cchLBItemTotal, c.total) << c.header;
        EXPECT_EQ(f.host.list(c.list).cchLBListLen, c.length) << c.header;
    }
    EXPECT_EQ(f.host.run(ACC_VKEY_TREE_TITLES), 1);
    EXPECT_EQ(f.host.message(), "リストボックスのメモリが足りません。");
    EXPECT_GT(f.host.record.cchDisplay, 65500);
    f.host.displayed();
    f.host.geometry(9, 4);
}

TEST(refresh, fails_with_message_7_and_leaves_the_rest) {
    Open f(worked_example());
    EXPECT_EQ(f.host.position("例／数学"), 1);
    // A path that the host has broken, and one without an end.
    for (const std::string &path : {std::string("none"), std::string(600, 'x')}) {
        std::copy_n(path.c_str(), std::min(path.size() + 1, std::size_t{ACC_SIZE_LB_LEVEL}), f.host.list(2).lpchLBLevel);
        EXPECT_EQ(f.host.geometry(9, 4), 0);
        EXPECT_EQ(f.host.message(), "ファイルの読み込みに失敗しました。");
    }
    EXPECT_EQ(f.host.position("例／数学"), 1);
    each_fault([&](Fault &fault) {
        fault.arm();
        const int result = f.host.position("例／数学");
        fault.disarm();
        EXPECT_EQ(result, fault.fired() ? 0 : 1);
        EXPECT_EQ(f.host.message(), fault.fired() ? "ファイルの読み込みに失敗しました。" : "");
        EXPECT_EQ(f.host.position("例／数学"), 1);
    });
}

} // namespace
