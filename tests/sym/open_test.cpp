// Opening and closing symbol files: the temp file and its index, and every way to fail.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <functional>

#include "support/editing.h"
#include "support/faults.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

const char *const no_file = "記号ファイルが存在しません。";
const char *const not_symbols = "記号ファイルではありません。";
const char *const opening_failed = "ファイルのオープンに失敗しました。";
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
    ASSERT_EQ(worked_example().size(), 315u);
    Host host(ws);
    ASSERT_EQ(host.open("例"), 1) << host.message();
    EXPECT_EQ(host.record.wDataStatus, 8);
    EXPECT_EQ(host.record.wDataUpdate, 8);
    EXPECT_EQ(host.record.wCurrentList, 1);

    const Temp temp = read_temp();
    EXPECT_EQ(fs::file_size(text(g_tAccFile[1].ucFullName)), 3505u);
    EXPECT_EQ(temp.header.usCount, 4);
    EXPECT_EQ(temp.header.reserved, 0);
    EXPECT_EQ(temp.header.ulTextPos, 3176u);
    const char *const expected[] = {"15 0 0 0 1 1 例 例", "19 71 5 4 2 2 矢印 例／矢印", "123 175 6 4 3 2 数学 例／数学",
                                    "229 287 0 0 4 3 比較 例／数学／比較"};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(described(temp.records[i]), expected[i]);
    EXPECT_EQ(temp.text.size(), 329u);
    const std::string line = hyphens + "\r\n";
    EXPECT_EQ(to_utf8(temp.text), "〈記号〉\r\n名称=例\r\n［矢印］\r\n" + line + "→←↑↓\r\n" + line + "［数学］\r\n" + line +
                                      "＋×÷\r\n±\r\n" + line + "［数学／比較］\r\n" + line + line);

    struct stat status;
    ASSERT_EQ(stat(text(g_tAccFile[1].ucFullName).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    EXPECT_EQ(host.run(ACC_VKEY_GET_EDIT), 2);

    EXPECT_EQ(host.open("例"), 0);
    EXPECT_EQ(host.message(), "ファイルが開いています。");
    EXPECT_EQ(host.record.cchMessage, 24);
    EXPECT_EQ(read_temp().records.size(), 4u);

    EXPECT_EQ(host.close(), 1);
    expect_nothing_open(ws, host);
    EXPECT_EQ(host.close(), 0);
    EXPECT_EQ(host.message(), "ファイルが開いていません。");
}

TEST(open, takes_a_file_of_the_head_lines_alone) {
    for (const char *title : {"空", ""}) {
        Workspace ws;
        ws.put("a.kig", symbol_file(title));
        Host host(ws);
        ASSERT_EQ(host.open(title), 1) << host.message();
        EXPECT_EQ(host.list(1).cchLBItemTotal, 0);
        EXPECT_EQ(host.list(1).cchLBItemNum, 0);
        EXPECT_EQ(to_utf8(text(host.list(1).lpchLBLevel)), title);
        EXPECT_EQ(read_temp().header.ulTextPos, 800u);
        EXPECT_EQ(described(read_temp().records[0]), std::string("15 0 0 0 1 1 ") + title + ' ' + title);
        host.run(ACC_VKEY_TREE_TITLES);
        EXPECT_EQ(host.displayed(), std::string(title) + '|');
    }
}

std::string path_of(int titles) {
    std::string path = "あ";
    for (int i = 1; i < titles; ++i) path += "／あ";
    return path;
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
        {"deepest level allowed", symbol_file("t", block(path_of(9))), 1, ""},
        {"one level too deep", symbol_file("t", block(path_of(10)) + block("Z")), 4, list_memory},
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

TEST(open, answers_every_refusal_of_its_inputs) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    const std::string long_directory = ws.program.string() + '/' + std::string(1022, 'x');
    const struct {
        const char *name;
        std::function<void(Host &)> prepare;
        int number;
        const char *text;
    } cases[] = {
        {"no such title", [](Host &h) { h.string(1, "none"); }, 0, no_file},
        {"user directory empty", [](Host &h) { h.string(2, ""); }, 2, "引数エラー"},
        {"program directory empty", [](Host &h) { h.string(3, ""); }, 0, no_file},
        {"directory of 1022 bytes", [&](Host &h) { h.string(4, long_directory.substr(0, 1022)); }, 1, ""},
        {"directory of 1023 bytes", [&](Host &h) { h.string(4, long_directory.substr(0, 1023)); }, 2, "引数エラー"},
        {"title null", [](Host &h) { h.null_string(1); }, 4, "メモリが割り当てられていません。"},
        {"user directory null", [](Host &h) { h.null_string(2); }, 4, "メモリが割り当てられていません。"},
        {"program directory null", [](Host &h) { h.null_string(3); }, 4, "メモリが割り当てられていません。"},
        {"common directory null", [](Host &h) { h.null_string(4); }, 4, "メモリが割り当てられていません。"},
    };
    for (const auto &c : cases) {
        Host host(ws);
        host.string(1, to_sjis("例"));
        c.prepare(host);
        host.record.wDataStatus = 3;
        EXPECT_EQ(host.run(ACC_VKEY_FILE_OPEN), *c.text ? 0 : 1) << c.name;
        EXPECT_EQ(host.message(), c.text) << c.name;
        EXPECT_EQ(host.record.wDataStatus, *c.text ? 3 : 8) << c.name;
    }
}

TEST(open, fails_cleanly_when_the_temp_directory_is_missing) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    Host host(ws);
    setenv("TMPDIR", (ws.root / "missing").c_str(), 1);
    EXPECT_EQ(host.open("例"), 0);
    EXPECT_EQ(host.message(), opening_failed);
    setenv("TMPDIR", ws.temp.c_str(), 1);
    expect_nothing_open(ws, host);
    EXPECT_EQ(host.open("例"), 1);
}

// Runs as a user whom permissions bind; root could write to a read-only file.
TEST(open, wants_any_file_but_default_kig_writable) {
    Workspace ws;
    for (const char *name : {"default.kig", "other.kig"}) {
        ws.put(name, symbol_file(name));
        fs::permissions(ws.program / name, fs::perms::owner_read | fs::perms::others_read);
    }
    for (const fs::path &path : {ws.root, ws.program, ws.temp}) fs::permissions(path, fs::perms::all);
    const pid_t child = fork();
    if (child == 0) {
        if (getuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(9);
        Host host(ws);
        const bool right = host.open("default.kig") == 1 && host.close() == 1 && host.open("other.kig") == 0 && host.message() == no_file;
        _exit(right ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

// Only a process that ends for good removes the temp file, and only its own.
TEST(open, leaves_no_temp_file_behind_a_host_that_ends_without_closing) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    const auto child_exits = [](const std::function<void()> &body) {
        const pid_t child = fork();
        if (child == 0) {
            body();
            std::exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return status;
    };
    EXPECT_EQ(child_exits([&] {
                  static Host *const host = new Host(ws); // never closed
                  if (host->open("例") != 1 || ws.temp_files().size() != 1) std::_Exit(1);
              }),
              0);
    EXPECT_TRUE(ws.temp_files().empty());

    Host host(ws);
    ASSERT_EQ(host.open("例"), 1);
    EXPECT_EQ(child_exits([] {}), 0);
    EXPECT_EQ(ws.temp_files().size(), 1u);
}

TEST(open, reads_a_file_cut_at_any_byte_or_refuses_it) {
    const std::string whole = worked_example();
    const std::size_t head = to_euc("〈記号〉\n名称=例").size();
    for (std::size_t cut = 1; cut <= whole.size(); ++cut) {
        Workspace ws;
        ws.put("a.kig", whole.substr(0, cut));
        Host host(ws);
        const int result = host.open("例");
        EXPECT_EQ(result, cut >= head ? 1 : 0) << cut;
        if (result != 1) {
            EXPECT_EQ(host.message(), no_file) << cut; // such a file has no such title
        } else {
            blocks_of(read_temp()); // closed, and described as it is now
            for (const TempInfo &record : read_temp().records) {
                EXPECT_EQ(host.position(to_utf8(text(record.ucPath))), read_temp().records.size() > 1 ? 1 : 0) << cut;
            }
            EXPECT_EQ(host.close(), 1);
        }
        expect_nothing_open(ws, host);
    }
}

TEST(open, survives_the_failure_of_every_call) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    const std::size_t descriptors = open_descriptors();
    each_fault([&](Fault &fault) {
        Host host(ws);
        fault.arm();
        const int result = host.open("例");
        fault.disarm();
        if (result == 1) {
            // What may fail without harm: only listing a directory that holds nothing.
            EXPECT_TRUE(!fault.fired() || host.message() == "ファイルの読み込みに失敗しました。" ||
                        fault.operation() == acc::Operation::directory || fault.operation() == acc::Operation::flush)
                << static_cast<int>(fault.operation());
            EXPECT_EQ(host.close(), 1);
        } else {
            EXPECT_EQ(result, 0);
            EXPECT_NE(host.message(), "");
        }
        expect_nothing_open(ws, host);
        EXPECT_EQ(open_descriptors(), descriptors);
        EXPECT_EQ(host.open("例"), 1) << host.message(); // and the next try succeeds
        EXPECT_EQ(host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>");
    });
}

} // namespace
