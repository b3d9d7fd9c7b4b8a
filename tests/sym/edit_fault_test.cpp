// Every command that opens, edits, creates, saves, deletes or converts, with each call of the heap
// and of files failing in turn.
#include <gtest/gtest.h>

#include <set>

#include "support/editing.h"
#include "support/faults.h"
#include "support/text.h"

namespace {

using Outcomes = std::set<std::pair<int, std::string>>; // results and messages

const std::string no_temp = "ファイルのオープンに失敗しました。", no_write = "ファイルの書き込みに失敗しました。",
                  no_memory = "メモリの確保に失敗しました。", null_memory = "メモリが割り当てられていません。",
                  no_read = "ファイルの読み込みに失敗しました。", no_file = "記号ファイルが存在しません。",
                  not_symbols = "記号ファイルではありません。", of_the_close = "ファイルが開いていません。",
                  conversion = "記号ファイルのコンバートに失敗しました。";

TEST(failed_command, leaves_everything_as_it_was_and_succeeds_when_it_is_tried_again) {
    const Outcomes open = {{0, no_file}, {0, no_temp}, {0, no_write}, {0, no_memory}, {0, no_read}, {0, not_symbols}};
    const Outcomes edit = {{2, no_temp}, {2, no_write}, {2, no_memory}};
    const Outcomes rename = {{2, no_temp}, {2, no_write}, {2, no_memory}, {2, null_memory}};
    const Outcomes save = {{-1, ""}, {0, no_temp}, {0, no_memory}, {0, no_read}};
    const Outcomes save_new = {{-1, ""}, {0, no_temp}, {0, no_memory}, {0, no_read}, {0, no_write}};
    const Outcomes create = {{-1, of_the_close}, {0, no_temp}, {0, no_write}, {0, no_memory}, {0, no_read}};
    const struct {
        const char *name;
        int command;
        const char *operand, *focus; // focus null: no file is open
        Outcomes failures;
        int more_files = 0;              // that success leaves, temp files and symbol files together
        bool may_take_the_title = false; // of the operand although it fails
    } cases[] = {
        {"open", ACC_VKEY_FILE_OPEN, "例", nullptr, open, 1},
        {"title add", ACC_VKEY_TITLE_ADD, "Y", "例／A", edit},
        {"title rename", ACC_VKEY_TITLE_CHANGE, "Y", "例／A", rename},
        {"file title", ACC_VKEY_TITLE_CHANGE, "題", "例", edit},
        {"title delete", ACC_VKEY_TITLE_DELETE, "", "例／A", edit},
        {"symbols", ACC_VKEY_DATA_REGISTER, "☆★", "例／A", edit},
        {"save", ACC_VKEY_FILE_SAVE, "例", "例／B", save},
        {"save of a new file", ACC_VKEY_FILE_SAVE, "新", "例", save_new, 1, true},
        {"new file", ACC_VKEY_FILE_NEW, "新", nullptr, create, 1},
        {"delete", ACC_VKEY_FILE_DELETE, "例", "例", {{0, no_file}, {0, no_read}}, -1},
        {"conversion", ACC_VKEY_FILE_CONVERT, "x.ini", "例", {{0, no_temp}, {0, conversion}}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        each_fault([&](Fault &fault) {
            Editing e(symbol_file("例", block("A", "→\n") + block("A／X", "←\n") + block("B", "↑\n")));
            write_file("x.ini", to_sjis("［T］\r\nsel1=★\r\n"));
            c.focus ? e.focus(c.focus) : void(e.host.close());
            if (c.command == ACC_VKEY_FILE_SAVE) e.edit(ACC_VKEY_TITLE_ADD, "Z");
            const auto files = [&] { return static_cast<int>(e.ws.temp_files().size() + files_in(e.ws.common).size()); };
            const int files_before = files();
            const std::size_t descriptors = open_descriptors();
            State before(e);

            fault.arm();
            const int result = e.edit(c.command, c.operand);
            fault.disarm();
            const std::string message = e.host.message();
            const bool failed = c.failures.contains({result, message});
            const bool stray = fault.fired() && fault.operation() == acc::Operation::remove;
            EXPECT_EQ(files(), files_before + (failed ? 0 : c.more_files) + stray);
            EXPECT_EQ(open_descriptors(), descriptors + (!failed && !c.focus));
            const State after(e);
            if (failed) {
                if (c.command == ACC_VKEY_FILE_CONVERT) before.edited = after.edited; // set once the old file has been read
                EXPECT_TRUE(c.may_take_the_title ? after.files == before.files : after == before);
                EXPECT_EQ(e.edit(c.command, c.operand), 1) << e.host.message();
            } else {
                EXPECT_TRUE(result == 1 || message == no_read) << result << message; // made, but the lists could not be filled
                before.edited = after.edited;                                        // the flag alone is no success
                EXPECT_TRUE(after != before || stray);
            }
            blocks_of(read_temp());
            EXPECT_EQ(e.save(c.command == ACC_VKEY_FILE_NEW ? "新" : "例"), 1);
            EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 2);
        });
    }
}

} // namespace
