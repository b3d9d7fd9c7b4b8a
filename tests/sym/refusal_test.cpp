// What every command refuses: its result, its message, and that nothing else happens.
#include <gtest/gtest.h>

#include <functional>

#include "support/editing.h"
#include "support/text.h"

namespace {

const char *const null_memory = "メモリが割り当てられていません。";
const char *const argument = "引数エラー";
const char *const no_such_file = "記号ファイルが存在しません。";
const char *const input_error = "入力エラーです。";
const char *const exists = "記号タイトルが既に存在します。";
const char *const not_open = "ファイルが開いていません。";
const char *const opening_failed = "ファイルのオープンに失敗しました。";
const char *const conversion = "記号ファイルのコンバートに失敗しました。";
const char *const parent_stays = "親タイトルは削除できません。";
const char *const parent_bare = "親タイトルには登録できません。";

constexpr int open_file = ACC_VKEY_FILE_OPEN, close_file = ACC_VKEY_FILE_CLOSE, save = ACC_VKEY_FILE_SAVE, create = ACC_VKEY_FILE_NEW,
              remove_file = ACC_VKEY_FILE_DELETE, check = ACC_VKEY_FILE_CHECK, titles = ACC_VKEY_FILE_TITLES,
              convert = ACC_VKEY_FILE_CONVERT, position = ACC_VKEY_SET_POSITION, geometry = ACC_VKEY_SET_ATTRIBUTE,
              add = ACC_VKEY_TITLE_ADD, change = ACC_VKEY_TITLE_CHANGE, remove_title = ACC_VKEY_TITLE_DELETE,
              symbols = ACC_VKEY_DATA_REGISTER;

using Step = std::function<void(Editing &)>;

Step null(int number) {
    return [=](Editing &e) { e.host.null_string(number); };
}
Step bytes(int number, const std::string &bytes) {
    return [=](Editing &e) { e.host.string(number, bytes); };
}
/** A user directory of that many bytes, the "/" at its end included. */
Step user_directory_of(std::size_t length) {
    return [=](Editing &e) { e.host.string(2, e.ws.root.string() + '/' + std::string(length - e.ws.root.string().size() - 2, 'x')); };
}
/** Makes list 2 the current one and shows that path in it. */
Step list2(const std::string &utf8_path) {
    return [=](Editing &e) {
        const std::string path = to_sjis(utf8_path);
        std::copy_n(path.c_str(), path.size() + 1, e.host.list(2).lpchLBLevel);
        e.host.record.wCurrentList = 2;
    };
}

constexpr bool with_file = true, without = false;

struct Row {
    int command;
    bool open; // is a file open?
    std::string operand;
    int result;
    const char *message;
    Step prepare = {};
};

void expect_refused(const Row &row) {
    SCOPED_TRACE(testing::Message() << "command " << row.command << ' ' << row.operand << (row.open ? "" : ", no file open"));
    Editing e(worked_example());
    if (!row.open) e.host.close();
    e.host.string(1, to_sjis(row.operand));
    if (row.prepare) row.prepare(e);
    e.host.record.wDataStatus = 3;
    const State before(e);
    EXPECT_EQ(e.host.run(row.command), row.result);
    EXPECT_EQ(e.host.message(), row.message);
    EXPECT_EQ(State(e) == before, row.result != 1);
    EXPECT_EQ(e.ws.temp_files().size(), g_tAccFile[1].hFile != 0 ? 1u : 0u);
}

TEST(refused_command, says_why_and_leaves_everything_as_it_was) {
    const Row rows[] = {
        {open_file, with_file, "例", 0, "ファイルが開いています。"},
        {open_file, without, "無", 0, no_such_file},
        {open_file, without, "例", 0, argument, bytes(2, "")},
        {open_file, without, "例", 0, no_such_file, bytes(4, "")},
        {open_file, without, "例", 1, "", user_directory_of(1023)},
        {open_file, without, "例", 0, argument, user_directory_of(1024)},
        {open_file, without, "例", 0, opening_failed, [](Editing &) { setenv("TMPDIR", "/none", 1); }},
        {close_file, without, "", 0, not_open},
        {save, without, "例", 0, opening_failed},
        {save, with_file, "標準の記号", 0, "標準の記号での保存はできません。"},
        {save, with_file, "例", 0, argument, bytes(2, "")},
        {save, with_file, "A／B", 0, input_error},
        {save, with_file, "", 0, input_error},
        {create, without, "例", 0, "記号ファイルが既に存在します。"},
        {create, without, "", 1, not_open}, // the message of the close that comes first
        {create, without, std::string(255, 'a'), 1, not_open},
        {create, without, std::string(256, 'a'), 0, input_error},
        {create, without, "A／B", 0, input_error},
        {create, without, "［", 0, input_error},
        {create, without, "A\n", 0, input_error},
        {remove_file, with_file, "標準の記号", 0, "標準の記号は削除できません。"},
        {remove_file, with_file, "無", 0, no_such_file},
        {remove_file, with_file, "例", 0, argument, bytes(2, "")},
        {remove_file, with_file, "例", 1, "", bytes(2, "x")}, // it need not exist
        {check, with_file, "例外", 0, no_such_file},
        {add, with_file, "A", 2, input_error, list2("例／無")},
        {add, without, "A", 2, input_error},
        {change, with_file, "A", 2, exists, list2("例／無")},
        {change, with_file, "A", 2, input_error, list2("例")}, // list 1 renames the file
        {change, without, "A", 2, not_open},
        {change, without, "", 2, input_error},
        {remove_title, with_file, "", 2, parent_stays},
        {remove_title, with_file, "", 2, parent_stays, list2("例")},
        {remove_title, with_file, "", 2, exists, list2("例／無")},
        {remove_title, without, "", 2, parent_stays},
        {symbols, with_file, "☆", 2, parent_bare},
        {symbols, with_file, "☆", 2, parent_bare, list2("例")},
        {symbols, with_file, "☆", 2, exists, list2("例／無")},
        {symbols, without, "☆", 2, parent_bare},
        {convert, without, "x.ini", 0, not_open},
    };
    for (const Row &row : rows) expect_refused(row);
}

TEST(refused_command, names_a_string_that_is_null) {
    const std::pair<int, int> strings[] = {{open_file, 1}, {open_file, 2}, {open_file, 3},   {open_file, 4}, {save, 1},
                                           {save, 2},      {create, 1},    {remove_file, 1}, {check, 1},     {position, 1},
                                           {geometry, 1},  {geometry, 2},  {geometry, 3},    {geometry, 4},  {convert, 1}};
    for (const auto &[command, number] : strings) {
        expect_refused({command, command != open_file && command != create, "例", 0, null_memory, null(number)});
    }
    expect_refused({titles, with_file, "", 0, "", null(1)});
    expect_refused({change, with_file, "", 2, null_memory, null(1)}); // the file's own title
    for (const int command : {add, change, symbols}) {
        expect_refused({command, with_file, "", 2, null_memory, [](Editing &e) {
                            e.focus("例／数学");
                            e.host.null_string(1);
                        }});
    }
}

TEST(refused_command, takes_certain_names_of_old_files) { // and then finds no such file
    const std::vector<std::string> taken = {"old.ini",     "OLD.INI",          "old.ini2",
                                            "noextension", "C:\\dir\\old.ini", std::string(252, 'x') + ".ini"};
    const std::vector<std::string> refused = {"a.b.ini",
                                              "dir/old.ini",
                                              "old.txt",
                                              "old.in",
                                              " old.ini",
                                              "　old.ini",
                                              "C:\\dir\\",
                                              "",
                                              std::string(253, 'x') + ".ini",
                                              std::string(800, 'x')};
    for (const std::string &name : taken) expect_refused({convert, with_file, name, 0, conversion});
    for (const std::string &name : refused) expect_refused({convert, with_file, name, 0, no_such_file});
}

} // namespace
