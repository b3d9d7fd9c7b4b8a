// Scans that miss something: nobody may take a title for new then, nor write over a file that
// another one may hide.
#include <gtest/gtest.h>

#include "common/faults.h"
#include "support/children.h"
#include "support/editing.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

/** Makes the n-th look at a directory, or the n-th file that is opened, fail. */
void fail_at(acc::Operation operation, int nth) {
    static acc::Operation failing;
    static int countdown;
    failing = operation;
    countdown = nth;
    acc::set_fault_hook([](acc::Operation asked) { return asked == failing && --countdown == 0; });
}

TEST(incomplete_scan, makes_no_second_file_of_a_title) {
    using enum acc::Operation;
    const struct {
        const char *name;
        void (*spoil)(const Workspace &);
        const char *saved; // this title
        bool certain;
    } cases[] = {
        {"nothing is missed", [](const Workspace &) {}, "無い", true},
        {"the program directory is gone", [](const Workspace &ws) { fs::remove_all(ws.program); }, "他", false},
        {"its listing cannot be had", [](const Workspace &) { fail_at(directory, 1); }, "他", false},
        {"its listing breaks off", [](const Workspace &) { fail_at(directory, 2); }, "無い", false},
        {"it breaks off, and the title is listed behind", [](const Workspace &) { fail_at(directory, 2); }, "他", false},
        {"a file cannot be opened", [](const Workspace &) { fail_at(open, 1); }, "無い", false},
        {"a file cannot be read", [](const Workspace &) { fail_at(read, 1); }, "無い", false},
        {"the common directory's listing cannot be had", [](const Workspace &) { fail_at(directory, 5); }, "無い", false},
        {"and the title is listed before", [](const Workspace &) { fail_at(directory, 5); }, "例", true},
        {"the common directory is a file",
         [](const Workspace &ws) {
             fs::remove_all(ws.common);
             write_file(ws.common, "");
         },
         "無い", false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Workspace ws;
        ws.put("a.kig", worked_example());
        write_file(ws.common / "other.kig", symbol_file("他", block("keep")));
        Host host(ws);
        ASSERT_EQ(host.open("例"), 1);
        host.string(1, "Z");
        ASSERT_EQ(host.run(ACC_VKEY_TITLE_ADD), 1);
        const auto files = [&] { return fs::is_directory(ws.common) ? std::distance(fs::directory_iterator(ws.common), {}) : -1; };
        c.spoil(ws);
        host.string(1, to_sjis(c.saved));
        const auto before = files();
        const int result = host.run(ACC_VKEY_FILE_SAVE);
        acc::set_fault_hook(nullptr);
        EXPECT_EQ(result, c.certain ? 1 : 0);
        EXPECT_EQ(host.message(), c.certain ? "" : "ファイルの読み込みに失敗しました。");
        EXPECT_EQ(host.run(ACC_VKEY_GET_EDIT), c.certain ? 2 : 1);
        EXPECT_EQ(files(), before + (c.certain && c.saved == std::string("無い")));
        EXPECT_TRUE(before < 0 || read_file(ws.common / "other.kig") == symbol_file("他", block("keep")));
        c.spoil(ws);
        host.string(1, to_sjis("新"));
        EXPECT_EQ(host.run(ACC_VKEY_FILE_NEW), c.name == std::string("nothing is missed") ? 1 : 0);
        acc::set_fault_hook(nullptr);
    }
}

TEST(incomplete_scan, is_one_that_permissions_kept_from_a_file) {
    Editing e(worked_example());
    write_file(e.ws.common / "private.kig", symbol_file("他"));
    fs::permissions(e.ws.common / "private.kig", fs::perms::none);
    for (const fs::path &path : {e.ws.root, e.ws.common, e.ws.temp}) fs::permissions(path, fs::perms::all);
    EXPECT_TRUE(holds_for_nobody([&] { return e.save("新") == 0 && e.host.message() == "ファイルの読み込みに失敗しました。"; }));
    fs::remove(e.ws.common / "private.kig");
    EXPECT_TRUE(holds_for_nobody([&] { return e.save("新") == 1; }));
}

TEST(scan, is_complete_without_what_was_never_there) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    fs::remove_all(ws.common);
    fs::create_symlink("itself.kig", ws.program / "itself.kig");
    fs::create_symlink("a.kig/nowhere", ws.program / "below a file.kig");
    Host host(ws);
    host.open("none");
    host.string(1, to_sjis("新"));
    EXPECT_EQ(host.run(ACC_VKEY_FILE_NEW), 1) << host.message();
    fs::create_directory(ws.common);
    EXPECT_EQ(host.run(ACC_VKEY_FILE_SAVE), 1) << host.message();
}

TEST(new_file, goes_nowhere_without_a_common_directory) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    Host host(ws);
    host.string(4, "");
    ASSERT_EQ(host.open("例"), 1);
    host.string(1, to_sjis("新"));
    EXPECT_EQ(host.run(ACC_VKEY_FILE_SAVE), 0);
    EXPECT_EQ(host.message(), "ファイルのオープンに失敗しました。");
    EXPECT_FALSE(fs::exists("@0000000.kig"));
}

} // namespace
