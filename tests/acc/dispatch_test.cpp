// The entry point: unknown commands, messages, and inputs that no command may trust.
#include <gtest/gtest.h>

#include <set>

#include "support/host.h"
#include "support/text.h"

namespace {

const std::set<int> known = {8, 12, 13, 14, 22, 31, 42, 50, 55, 67, 132, 133, 134, 135, 136, 137, 138, 139, 140, 141, 142, 143, 144, 145};

TEST(dispatcher, answers_2_to_unknown_codes_and_empties_the_message) {
    Host host;
    for (int code = 0; code <= 65535; ++code) {
        if (known.count(code)) continue;
        host.record.lpchMessage[0] = 'x';
        host.record.cchMessage = 1;
        host.record.wVkey = static_cast<unsigned short>(code);
        ASSERT_EQ(AccSym(&host.record), 2) << code;
        ASSERT_EQ(host.record.cchMessage + host.record.lpchMessage[0], 0) << code;
    }
}

TEST(dispatcher, leaves_everything_alone_when_the_current_list_is_none) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    Host host(ws);
    ASSERT_EQ(host.open("例"), 1);
    const std::string before = host.shown(1);
    for (const int list : {0, 11, 65535}) {
        for (const int code : {8, 12, 13, 14, 50, 55, 67, 132, 142, 143}) {
            host.record.wCurrentList = static_cast<unsigned short>(list);
            host.record.wDataStatus = 1;
            EXPECT_EQ(host.run(code), 2) << code;
            EXPECT_EQ(host.record.wCurrentList, list) << code;
            EXPECT_EQ(host.record.wDataStatus, 1) << code;
            EXPECT_EQ(host.shown(1), before) << code;
            EXPECT_EQ(host.list(1).cchLBItemNumMax, 9) << code;
        }
    }
}

TEST(dispatcher, refuses_null_strings_with_message_4) {
    Workspace ws;
    ws.put("a.kig", worked_example());
    Host host(ws);
    ASSERT_EQ(host.open("例"), 1);
    const std::pair<int, int> cases[] = {{143, 1}, {142, 1}, {142, 2}, {142, 3}, {142, 4}, {139, 1}};
    for (const auto &[code, string] : cases) {
        for (int number = 1; number <= 4; ++number) host.string(number, "xx");
        host.null_string(string);
        EXPECT_EQ(host.run(code), 0) << code;
        EXPECT_EQ(host.message(), "メモリが割り当てられていません。") << code;
        EXPECT_EQ(host.list(1).cchLBItemNumMax, 9) << code;
    }
}

// The texts themselves show where they are raised; kigou's table holds all twenty.
TEST(messages, fit_their_slots_and_answer_a_wrong_number_with_none) {
    unsigned char buffer[80];
    const std::pair<int, const char *> errors[] = {
        {2, "引数エラー"}, {3, "詳細情報はありません。"}, {16, "記号ファイルのコンバートに失敗しました。"}, {-1, ""}, {20, ""}};
    for (const auto &[index, expected] : errors) {
        EXPECT_EQ(ACC_Sym_SetErrMsgProc(index, buffer), to_sjis(expected).size());
        EXPECT_EQ(to_utf8(text(buffer)), expected);
    }
    const std::pair<int, const char *> statuses[] = {{0, "候補の終わりです。"}, {1, "候補はありません。"}, {2, ""}};
    for (const auto &[index, expected] : statuses) {
        EXPECT_EQ(ACC_Sym_SetStsMsgProc(index, buffer), to_sjis(expected).size());
        EXPECT_EQ(to_utf8(text(buffer)), expected);
    }
}

} // namespace
