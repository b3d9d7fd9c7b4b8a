// Appending old-format files.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "support/editing.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

const char *const failed = "記号ファイルのコンバートに失敗しました。";

const std::string open_file = symbol_file("例", block("A", "→\n"));
const std::string one_title = to_sjis("［T］\r\nsel1=★\r\n");

/** Has an old file of these bytes appended. */
int convert(Editing &e, const std::string &bytes) {
    write_file("x.ini", bytes);
    return e.edit(ACC_VKEY_FILE_CONVERT, "x.ini");
}

TEST(conversion, turns_titles_and_keys_into_blocks) {
    const auto b = [](const char *title, const std::string &data = "") { return text_block(title, data); };
    std::string thirty_lines, three_hundred;
    for (int i = 0; i < 30; ++i) {
        thirty_lines += "sel3=１２３４５６７８９０\r\n";
        three_hundred += "１２３４５６７８９０";
    }
    const struct {
        const char *name;
        std::string old, expected;
    } cases[] = {
        {"spaces are dropped", "［記号］\r\n" + hyphens + "\r\nsel1=★ ☆\r\n", b("記号", "★☆\r\n")},
        {"keys in their own order, either case", "［T］\nSEL2=☆\nsel11=→\nsel1=★\n", b("T", "★\r\n☆\r\n→\r\n")},
        {"the first ten of a line", "［T］\r\nsel1=１２３４５６７８９０☆★\r\n", b("T", "１２３４５６７８９０\r\n")},
        {"a key that comes again behind ten", "［T］\r\nsel1=１２３４５６７８９０\r\nsel1=☆\r\n", b("T", "１２３４５６７８９０☆\r\n")},
        {"many lines of a key", "［T］\r\n" + thirty_lines, b("T", three_hundred + "\r\n")},
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
        Editing e(open_file);
        const std::string before = e.text();
        EXPECT_EQ(convert(e, to_sjis(c.old)), 1) << e.host.message();
        EXPECT_EQ(e.text(), before + c.expected);
        blocks_of(read_temp());
        EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 1);
        EXPECT_EQ(e.ws.temp_files().size() + files_in(e.ws.common).size(), 2u);
        EXPECT_EQ(e.save("例"), 1);
        e.host.close();
        EXPECT_EQ(e.host.open("例"), 1);
    }
}

TEST(conversion, refuses_what_it_cannot_keep_whole) {
    std::string titles99, titles100;
    for (int i = 0; i < 100; ++i) {
        if (i == 99) titles99 = titles100;
        titles100 += "［T" + std::to_string(i) + "］\r\n";
    }
    const std::string filler(32767, 'x');
    std::string keys; // each run of ten holds the beginning of the next key
    while (keys.size() < 32000) keys += "sel1=sel2=sel3=sel4=";
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
        {"a title with a line end in it", to_sjis("［T\nU］\r\nsel1=★\r\n"), false},
        {"a title with an opening bracket in it", to_sjis("［T［U］\r\nsel1=★\r\n"), false},
        {"a title that EUC-JP cannot hold", to_sjis("［") + "\xF0\x40" + to_sjis("］\r\n"), false},
        {"a CR for the second byte of a symbol", to_sjis("［T］\r\nsel1=★") + "x\r\n", false},
        {"more symbols than an edit takes", to_sjis("［T］\r\n") + keys, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Editing e(open_file);
        State before(e);
        EXPECT_EQ(convert(e, c.old), c.converted ? 1 : 0);
        EXPECT_EQ(e.host.message(), c.converted ? "" : failed);
        const State after(e);
        before.edited = after.edited; // the blocks' shape is judged late
        EXPECT_EQ(after == before, !c.converted);
    }
}

TEST(conversion, does_not_wait_for_a_pipe) {
    Editing e(open_file);
    ASSERT_EQ(mkfifo("x.ini", 0600), 0);
    alarm(20);
    EXPECT_EQ(e.edit(ACC_VKEY_FILE_CONVERT, "x.ini"), 0);
    alarm(0);
}

TEST(conversion, needs_a_free_name_in_the_common_directory) {
    Editing e(open_file);
    const std::string before = e.text();
    fs::remove_all(e.ws.common);
    EXPECT_EQ(convert(e, one_title), 0);
    EXPECT_EQ(e.host.message(), failed);
    EXPECT_EQ(e.text(), before);
    EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 1); // set once the old file has been read
    fs::create_directory(e.ws.common);
    write_file(e.ws.common / "@0000000.kig", "taken"); // not listed
    EXPECT_EQ(convert(e, one_title), 1);
    EXPECT_EQ(files_in(e.ws.common), (std::map<std::string, std::string>{{"@0000000.kig", "taken"}}));
}

// The text may end in a line that is no block; what is appended stands before it.
TEST(conversion, appends_behind_the_last_block_of_an_odd_file) {
    for (const char *const tail : {"［unclosed", "remark", "\n\nremark［"}) {
        Editing e(symbol_file("例", block("A", "→\n") + tail));
        EXPECT_EQ(convert(e, one_title), 1) << tail;
        EXPECT_EQ(blocks_of(read_temp()), (Blocks{{"A", to_sjis("→\r\n")}, {"T", to_sjis("★\r\n")}}));
    }
}

} // namespace
