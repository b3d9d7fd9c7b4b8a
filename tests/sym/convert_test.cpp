// Appending old-format files.
#include <gtest/gtest.h>

#include "support/editing.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

const char *const failed = "記号ファイルのコンバートに失敗しました。";

/** An open file, and the current directory where the old file lies under a bare name. */
class Conversion : public Editing {
  public:
    Conversion() : Editing(symbol_file("例", block("A", "→\n"))), old_directory_(fs::current_path()) {
        fs::create_directory(ws.root / "old");
        fs::current_path(ws.root / "old");
    }
    ~Conversion() { fs::current_path(old_directory_); }

    int convert(const std::string &name) {
        host.string(1, name);
        return host.run(ACC_VKEY_FILE_CONVERT);
    }

    /** Converts these bytes and gives what was appended to the text, in UTF-8. */
    std::string appended(const std::string &bytes) {
        const std::size_t before = read_temp().text.size();
        write_file("x.ini", bytes);
        EXPECT_EQ(convert("x.ini"), 1) << host.message();
        blocks_of(read_temp());
        return to_utf8(read_temp().text.substr(before));
    }

    void expect_unchanged(const char *message, int edited) {
        EXPECT_EQ(host.message(), message);
        EXPECT_EQ(text(), "〈記号〉\r\n名称=例\r\n［A］\r\n" + hyphens + "\r\n→\r\n" + hyphens + "\r\n");
        EXPECT_EQ(host.run(ACC_VKEY_GET_EDIT), edited);
        EXPECT_EQ(ws.temp_files().size(), 1u);
        if (fs::exists(ws.common)) {
            EXPECT_EQ(std::distance(fs::directory_iterator(ws.common), fs::directory_iterator()), 1);
        }
    }

  private:
    fs::path old_directory_;
};

std::string b(const std::string &title, const std::string &data = "") {
    return "［" + title + "］\r\n" + hyphens + "\r\n" + data + hyphens + "\r\n";
}

TEST(conversion, turns_titles_and_keys_into_blocks) {
    const struct {
        const char *name;
        std::string old, expected;
    } cases[] = {
        {"spaces are dropped", "［記号］\r\n" + hyphens + "\r\nsel1=★ ☆\r\n", b("記号", "★☆\r\n")},
        {"keys in their own order, either case", "［T］\nSEL2=☆\nsel11=→\nsel1=★\n", b("T", "★\r\n☆\r\n→\r\n")},
        {"the first ten of a line", "［T］\r\nsel1=１２３４５６７８９０☆★\r\n", b("T", "１２３４５６７８９０\r\n")},
        {"a key that comes again behind ten", "［T］\r\nsel1=１２３４５６７８９０\r\nsel1=☆\r\n", b("T", "１２３４５６７８９０☆\r\n")},
        {"no keys", "［T］\r\nother=★\r\n", b("T")},
        {"no line end at the end", "［T］\r\nsel1=★", b("T", "★\r\n")},
        {"half a symbol at the end", "［T］\r\nsel1=★☆x", b("T", "★☆\r\n")},
        {"text before the first title", "x\r\n［T］\r\nsel1=★\r\n", b("T", "★\r\n")},
        {"brackets that open nothing", "［］\r\n x［U］\r\n［123456789012345］\r\n［T］\r\nsel1=★\r\n", b("T", "★\r\n")},
        {"14 bytes", "［12345678901234］\r\n", b("12345678901234")},
        {"two titles", "［T］\r\nsel1=★\r\n［U］\r\nsel1=☆\r\n", b("T", "★\r\n") + b("U", "☆\r\n")},
        {"a title of the open file", "［A］\r\nsel1=★\r\n", b("A", "★\r\n")},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Conversion f;
        EXPECT_EQ(f.appended(to_sjis(c.old)), c.expected);
        EXPECT_EQ(f.host.run(ACC_VKEY_GET_EDIT), 1);
        EXPECT_EQ(f.ws.temp_files().size(), 1u);
        EXPECT_FALSE(fs::exists(f.ws.common / "@0000000.kig"));
        EXPECT_EQ(f.save("例"), 1);
        f.host.close();
        EXPECT_EQ(f.host.open("例"), 1);
    }
}

TEST(conversion, gathers_whatever_a_key_holds) {
    Conversion f;
    std::string old = "［T］\r\n", expected;
    for (int i = 0; i < 30; ++i) {
        old += "sel3=１２３４５６７８９０\r\n";
        expected += "１２３４５６７８９０";
    }
    EXPECT_EQ(f.appended(to_sjis(old)), b("T", expected + "\r\n"));
}

TEST(conversion, checks_the_name) {
    const std::pair<std::string, bool> cases[] = {
        {"old.ini", true},
        {"OLD.INI", true},
        {"old.ini2", true},
        {"noextension", true},
        {"a.b.ini", false},
        {"dir/old.ini", false},
        {"old.txt", false},
        {"old.in", false},
        {" old.ini", false},
        {"", false},
        {"C:\\dir\\old.ini", true},
        {"C:\\dir\\", false},
        {to_sjis("　old.ini"), false},
        {std::string(252, 'x') + ".ini", true},
        {std::string(253, 'x') + ".ini", false},
        {std::string(800, 'x'), false},
    };
    for (const auto &[name, accepted] : cases) {
        Conversion f; // no such file: an accepted name fails later
        EXPECT_EQ(f.convert(name), 0) << name;
        f.expect_unchanged(accepted ? failed : "記号ファイルが存在しません。", 2);
    }
}

TEST(conversion, refuses_what_it_cannot_keep_whole) {
    std::string titles99, titles100;
    for (int i = 0; i < 100; ++i) {
        if (i == 99) titles99 = titles100;
        titles100 += "［T" + std::to_string(i) + "］\r\n";
    }
    const std::string filler(32767, 'x');
    const struct {
        const char *name;
        std::string old; // Shift_JIS
        bool converted;
    } cases[] = {
        {"no title", to_sjis("sel1=★\r\n"), false},
        {"99 titles", to_sjis(titles99), true},
        {"100 titles", to_sjis(titles100), false},
        {"32767 bytes", (to_sjis("［T］\r\n") + filler).substr(0, 32767), true},
        {"32768 bytes", (to_sjis("［T］\r\n") + filler).substr(0, 32768), false},
        {"a symbol that EUC-JP cannot hold", to_sjis("［T］\r\nsel1=") + "\xF0\x40\r\n", false},
        {"hyphens that read as an end line", to_sjis("［T］\r\n") + "sel1=--------------------\r\nsel1=--------------------\r\n", false},
        {"a NUL", to_sjis("［T］\r\nsel1=") + std::string("a\0", 2) + "\r\n", false},
        {"a title that would read as two levels", to_sjis("［T／U］\r\n"), false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Conversion f;
        write_file("x.ini", c.old);
        EXPECT_EQ(f.convert("x.ini"), c.converted ? 1 : 0) << f.host.message();
        if (!c.converted) {
            const bool late = f.host.run(ACC_VKEY_GET_EDIT) == 1; // only the blocks' shape is judged late
            f.convert("x.ini");
            f.expect_unchanged(failed, late ? 1 : 2);
        }
    }
}

TEST(conversion, never_overwrites_a_file_with_its_scratch_copy) {
    Conversion f;
    write_file("x.ini", to_sjis("［T］\r\nsel1=★\r\n"));
    write_file(f.ws.common / "@0000000.kig", "taken"); // not listed
    EXPECT_EQ(f.convert("x.ini"), 1);
    EXPECT_EQ(read_file(f.ws.common / "@0000000.kig"), "taken");
}

TEST(conversion, needs_an_open_file_and_a_common_directory) {
    Conversion f;
    write_file("x.ini", to_sjis("［T］\r\nsel1=★\r\n"));
    fs::remove_all(f.ws.common);
    EXPECT_EQ(f.convert("x.ini"), 0);
    f.expect_unchanged(failed, 1); // the flag is set once the old file is read
    f.host.null_string(1);
    EXPECT_EQ(f.host.run(ACC_VKEY_FILE_CONVERT), 0);
    f.expect_unchanged("メモリが割り当てられていません。", 1);
    f.host.close();
    EXPECT_EQ(f.convert("x.ini"), 0);
    EXPECT_EQ(f.host.message(), "ファイルが開いていません。");
}

// The text may end in a line that is no block; what is appended stands before it.
TEST(conversion, appends_behind_the_last_block_of_an_odd_file) {
    for (const char *const tail : {"［unclosed", "remark", "\n\nremark［"}) {
        Conversion f;
        f.host.close();
        write_file(f.ws.common / "a.kig", symbol_file("例", block("A", "→\n") + tail));
        ASSERT_EQ(f.host.open("例"), 1);
        write_file("x.ini", to_sjis("［T］\r\nsel1=★\r\n"));
        EXPECT_EQ(f.convert("x.ini"), 1) << tail;
        EXPECT_EQ(blocks_of(read_temp()), (Blocks{{"A", to_sjis("→\r\n")}, {"T", to_sjis("★\r\n")}}));
    }
}

} // namespace
