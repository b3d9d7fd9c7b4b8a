// The editing commands: what they do to the text, and what they refuse.
#include <gtest/gtest.h>

#include "support/editing.h"
#include "support/text.h"

namespace {

constexpr int add = ACC_VKEY_TITLE_ADD, change = ACC_VKEY_TITLE_CHANGE, remove_title = ACC_VKEY_TITLE_DELETE,
              symbols = ACC_VKEY_DATA_REGISTER;

const char *const exists = "記号タイトルが既に存在します。";
const char *const input_error = "入力エラーです。";

/** Text form of a file: head and blocks. */
std::string head(const std::string &title) {
    return "〈記号〉\r\n名称=" + title + "\r\n";
}
const auto b = [](const std::string &path, const std::string &data = "") { return text_block(path, data); };
const std::string line = hyphens + "\r\n";

TEST(edits, change_just_what_they_name) {
    const std::string tree = block("A", "→\n") + block("A／X", "←☆★○●◎◇\n") + block("A／X／P") + block("B", "↑\n");
    const std::string a = b("A", "→\r\n") + b("A／X", "←☆★○●◎◇\r\n") + b("A／X／P");
    const struct {
        const char *name;
        std::string blocks; // disk form
        const char *focus;
        int command;
        std::string operand;
        std::string expected; // text form
        const char *shown;    // the current list afterwards
    } cases[] = {
        {"add to a file without blocks", "", "例", add, "A", b("A"), "1: 例／A<2>"},
        {"add at the top", tree, "例", add, "C", a + b("B", "↑\r\n") + b("C"), "1: 例／A<3> 2: 例／B<2> 3: 例／C<2>"},
        {"add behind grandchildren", tree, "例／A", add, "Y", a + b("A／Y") + b("B", "↑\r\n"), "1: 例／A／X<3> 2: 例／A／Y<2> 1: →<4>"},
        {"rename with all below", tree, "例／A", change, "長い名",
         b("長い名", "→\r\n") + b("長い名／X", "←☆★○●◎◇\r\n") + b("長い名／X／P") + b("B", "↑\r\n"), "1: 例／長い名／X<3> 1: →<4>"},
        {"rename a title with the bytes of a separator", block("A") + block("A／メ^"), "例／A／メ^", change, "B", b("A") + b("A／B"), ""},
        {"delete with all below", tree, "例／A", remove_title, "", b("B", "↑\r\n"), "1: 例／B<2>"},
        {"delete what lies below a title", tree, "例／A／X", remove_title, "", b("A", "→\r\n") + b("B", "↑\r\n"), "1: →<4>"},
        {"symbols", tree, "例／B", symbols, "ab--\r\n☆★", a + b("B", "ab--\r\n☆★"), "1: ab<4> 2: --<4> 3: ☆<4> 4: ★<4>"},
        {"no symbols", tree, "例／B", symbols, "", a + b("B"), ""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Editing e(symbol_file("例", c.blocks));
        e.focus(c.focus);
        EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 2);
        const std::string old_temp = text(g_tAccFile[1].ucFullName);
        e.host.record.wDataStatus = 1;
        EXPECT_EQ(e.edit(c.command, c.operand), 1) << e.host.message();
        EXPECT_EQ(e.host.record.wDataStatus, 1);
        EXPECT_EQ(e.text(), head("例") + c.expected);
        blocks_of(read_temp());
        EXPECT_EQ(e.host.shown(e.host.record.wCurrentList), c.shown);
        EXPECT_NE(text(g_tAccFile[1].ucFullName), old_temp);
        EXPECT_EQ(e.ws.temp_files().size(), 1u);
        EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 1);
    }
}

// Block numbers go on from the block before; those behind keep theirs, and their levels until lines are written anew.
TEST(edits, describe_the_blocks_after_them) {
    Editing e(symbol_file("例", block("A", "→\n") + block("A／X") + "［x／y］" + block("B")));
    e.focus("例／A／X");
    EXPECT_EQ(e.edit(add, "P"), 1);
    const auto numbers = [] {
        std::string all;
        for (const TempInfo &r : read_temp().records) all += std::to_string(r.usBlockNo) + '.' + std::to_string(r.usLevel) + ' ';
        return all;
    };
    EXPECT_EQ(numbers(), "1.1 2.2 3.3 4.4 4.3 ");
    e.focus("例");
    EXPECT_EQ(e.edit(change, "新しい題"), 1) << e.host.message();
    EXPECT_EQ(e.host.shown(1), "1: 新しい題／A<3>");
    EXPECT_EQ(to_utf8(text(e.host.list(1).lpchLBLevel)), "新しい題");
    EXPECT_EQ(e.edit(change, "新しい題"), 1); // the same again: nothing to do
    EXPECT_EQ(e.host.message(), exists);
    EXPECT_EQ(e.edit(add, "C"), 1);
    EXPECT_EQ(e.text(), head("新しい題") + b("A", "→\r\n") + b("A／X") + b("A／X／P") + "［x／y］" + b("B") + b("C"));
    e.focus("新しい題／A／X");
    EXPECT_EQ(e.edit(change, "Y"), 1);
    EXPECT_EQ(to_utf8(text(e.host.list(3).lpchLBLevel)), "新しい題／A／Y");
    EXPECT_EQ(numbers(), "1.1 2.2 3.3 4.4 4.2 5.2 ");
}

TEST(edits, refuse_what_they_cannot_keep) {
    const std::string a255(255, 'a'), a256(256, 'a'), a257(257, 'a'), h38(38, '-'), h40(40, '-');
    const std::string long_file = block(a255) + block(a255 + "／" + std::string(240, 'b'));
    std::string lines; // 32766 bytes
    while (lines.size() < 32766) lines += "\r\n";
    const struct {
        const char *name;
        std::string blocks, focus;
        int command;
        std::string operand; // Shift_JIS
        const char *message; // empty: accepted
    } cases[] = {
        {"title of 256 bytes", block("A"), "例", add, a256, ""},
        {"title of 257 bytes", block("A"), "例", add, a257, input_error},
        {"path of 514 bytes", long_file, "例／" + a255, add, std::string(253, 'c'), ""},
        {"path of 515 bytes", long_file, "例／" + a255, add, std::string(254, 'c'), input_error},
        {"path below grows to 515", long_file, "例／" + a255, change, std::string(255, 'd') + "eeeeeeeeeeeeeee", input_error},
        {"own path grows to 515", long_file, "例／" + a255 + "／" + std::string(240, 'b'), change, std::string(254, 'd'), input_error},
        {"file title carries a path to 514", long_file, "例", change, std::string(15, 'f'), ""},
        {"file title carries a path past it", long_file, "例", change, std::string(16, 'f'), input_error},
        {"file title of 256 bytes", "", "例", change, a256, input_error},
        {"separator", block("A"), "例", add, to_sjis("B／C"), input_error},
        {"opening bracket", block("A"), "例／A", change, to_sjis("B［"), input_error},
        {"closing bracket", block("A"), "例", change, to_sjis("］"), input_error},
        {"second bytes that look like a separator", block("A"), "例", add, to_sjis("メ^メmメn"), ""},
        {"control character", block("A"), "例", add, "B\t", input_error},
        {"delete character", block("A"), "例", add, "B\x7F", input_error},
        {"lead byte at the end", block("A"), "例", add, "B\x81", input_error},
        {"code that EUC-JP cannot hold", block("A"), "例", add, "\xF0\x40", input_error},
        {"byte that EUC-JP takes for a lead byte", block("A"), "例", add,
         "\xFD"
         "BB",
         input_error},
        {"half-width katakana", block("A"), "例", add, "\xB1\xB2", ""},
        {"title that exists", block("A") + block("B"), "例", add, "A", exists},
        {"rename to a sibling", block("A") + block("B"), "例／A", change, "B", exists},
        {"odd line", block("A"), "例／A", symbols, "abc", input_error},
        {"odd line before an even one", block("A"), "例／A", symbols, "abc\r\nab", input_error},
        {"LF alone", block("A"), "例／A", symbols, to_sjis("☆\n★a"), input_error},
        {"CR alone", block("A"), "例／A", symbols, to_sjis("☆\ra★"), input_error},
        {"symbol that EUC-JP cannot hold", block("A"), "例／A", symbols, "\xF0\x40", input_error},
        {"vendor symbol of row 13", block("A"), "例／A", symbols, "\x87\x40", ""},
        {"hyphens that read as an end line", block("A"), "例／A", symbols, h40 + "\r\n", input_error},
        {"38 hyphens on a line", block("A"), "例／A", symbols, h38 + "\r\n", ""},
        {"40 hyphens from an odd place on", block("A"), "例／A", symbols, "a" + h40 + "a\r\n", ""},
        {"41 hyphens from an odd place on", block("A"), "例／A", symbols, "a" + h40 + "-\r\n", input_error},
        {"hyphens that the end line would join", block("A"), "例／A", symbols, "ab--", input_error},
        {"one hyphen before the end line", block("A"), "例／A", symbols, "a-", ""},
        {"32766 bytes", block("A"), "例／A", symbols, lines, ""},
        {"32768 bytes", block("A"), "例／A", symbols, lines + "\r\n", input_error},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Editing e(symbol_file("例", c.blocks));
        e.focus(c.focus);
        const State before(e);
        e.host.string(1, c.operand);
        EXPECT_EQ(e.host.run(c.command), *c.message ? 2 : 1);
        EXPECT_EQ(e.host.message(), c.message);
        EXPECT_EQ(State(e) == before, *c.message != 0);
        if (!*c.message) {
            const Blocks blocks = blocks_of(read_temp());
            const std::string title = to_utf8(text(read_temp().records[0].ucTitle));
            EXPECT_EQ(e.save(title), 1);
            e.host.close();
            EXPECT_EQ(e.host.open(title), 1) << e.host.message();
            EXPECT_EQ(blocks_of(read_temp()), blocks);
        }
    }
}

// Whatever else a file holds, an edit of one block changes no byte of another, and none of
// what stands between them.
TEST(edits, keep_every_other_byte_of_an_odd_file) {
    const std::string odd = "intro\r\n［A］ note\r\n" + hyphens + "-\r\n→\r\n--\r\n" + hyphens + "--\r\n\r\n remark\r\n" +
                            "［x］［B］\r\nbefore\r\n" + line + "a\r\nb←\r\n" + line + "blank\r\n\r\n［C］\r\n" + line + "↑";
    const auto disk = [](std::string text) {
        for (std::size_t at; (at = text.find("\r\n")) != std::string::npos;) text.erase(at, 1);
        return text;
    };
    const auto replaced = [](std::string text, const std::string &from, const std::string &to) {
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return text.replace(at, from.size(), to);
    };
    const std::string whole = head("例") + odd + line; // closed by the open
    const struct {
        const char *name, *focus;
        int command;
        const char *operand;
        std::string expected;
    } cases[] = {
        {"symbols of A", "例／A", symbols, "☆", replaced(whole, "→\r\n--\r\n", "☆")},
        {"symbols of B", "例／B", symbols, "☆", replaced(whole, "a\r\nb←\r\n", "☆")},
        {"symbols of C", "例／C", symbols, "☆", replaced(whole, "↑", "☆")},
        {"add below A", "例／A", add, "P", replaced(whole, "\r\n\r\n remark", "\r\n" + b("A／P") + "\r\n remark")},
        {"add at the top", "例", add, "P", whole + b("P")},
        {"delete B", "例／B", remove_title, "", replaced(whole, "［x］［B］\r\nbefore\r\n" + line + "a\r\nb←\r\n" + line, "")},
        {"delete C", "例／C", remove_title, "", replaced(whole, "［C］\r\n" + line + "↑" + line, "")},
        {"file title", "例", change, "題名", replaced(whole, "名称=例", "名称=題名")},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Editing e(to_euc(disk(head("例") + odd)));
        ASSERT_EQ(e.text(), whole);
        e.focus(c.focus);
        EXPECT_EQ(e.edit(c.command, c.operand), 1) << e.host.message();
        EXPECT_EQ(e.text(), c.expected);
        EXPECT_EQ(e.save("別"), 1) << e.host.message();
        EXPECT_EQ(read_file(e.ws.common / "@0000000.kig"),
                  to_euc(disk(replaced(c.expected, c.command == change ? "名称=題名" : "名称=例", "名称=別"))));
    }
}

} // namespace
