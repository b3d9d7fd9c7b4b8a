// Every command that edits, creates, saves, deletes or converts, with each call of the heap
// and of files failing in turn.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "support/editing.h"
#include "support/faults.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

Files files_in(const fs::path &directory) {
    Files files;
    for (const auto &entry : fs::directory_iterator(directory)) files[entry.path().filename()] = read_file(entry.path());
    return files;
}

/** What a failed command must leave alone. */
struct State {
    explicit State(Editing &e) : text(g_tAccFile[1].hFile ? e.text() : ""), files(files_in(e.ws.common)) {
        for (int list = 1; list <= 3; ++list) lists.push_back(e.host.shown(list));
        edited = e.host.run(ACC_VKEY_GET_EDIT);
        current_list = e.host.record.wCurrentList;
    }
    bool operator==(const State &) const = default;
    std::string text;
    Files files;
    std::vector<std::string> lists;
    int edited, current_list;
};

struct Case {
    const char *name;
    int command;
    std::string operand;
    std::set<std::pair<int, std::string>> failures; // result and message
};

const std::string no_temp = "ファイルのオープンに失敗しました。", no_write = "ファイルの書き込みに失敗しました。",
                  no_memory = "メモリの確保に失敗しました。", null_memory = "メモリが割り当てられていません。",
                  no_read = "ファイルの読み込みに失敗しました。", conversion = "記号ファイルのコンバートに失敗しました。";

TEST(failed_edit, leaves_the_open_file_as_it_was) {
    const Case cases[] = {
        {"title add", ACC_VKEY_TITLE_ADD, "Y", {{2, no_temp}, {2, no_write}, {2, no_memory}}},
        {"title rename", ACC_VKEY_TITLE_CHANGE, "Y", {{2, no_temp}, {2, no_write}, {2, no_memory}, {2, null_memory}}},
        {"title delete", ACC_VKEY_TITLE_DELETE, "", {{2, no_temp}, {2, no_write}, {2, no_memory}}},
        {"symbols", ACC_VKEY_DATA_REGISTER, "☆★", {{2, no_temp}, {2, no_write}, {2, no_memory}}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        each_fault([&](Fault &fault) {
            Editing e(symbol_file("例", block("A", "→\n") + block("A／X", "←\n") + block("B", "↑\n")));
            e.focus("例／A");
            const std::size_t descriptors = open_descriptors();
            const State before(e);
            fault.arm();
            const int result = e.edit(c.command, c.operand);
            fault.disarm();
            const std::string message = e.host.message();
            EXPECT_EQ(e.ws.temp_files().size(), fault.fired() && fault.operation() == acc::Operation::remove ? 2u : 1u);
            EXPECT_EQ(open_descriptors(), descriptors);
            if (result == 2) {
                EXPECT_TRUE(c.failures.count({result, message})) << result << ' ' << message;
                EXPECT_EQ(State(e), before);
                EXPECT_EQ(e.edit(c.command, c.operand), 1) << e.host.message(); // the next try succeeds
            } else if (result == 0) {                                           // made, but the lists could not be filled
                EXPECT_EQ(message, no_read);
                EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 1);
            } else {
                EXPECT_EQ(result, 1);
            }
            blocks_of(read_temp());
            EXPECT_EQ(e.save("例"), 1);
        });
    }
}

TEST(failed_file_title, leaves_the_open_file_as_it_was) {
    each_fault([&](Fault &fault) {
        Editing e(symbol_file("例", block("A", "→\n") + block("A／X", "←\n")));
        const State before(e);
        fault.arm();
        const int result = e.edit(ACC_VKEY_TITLE_CHANGE, "題");
        fault.disarm();
        if (result == 2) {
            EXPECT_NE(e.host.message(), "");
            EXPECT_EQ(State(e), before);
        }
        EXPECT_EQ(e.edit(ACC_VKEY_TITLE_CHANGE, "題名"), 1) << e.host.message();
        EXPECT_EQ(e.host.shown(1), "1: 題名／A<3>");
    });
}

TEST(failed_save, keeps_the_old_file) {
    each_fault([&](Fault &fault) {
        Editing e(worked_example());
        e.focus("例／矢印");
        e.edit(ACC_VKEY_DATA_REGISTER, "☆");
        const std::size_t descriptors = open_descriptors();
        const State before(e);
        fault.arm();
        const int result = e.save("例");
        fault.disarm();
        const std::string message = e.host.message();
        const State after(e);
        EXPECT_EQ(after.files.size(), 1u); // nothing stray
        EXPECT_EQ(open_descriptors(), descriptors);
        if (result == 1) {
            EXPECT_EQ(after.edited, 2);
            EXPECT_NE(after.files, before.files);
        } else if (result == -1) {
            EXPECT_EQ(message, "");
            EXPECT_EQ(after, before);
        } else {
            EXPECT_TRUE(message == no_temp || message == no_memory || message == no_read) << message;
            EXPECT_EQ(after, before);
        }
        EXPECT_EQ(e.save("例"), 1);
        EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 2);
    });
}

TEST(failed_save_of_a_new_file, leaves_nothing_behind) {
    each_fault([&](Fault &fault) {
        Editing e(worked_example());
        const Files before = files_in(e.ws.common);
        fault.arm();
        const int result = e.save("新");
        fault.disarm();
        const Files after = files_in(e.ws.common);
        EXPECT_EQ(after.size(), result == 1 ? 2u : 1u);
        EXPECT_EQ(after.at("a.kig"), before.at("a.kig"));
        EXPECT_TRUE(result == 1 || result == -1 || e.host.message() != "");
        EXPECT_EQ(e.save("新"), 1);
        EXPECT_EQ(files_in(e.ws.common).size(), 2u);
        EXPECT_EQ(e.ws.temp_files().size(), fault.fired() && fault.operation() == acc::Operation::remove ? 2u : 1u);
    });
}

TEST(failed_new_file, leaves_no_file_open) {
    each_fault([&](Fault &fault) {
        Editing e(worked_example());
        e.host.close();
        const std::size_t descriptors = open_descriptors();
        fault.arm();
        const int result = e.edit(ACC_VKEY_FILE_NEW, "新");
        fault.disarm();
        if (result != 1) {
            EXPECT_TRUE(result == -1 || e.host.message() == no_temp || e.host.message() == no_write || e.host.message() == no_memory ||
                        e.host.message() == no_read)
                << result << e.host.message();
            EXPECT_EQ(g_tAccFile[1].hFile, 0);
            EXPECT_TRUE(e.ws.temp_files().empty());
            EXPECT_EQ(open_descriptors(), descriptors);
            EXPECT_EQ(e.edit(ACC_VKEY_FILE_NEW, "新"), 1);
        }
        EXPECT_EQ(e.text(), "〈記号〉\r\n名称=新\r\n");
    });
}

TEST(failed_delete, tells_so_or_deletes) {
    each_fault([&](Fault &fault) {
        Editing e(worked_example());
        fault.arm();
        const int result = e.edit(ACC_VKEY_FILE_DELETE, "例");
        fault.disarm();
        const bool kept = fs::exists(e.ws.common / "a.kig");
        EXPECT_EQ(kept, result == 0 || (fault.fired() && fault.operation() == acc::Operation::remove));
        EXPECT_EQ(result == 1, e.host.message().empty());
    });
}

TEST(failed_conversion, leaves_the_open_file_as_it_was) {
    const fs::path directory = fs::current_path();
    each_fault([&](Fault &fault) {
        Editing e(worked_example());
        fs::current_path(e.ws.root);
        write_file("x.ini", to_sjis("［T］\r\nsel1=★\r\n"));
        const std::size_t descriptors = open_descriptors();
        State before(e);
        fault.arm();
        const int result = e.edit(ACC_VKEY_FILE_CONVERT, "x.ini");
        fault.disarm();
        const bool stray = fault.fired() && fault.operation() == acc::Operation::remove;
        EXPECT_EQ(e.ws.temp_files().size() + files_in(e.ws.common).size(), stray ? 3u : 2u);
        EXPECT_EQ(open_descriptors(), descriptors);
        if (result != 1) {
            EXPECT_TRUE(e.host.message() == no_temp || e.host.message() == conversion) << e.host.message();
            State after(e);
            before.edited = after.edited; // set once the old file has been read
            EXPECT_EQ(after, before);
            EXPECT_EQ(e.edit(ACC_VKEY_FILE_CONVERT, "x.ini"), 1);
        }
        EXPECT_EQ(blocks_of(read_temp()).size(), 4u);
        fs::current_path(directory);
    });
}

} // namespace
