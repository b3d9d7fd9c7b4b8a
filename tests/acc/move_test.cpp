// The commands that move in the lists.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "support/editing.h"
#include "support/text.h"

namespace {

/** Runs a script of command words and gives the results, joined by blanks. */
std::string play(Host &host, const std::string &script) {
    static const std::map<std::string, int> commands = {
        {"next", ACC_VKEY_NEXT_ITEM}, {"back", ACC_VKEY_BEFORE_ITEM}, {"page", ACC_VKEY_NEXT_BLOCK}, {"pback", ACC_VKEY_BEFORE_BLOCK},
        {"in", ACC_VKEY_RIGHT_ITEM},  {"out", ACC_VKEY_LEFT_ITEM},    {"take", ACC_VKEY_DECISION},   {"info", ACC_VKEY_GET_INFO},
    };
    std::istringstream words(script);
    std::string results;
    for (std::string word; words >> word;) results += (results.empty() ? "" : " ") + std::to_string(host.run(commands.at(word)));
    return results;
}

TEST(cursor, moves_by_item_and_page) {
    const struct {
        const char *name;
        int T, P, N, M;
        const char *script, *results;
        int P_after, N_after;
    } cases[] = {
        {"to the last item", 5, 1, 3, 9, "next next next", "1 1 2", 1, 5},
        {"not past the page", 20, 1, 9, 9, "next", "2", 1, 9},
        {"on a later page", 20, 10, 1, 9, "next back back", "1 1 2", 10, 1},
        {"on the last page", 20, 19, 1, 9, "next next", "1 2", 19, 2},
        {"without pages", 20, 1, 19, 0, "next next", "1 2", 1, 20},
        {"without pages, page begun elsewhere", 20, 3, 1, 0, "back back back", "1 1 2", 1, 1},
        {"first item, back", 5, 1, 1, 9, "back", "2", 1, 1},
        {"no current item", 5, 0, 0, 9, "back next", "2 1", 1, 1},
        {"empty list", 0, 0, 0, 9, "next back page pback", "2 2 2 2", 0, 0},
        {"pages", 20, 1, 4, 9, "page page page", "1 1 2", 19, 1},
        {"pages back", 20, 19, 2, 9, "pback pback pback", "1 1 2", 1, 1},
        {"page back from an odd start", 20, 5, 2, 9, "pback", "1", 1, 1},
        {"no page that is empty", 18, 10, 1, 9, "page", "2", 10, 1},
        {"no pages", 20, 1, 1, 0, "page pback", "2 2", 1, 1},
        {"longest list", 65535, 65527, 9, 9, "next page", "2 2", 65527, 9},
    };
    for (const auto &c : cases) {
        Host host; // no file is open: the refresh of the page commands does nothing
        host.record.wCurrentList = 3;
        ListBox &list = host.list(3);
        list.cchLBItemTotal = static_cast<unsigned short>(c.T);
        list.cchLBItemPageFirst = static_cast<unsigned short>(c.P);
        list.cchLBItemNum = static_cast<unsigned short>(c.N);
        list.cchLBItemNumMax = static_cast<unsigned short>(c.M);
        host.record.wDataStatus = host.record.wDataUpdate = 1;
        EXPECT_EQ(play(host, c.script), c.results) << c.name;
        EXPECT_EQ(list.cchLBItemPageFirst, c.P_after) << c.name;
        EXPECT_EQ(list.cchLBItemNum, c.N_after) << c.name;
        const bool moved = std::string(c.results).find('1') != std::string::npos;
        EXPECT_EQ(host.record.wDataStatus, moved ? 8 : 1) << c.name;
        EXPECT_EQ(host.record.wDataUpdate, moved ? 8 : 1) << c.name;
    }
}

TEST(cursor, index_of_the_current_item) {
    Host host;
    const int cases[][3] = {{1, 1, 0}, {1, 9, 8}, {10, 1, 9}, {5, 0, 65535}, {0, 0, 65535}, {65535, 65535, 65532}};
    for (const auto &[first, number, index] : cases) {
        host.list(2).cchLBItemPageFirst = static_cast<unsigned short>(first);
        host.list(2).cchLBItemNum = static_cast<unsigned short>(number);
        EXPECT_EQ(ACC_Sym_GetLBIndexProc(&host.record, 1), index) << first << ' ' << number;
    }
}

TEST(browsing, reaches_every_symbol_and_its_codes) {
    Editing e(symbol_file("例", block("矢印") + block("メ^", "　＋×÷±∞∴♂♀℃￥\n") + block("メ^／比較", "＝\n")));
    Host &host = e.host;
    EXPECT_EQ(play(host, "take info next"), "2 2 1");
    host.record.wDataStatus = host.record.wDataUpdate = 1;
    EXPECT_EQ(play(host, "in"), "1");
    EXPECT_EQ(host.record.wDataStatus + host.record.wDataUpdate, 8 + 8);
    EXPECT_EQ(host.record.wCurrentList, 2);
    EXPECT_EQ(host.shown(1), "1: 例／矢印<2> 2: 例／メ^<3>"); // no separator is in メ^, whatever its bytes
    EXPECT_EQ(play(host, "take info"), "2 2");
    EXPECT_EQ(host.record.cchResult, 0);

    EXPECT_EQ(play(host, "next take info in"), "1 1 1 2"); // 　, and a symbol is no title
    EXPECT_EQ(host.codes(2), "8140 2121 0101");
    EXPECT_EQ(host.list(2).cchLBItemInfoSize, 15);
    EXPECT_EQ(to_utf8(text(host.record.lpchResult)), "　");
    EXPECT_EQ(host.record.cchResult, 2);

    host.record.wDataStatus = host.record.wDataUpdate = 1;
    EXPECT_EQ(play(host, "take"), "1"); // the same again
    EXPECT_EQ(host.record.wDataStatus, 129);
    EXPECT_EQ(host.record.wDataUpdate, 0);
    EXPECT_EQ(play(host, "next take"), "1 1");
    EXPECT_EQ(host.record.wDataUpdate, 128 + 8);

    EXPECT_EQ(play(host, "page next next take next"), "1 1 1 1 2"); // the last of 12 items
    EXPECT_EQ(to_utf8(text(host.record.lpchResult)), "￥");
    EXPECT_EQ(play(host, "info"), "1");
    EXPECT_EQ(host.codes(2), "818F 216F 0179");

    EXPECT_EQ(play(host, "pback in next out out"), "1 1 2 1 1");
    EXPECT_EQ(host.record.wCurrentList, 1);
    EXPECT_EQ(play(host, "out"), "2");
}

TEST(browsing, cuts_the_codes_of_an_odd_symbol_at_their_buffer) {
    Editing e(symbol_file("例", block("A", "A C\x01あ\n")));
    Host &host = e.host;
    EXPECT_EQ(play(host, "in info"), "1 1");
    EXPECT_EQ(host.codes(2).substr(0, 9), "4120 0000");
    EXPECT_EQ(play(host, "next info"), "1 1");
    EXPECT_EQ(host.codes(2).size(), 4u + 1 + 4 + 1 + 5);
    EXPECT_EQ(play(host, "next info"), "1 1");
    EXPECT_EQ(host.codes(2), "82A0 2422 0402");
}

TEST(browsing, descends_no_further_than_titles_reach) {
    Editing e(worked_example());
    e.host.list(1).lpchLBList[5] = 'x'; // the path within the first item: there is no such title
    e.host.record.wDataStatus = 1;
    EXPECT_EQ(play(e.host, "in"), "1");
    EXPECT_EQ(e.host.record.wCurrentList, 2);
    EXPECT_EQ(e.host.shown(2), "");
    EXPECT_EQ(e.host.record.wDataStatus, 1);
    e.host.position("例／数学"); // a title of level 11, as an edit may leave it, would be shown like this
    std::swap(e.host.list(2), e.host.list(10));
    e.host.record.wCurrentList = 10;
    EXPECT_EQ(play(e.host, "in"), "2");
}

// A title beginning with digits must not be taken for part of its header.
TEST(browsing, cuts_headers_wider_than_their_setting) {
    std::string blocks;
    for (int i = 0; i < 12; ++i) blocks += block("9" + std::to_string(i));
    for (const int header : {2, 3, 4, 5}) {
        Editing e(symbol_file("2024", blocks), "2024");
        e.host.geometry(0, header);
        e.host.list(1).cchLBItemNum = 12;
        EXPECT_EQ(play(e.host, "in"), "1") << header;
        EXPECT_EQ(to_utf8(text(e.host.list(2).lpchLBLevel)), "2024／911") << header;
    }
}

} // namespace
