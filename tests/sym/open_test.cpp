// Opening and closing symbol files: the temp file and its index, and every way to fail.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/children.h"
#include "support/editing.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

const char *const no_file = "記号ファイルが存在しません。";
const char *const not_symbols = "記号ファイルではありません。";
const char *const list_memory = "リストボックスのメモリが足りません。";

/** No file is open and nothing is left over. */
void expect_nothing_open(const Workspace &ws, Host &host) {
    EXPECT_EQ(g_tAccFile[0].hFile, 0);
    EXPECT_EQ(g_tAccFile[1].hFile, 0);
    EXPECT_TRUE(ws.temp_files().empty());
    EXPECT_EQ(host.run(ACC_VKEY_TREE_TITLES), 2);
}

std::string described(const TempInfo &r) {
    std::string result;
    for (unsigned value : {r.ulTitlePos, r.ulDataPos, r.ulDataLen, r.ulSymbolNum, std::uint32_t{r.usBlockNo}, std::uint32_t{r.usLevel}}) {
        result += std::to_string(value) + ' ';
    }
    return result + to_utf8(text(r.ucTitle)) + ' ' + to_utf8(text(r.ucPath));
}

TEST(open, develops_the_worked_example_into_the_temp_file) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    Host host(ws);
    ASSERT_EQ(host.open("例"), 1) << host.message();
    EXPECT_EQ(host.record.wDataStatus, 8);
    EXPECT_EQ(host.record.wDataUpdate, 8);
    EXPECT_EQ(host.record.wCurrentList, 1);

    const Temp temp = read_temp();
    EXPECT_EQ(temp.header.reserved, 0);
    ASSERT_EQ(temp.records.size(), 4u);
    const char *const expected[] = {"15 0 0 0 1 1 例 例", "19 71 5 4 2 2 矢印 例／矢印", "123 175 6 4 3 2 数学 例／数学",
                                    "229 287 0 0 4 3 比較 例／数学／比較"};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(described(temp.records[i]), expected[i]);
    EXPECT_EQ(temp.text, to_sjis("〈記号〉\r\n名称=例\r\n" + text_block("矢印", "→←↑↓\r\n") + text_block("数学", "＋×÷\r\n±\r\n") +
                                 text_block("数学／比較")));
    struct stat status;
    ASSERT_EQ(stat(text(g_tAccFile[1].ucFullName).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    EXPECT_EQ(host.run(ACC_VKEY_GET_EDIT), 2);
}

TEST(open, shows_nothing_of_a_file_of_the_head_lines_alone) {
    for (const char *title : {"空", ""}) {
        Workspace ws;
        ws.put("a.kig", symbol_file(title));
        Host host(ws);
        ASSERT_EQ(host.open(title), 1) << host.message();
        EXPECT_EQ(host.shown(1), "");
        EXPECT_EQ(host.list(1).cchLBItemNum, 0);
        EXPECT_EQ(to_utf8(text(host.list(1).lpchLBLevel)), title);
        EXPECT_EQ(read_temp().text, to_sjis("〈記号〉\r\n名称=" + std::string(title) + "\r\n"));
        host.run(ACC_VKEY_TREE_TITLES);
        EXPECT_EQ(host.displayed(), std::string(title) + '|');
    }
}

std::string repeated(const std::string &part, int times) {
    std::string result;
    while (times-- > 0) result += part;
    return result;
}

TEST(open, refuses_what_is_no_symbol_file_or_does_not_fit) {
    const std::string a255(255, 'a'), a256(256, 'a'), a257(257, 'a');
    const struct {
        const char *name;
        std::string bytes;
        int result;
        const char *message;
        std::string title = "t";
    } cases[] = {
        {"file title of 255 bytes", symbol_file(a255), 1, "", a255},
        {"file title of 256 bytes", symbol_file(a256), 0, not_symbols, a256},
        {"file title that the catalogue leaves out", symbol_file(a257 + "bbb"), 0, no_file, a257 + "bbb"},
        {"deepest level allowed", symbol_file("t", block("A" + repeated("／あ", 8))), 1, ""},
        {"one level too deep", symbol_file("t", block("A" + repeated("／あ", 9)) + block("Z")), 4, list_memory},
        {"title of 256 bytes", symbol_file("t", block(a256)), 1, ""},
        {"title of 257 bytes", symbol_file("t", block(a257)), 0, not_symbols},
        {"path of 514 bytes", symbol_file("t", block(a255 + "／" + std::string(254, 'b'))), 1, ""},
        {"path of 515 bytes", symbol_file("t", block(a255 + "／" + std::string(255, 'b'))), 0, not_symbols},
        {"32767 records", symbol_file("t", repeated(block("あ"), 32766)), 1, list_memory},
        {"32768 records", symbol_file("t", repeated(block("あ"), 32767)), 0, not_symbols},
        {"CR LF on disk", to_euc("〈記号〉\n名称=t\r\n［あ］\r\n"), 1, ""},
        {"a NUL ends the text", symbol_file("t") + std::string(1, '\0') + block(a257), 1, ""},
    };
    for (const auto &c : cases) {
        Workspace ws;
        ws.put("a.kig", c.bytes);
        Host host(ws);
        EXPECT_EQ(host.open(c.title), c.result) << c.name;
        EXPECT_EQ(host.message(), c.message) << c.name;
        EXPECT_EQ(host.close(), c.result == 1 ? 1 : 0) << c.name;
        expect_nothing_open(ws, host);
    }
}

// Runs as a user whom permissions bind; root could write to a read-only file.
TEST(open, wants_any_file_but_default_kig_writable) {
    Workspace ws;
    for (const char *name : {"default.kig", "other.kig"}) {
        ws.put(name, symbol_file(name));
        fs::permissions(ws.program / name, fs::perms::owner_read | fs::perms::others_read);
    }
    for (const fs::path &path : {ws.root, ws.program, ws.temp}) fs::permissions(path, fs::perms::all);
    EXPECT_TRUE(holds_for_nobody([&] {
        Host host(ws);
        return host.open("default.kig") == 1 && host.close() == 1 && host.open("other.kig") == 0 && host.message() == no_file;
    }));
}

// Only a process that ends for good removes the temp file, and only its own.
TEST(open, leaves_no_temp_file_behind_a_host_that_ends_without_closing) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    const auto child_exits = [](auto body) {
        const int code = in_children(1, [&](int) {
            body();
            std::exit(0);
            return 0;
        })[0];
        return code == 0;
    };
    EXPECT_TRUE(child_exits([&] {
        static Host *const host = new Host(ws); // never closed
        if (host->open("例") != 1 || ws.temp_files().size() != 1) std::_Exit(1);
    }));
    EXPECT_TRUE(ws.temp_files().empty());

    Host host(ws);
    ASSERT_EQ(host.open("例"), 1);
    EXPECT_TRUE(child_exits([] {}));
    EXPECT_EQ(ws.temp_files().size(), 1u);
}

TEST(open, finds_the_temp_file_of_a_relative_directory_from_elsewhere) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    setenv("TMPDIR", "temp", 1);
    Host host(ws);
    ASSERT_EQ(host.open("例"), 1);
    EXPECT_EQ(ws.temp_files().size(), 1u);
    fs::current_path("program");
    host.string(1, "Z");
    EXPECT_EQ(host.run(ACC_VKEY_TITLE_ADD), 2) << "here is no such directory";
    EXPECT_EQ(host.close(), 1);
    EXPECT_TRUE(ws.temp_files().empty());
}

// A title that is added then stands by itself, and the blocks are what they were.
TEST(open, completes_a_file_that_stops_anywhere_behind_its_title) {
    const std::string whole = symbol_file("例", block("A", "→\n") + block("B", "→a--b\n--"));
    for (std::size_t cut = symbol_file("例").size() - 1; cut <= whole.size(); ++cut) {
        SCOPED_TRACE(cut);
        Editing e(whole.substr(0, cut));
        Blocks blocks = blocks_of(read_temp());
        EXPECT_EQ(read_temp().text.find("\r\n\r\n"), std::string::npos) << "a line that nobody wrote";
        EXPECT_EQ(e.edit(ACC_VKEY_TITLE_ADD, "Z"), 1) << e.host.message();
        blocks.emplace_back("Z", "");
        EXPECT_EQ(blocks_of(read_temp()), blocks);
        EXPECT_EQ(e.save("例"), 1) << e.host.message();
        e.host.close();
        ASSERT_EQ(e.host.open("例"), 1) << e.host.message();
        EXPECT_EQ(blocks_of(read_temp()), blocks);
    }
}

} // namespace
