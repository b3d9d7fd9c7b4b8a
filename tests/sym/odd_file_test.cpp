// Files that no writer made, and hosts that keep what a command before left in the record.
#include <gtest/gtest.h>

#include "support/editing.h"
#include "support/text.h"
#include "sym/symbol_file.h"

namespace {

// A list keeps its items when its file is closed, and their headers when the setting changes.
TEST(decision, takes_two_bytes_and_no_more_whatever_the_list_still_holds) {
    const std::string deep = "深／い", file = symbol_file("例", block("深") + block(deep, "☆\n") + block("Ａ", "☆\n"));
    const struct {
        const char *name;
        int header_before, header_after, place;
        const char *path;
        int expected;
    } cases[] = {
        {"the same header", 4, 4, 1, "例／Ａ", 1},    {"a shorter header than the items have", 4, 2, 1, "例／Ａ", 2},
        {"no header setting", 4, 0, 1, "例／Ａ", 2},  {"a header longer than the items", 4, 32, 1, "例／Ａ", 2},
        {"the longest header", 4, 65535, 1, "例", 2}, {"a title under a long header", 4, 32, 1, "例／深", 2},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Editing e(file);
        e.host.geometry(9, c.header_before);
        e.focus(c.path);
        e.host.close();
        e.host.geometry(9, c.header_after);
        ListBox &list = e.host.list(e.host.record.wCurrentList);
        list.cchLBItemPageFirst = 1;
        list.cchLBItemNum = static_cast<unsigned short>(c.place);
        e.host.record.cchResult = 77;
        EXPECT_EQ(e.host.run(ACC_VKEY_DECISION), c.expected);
        EXPECT_EQ(e.host.record.cchResult, c.expected == 1 ? 2 : 77);
        EXPECT_EQ(to_utf8(text(e.host.record.lpchResult)), c.expected == 1 ? "☆" : "");
        EXPECT_EQ(e.host.run(ACC_VKEY_GET_INFO), c.expected);
        e.host.geometry(9, 4);
    }
}

TEST(info, writes_the_digits_and_their_end_alone) {
    Editing e(symbol_file("例", block("A", "☆\n")));
    e.focus("例／A");
    unsigned char *const info = e.host.list(2).lpchLBItemInfo;
    info[15] = 0x77;
    ASSERT_EQ(e.host.run(ACC_VKEY_GET_INFO), 1);
    EXPECT_EQ(e.host.codes(2), "8199 2179 0189");
    EXPECT_EQ(info[15], 0x77);
}

TEST(file_title, may_end_in_half_a_character_or_hold_a_separator) {
    for (const std::string title : {"T\x85", "F\x81\x5EG"}) {
        SCOPED_TRACE(title);
        std::string disk = symbol_file("T", block("A", "→\n") + block("A／X", "☆\n") + block("B"));
        disk.replace(disk.find("=T") + 1, 1, title == "T\x85" ? title : "F\xA1\xBFG");
        Workspace ws;
        write_file(ws.common / "a.kig", disk);
        Host host(ws);
        host.string(1, title);
        ASSERT_EQ(host.run(ACC_VKEY_FILE_OPEN), 1);
        ASSERT_EQ(host.run(ACC_VKEY_RIGHT_ITEM), 1);
        ASSERT_EQ(host.run(ACC_VKEY_RIGHT_ITEM), 1); // ASCII, the title and what was read as its separator
        const auto first = [&](int list) { return text(host.list(list).lpchLBList); };
        const std::string below = title + "\x81\x5E";
        EXPECT_EQ(first(1), "1: " + below + "A");
        EXPECT_EQ(first(2), "1: " + below + "A\x81\x5EX");
        EXPECT_EQ(first(3), "1: \x81\x99");
        host.record.wCurrentList = 2;
        host.string(1, "NEW");
        ASSERT_EQ(host.run(ACC_VKEY_TITLE_CHANGE), 1);
        EXPECT_EQ(first(1), "1: " + below + "NEW");
        EXPECT_EQ(first(2), "1: " + below + "NEW\x81\x5EX");
        host.string(1, "Y");
        ASSERT_EQ(host.run(ACC_VKEY_TITLE_ADD), 1);
        host.string(1, title == "T\x85" ? "mended" : title);
        EXPECT_EQ(host.run(ACC_VKEY_FILE_SAVE), 1) << host.message();
        EXPECT_NE(read_file(ws.common / (title == "T\x85" ? "@0000000.kig" : "a.kig")).find(to_euc("［NEW／Y］")), std::string::npos);
    }
}

TEST(symbol_file, may_lie_in_the_root_directory) {
    EXPECT_EQ(acc::SymFileOpen(bytes("/no such file.kig")), -1);
    EXPECT_EQ(text(g_tAccFile[0].ucDir) + "|" + text(g_tAccFile[0].ucName), "/|no such file.kig");
}

} // namespace
