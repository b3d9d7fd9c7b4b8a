// Old files that must not get in, and temp files that must not stay.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/editing.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

class In {
  public:
    explicit In(const fs::path &directory) : before_(fs::current_path()) { fs::current_path(directory); }
    ~In() { fs::current_path(before_); }

  private:
    fs::path before_;
};

TEST(old_file, brings_in_only_what_an_edit_would_take) {
    const struct {
        const char *name;
        std::string old; // Shift_JIS
        bool taken;
    } cases[] = {
        {"a plain one", to_sjis("［T］\r\nsel1=★\r\n"), true},
        {"a title with a line end in it", to_sjis("［T\nU］\r\nsel1=★\r\n"), false},
        {"a title with an opening bracket in it", to_sjis("［T［U］\r\nsel1=★\r\n"), false},
        {"a title that EUC-JP cannot hold", to_sjis("［") + "\xF0\x40" + to_sjis("］\r\n"), false},
        {"a CR for the second byte of a symbol", to_sjis("［T］\r\nsel1=★") + "x\r\n", false},
        {"more symbols than an edit takes",
         to_sjis("［T］\r\n") +
             [] {
                 std::string keys; // each run of ten holds the beginning of the next key
                 for (int i = 0; keys.size() < 32000; ++i) keys += "sel1=sel2=sel3=sel4=";
                 return keys;
             }(),
         false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Editing e(worked_example());
        const In in(e.ws.temp);
        write_file("x.ini", c.old);
        const std::string before = e.text();
        EXPECT_EQ(e.edit(ACC_VKEY_FILE_CONVERT, "x.ini"), c.taken ? 1 : 0);
        EXPECT_EQ(e.host.message(), c.taken ? "" : "記号ファイルのコンバートに失敗しました。");
        EXPECT_EQ(e.text() == before, !c.taken);
        EXPECT_EQ(e.save("例"), 1) << e.host.message();
    }
}

TEST(old_file, that_is_a_pipe_is_not_waited_for) {
    Editing e(worked_example());
    const In in(e.ws.root);
    ASSERT_EQ(mkfifo("x.ini", 0600), 0);
    alarm(20);
    EXPECT_EQ(e.edit(ACC_VKEY_FILE_CONVERT, "x.ini"), 0);
    alarm(0);
}

TEST(temp_file, of_a_relative_directory_is_found_again_from_elsewhere) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    const In in(ws.root);
    setenv("TMPDIR", "temp", 1);
    Host host(ws);
    ASSERT_EQ(host.open("例"), 1);
    EXPECT_EQ(ws.temp_files().size(), 1u);
    fs::current_path("program");
    host.string(1, "Z");
    EXPECT_EQ(host.run(ACC_VKEY_TITLE_ADD), 0 + 2); // here is no such directory
    EXPECT_EQ(host.close(), 1);
    EXPECT_TRUE(ws.temp_files().empty());
}

TEST(file_title_rename, asks_for_a_title_before_it_asks_for_a_file) {
    Host host;
    host.record.wCurrentList = 1;
    EXPECT_EQ(host.run(ACC_VKEY_TITLE_CHANGE), 2);
    EXPECT_EQ(host.message(), "入力エラーです。");
    host.string(1, "T");
    EXPECT_EQ(host.run(ACC_VKEY_TITLE_CHANGE), 2);
    EXPECT_EQ(host.message(), "ファイルが開いていません。");
}

} // namespace
