// What a save and a rename refuse to write, because an open would not find in it what the
// index has. Only files that a person or another program wrote come to this.
#include <gtest/gtest.h>

#include "support/editing.h"
#include "support/text.h"

namespace {

const char *const writing_failed = "ファイルの書き込みに失敗しました。";

std::string with(std::string disk, const std::string &old, const std::string &fresh) {
    return disk.replace(disk.find(old), old.size(), fresh);
}

TEST(save, writes_nothing_that_would_not_be_read_back) {
    using namespace std::string_literals;
    const std::string abc = symbol_file("例", block("A", "あ★い\n") + block("B", "☆\n") + block("C", "←\n"));
    const std::string star = to_euc("★");
    std::string cr_lf;
    for (const char byte : abc) cr_lf += byte == '\n' ? "\r\n"s : std::string(1, byte);
    const struct {
        const char *name;
        std::string disk;
        bool saved;
    } cases[] = {
        {"a lone CR shifts the block", with(abc, star, "\rx"), false},
        {"a last block ends in a lone CR", abc.substr(0, abc.find(to_euc("［B］"))).substr(0, 80) + "\r", false},
        {"CR LF throughout", cr_lf, false},
        {"bytes behind a NUL", with(abc, star, "\0\0"s), false},
        {"a NUL at the very end", abc + '\0', true},
        {"single bytes that make a symbol no code has", with(abc, star, "\x85\x7F"), false},
        {"a remark between blocks", with(abc, to_euc("［B］"), "remark\n" + to_euc("［B］")), true},
        {"half a bracket behind the last block", abc + to_euc("［D"), true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Editing e(c.disk);
        const std::size_t opened = read_temp().records.size();
        ASSERT_EQ(e.edit(ACC_VKEY_TITLE_ADD, "Z"), 1) << e.host.message();
        EXPECT_EQ(e.save("例"), c.saved ? 1 : 0);
        EXPECT_EQ(e.host.message(), c.saved ? "" : writing_failed);
        EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), c.saved ? 2 : 1);
        EXPECT_EQ(read_file(e.ws.common / "a.kig") == c.disk, !c.saved);
        EXPECT_EQ(read_temp().records.size(), opened + 1);
        if (!c.saved) continue;
        const Blocks edited = blocks_of(read_temp());
        e.host.close();
        ASSERT_EQ(e.host.open("例"), 1);
        EXPECT_EQ(blocks_of(read_temp()), edited);
    }
}

// A scan reads the first 1023 bytes of a file.
TEST(save, writes_no_title_that_no_scan_would_find) {
    Editing e(with(worked_example(), to_euc("名称"), std::string(900, 'x') + "\n" + to_euc("名称")));
    EXPECT_EQ(e.save(std::string(200, 'T')), 0);
    EXPECT_EQ(e.host.message(), writing_failed);
    EXPECT_EQ(e.save("短"), 1) << e.host.message();
}

TEST(rename, drops_no_line_that_was_meant_as_a_title) {
    const std::string file = symbol_file("例", block("A", "→\n") + block("B", "☆\n") + block("C", "←\n"));
    const std::string b_line = to_euc("［B］\n"), c_line = to_euc("［C］\n");
    const struct {
        const char *name;
        std::string disk;
        int expected;
    } cases[] = {
        {"as written", file, 1},
        {"a remark without a bracket", with(file, b_line, "remark\n" + b_line), 1},
        {"a last title without its closing bracket", with(file, c_line, to_euc("［C\n")), 2},
        {"a title whose start line is missing", with(file, b_line + hyphens + "\n", b_line + c_line), 2},
        {"a title behind a lone CR", with(file, "-\n" + c_line, "-\r" + c_line), 2},
        {"a title that swallows the next one", with(file, b_line, to_euc("［B\n")), 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Editing e(c.disk);
        e.focus("例／A");
        const Temp before = read_temp();
        EXPECT_EQ(e.edit(ACC_VKEY_TITLE_CHANGE, "X"), c.expected);
        EXPECT_EQ(e.host.message(), c.expected == 1 ? "" : writing_failed);
        const Temp after = read_temp();
        EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), c.expected == 1 ? 1 : 2);
        EXPECT_EQ(after.text == before.text, c.expected != 1);
        ASSERT_EQ(after.records.size(), before.records.size());
        EXPECT_EQ(to_utf8(text(after.records[1].ucPath)), c.expected == 1 ? "例／X" : "例／A");
        for (std::size_t i = 2; i < after.records.size(); ++i) {
            const TempInfo &is = after.records[i], &was = before.records[i];
            EXPECT_EQ(text(is.ucPath), text(was.ucPath));
            EXPECT_EQ(after.text.substr(is.ulDataPos, 2 * is.ulDataLen), before.text.substr(was.ulDataPos, 2 * was.ulDataLen));
        }
    }
}

} // namespace
