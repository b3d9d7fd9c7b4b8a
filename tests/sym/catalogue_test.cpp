#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/host.h"
#include "support/text.h"

namespace {

/** A host whose directories are those of the workspace, with no file open. */
void take_directories(Host &host) {
    host.open("no such title");
}

TEST(catalogue, lists_symbol_files_by_what_their_head_says) {
    const std::string good = symbol_file("題");
    const struct {
        const char *name, *file;
        std::string bytes;
        bool listed;
    } cases[] = {
        {"plain", "a.kig", good, true},
        {"extension in the middle", "notes.kig.bak", good, true},
        {"extension alone", ".kig", good, false},
        {"no extension", "a.txt", good, false},
        {"upper case", "a.KIG", good, false},
        {"no header", "a.kig", good.substr(1), false},
        {"no name line", "a.kig", to_euc("〈記号〉\n"), false},
        {"empty", "a.kig", "", false},
        {"name line at the end of what is read", "a.kig", to_euc("〈記号〉\n") + std::string(1007, 'x') + to_euc("名称=題\n"), true},
        {"name line beyond it", "a.kig", to_euc("〈記号〉\n") + std::string(1020, 'x') + to_euc("名称=題\n"), false},
        {"title of 260 bytes", "a.kig", symbol_file(std::string(260, 'a')), false},
        {"too deep for an open", "a.kig", symbol_file("題", block("1／2／3／4／5／6／7／8／9／10")), true},
    };
    for (const auto &c : cases) {
        Workspace ws;
        ws.put(c.file, c.bytes);
        Host host(ws);
        take_directories(host);
        EXPECT_EQ(host.run(ACC_VKEY_FILE_TITLES), 1) << c.name;
        EXPECT_EQ(host.displayed(), c.listed ? "題|" : "") << c.name;
        EXPECT_EQ(m_lSymSVValue, c.listed ? 1 : 0) << c.name;
        EXPECT_EQ(m_lSymSVBuffSize, c.listed ? 520 : 0) << c.name;
    }
}

TEST(catalogue, passes_over_what_is_no_regular_file) {
    Workspace ws;
    ASSERT_EQ(mkfifo((ws.program / "pipe.kig").c_str(), 0600), 0); // opening it would wait for ever
    std::filesystem::create_directory(ws.program / "directory.kig");
    std::filesystem::create_symlink("nowhere", ws.program / "dangling.kig");
    ws.put("a.kig", worked_example());
    std::filesystem::create_symlink("a.kig", ws.program / "link.kig");
    Host host(ws);
    take_directories(host);
    EXPECT_EQ(host.run(ACC_VKEY_FILE_TITLES), 1);
    EXPECT_EQ(host.displayed(), "例|例|");
}

TEST(catalogue, finds_the_program_directory_s_file_first) {
    Workspace ws;
    write_file(ws.common / "a.kig", symbol_file("題", block("common")));
    Host host(ws);
    ASSERT_EQ(host.open("題"), 1);
    EXPECT_EQ(host.shown(1), "1: 題／common<2>");
    host.close();
    ws.put("b.kig", symbol_file("題", block("program")));
    ASSERT_EQ(host.open("題"), 1);
    EXPECT_EQ(host.shown(1), "1: 題／program<2>");
    host.record.wDataStatus = 1;
    host.record.wDataUpdate = 2;
    EXPECT_EQ(host.run(ACC_VKEY_FILE_TITLES), 1);
    EXPECT_EQ(host.displayed(), "題|題|");
    EXPECT_EQ(host.record.wDataStatus, 1 + 16);
    EXPECT_EQ(host.record.wDataUpdate, 2 + 16);
}

TEST(catalogue, is_empty_without_a_program_directory) {
    Workspace ws;
    write_file(ws.common / "a.kig", symbol_file("題"));
    Host host(ws);
    host.string(3, ws.root / "missing");
    EXPECT_EQ(host.open("題"), 0);
    EXPECT_EQ(host.run(ACC_VKEY_FILE_TITLES), 0);
    EXPECT_EQ(host.message(), "");
    std::filesystem::remove_all(ws.common); // a missing common directory holds nothing
    host.string(3, ws.program);
    EXPECT_EQ(host.open("題"), 0);
    EXPECT_EQ(host.run(ACC_VKEY_FILE_TITLES), 1);
    EXPECT_EQ(host.displayed(), "");
}

TEST(catalogue, ends_its_list_of_titles_before_the_buffer_does) {
    Workspace ws;
    const std::string title(255, 'a');
    for (int i = 0; i < 300; ++i) ws.put(std::to_string(i) + ".kig", symbol_file(title));
    Host host(ws);
    take_directories(host);
    EXPECT_EQ(host.run(ACC_VKEY_FILE_TITLES), 1);
    EXPECT_EQ(host.message(), "リストボックスのメモリが足りません。");
    EXPECT_EQ(host.record.cchDisplay, 255 * 256);
    EXPECT_EQ(m_lSymSVValue, 300);
}

} // namespace
