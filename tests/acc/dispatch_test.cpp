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

TEST(messages, are_the_fixed_texts) {
    const char *const errors[] = {"記号ファイルが存在しません。",
                                  "ファイルのオープンに失敗しました。",
                                  "引数エラー",
                                  "詳細情報はありません。",
                                  "メモリが割り当てられていません。",
                                  "ファイルが開いています。",
                                  "記号ファイルではありません。",
                                  "ファイルの読み込みに失敗しました。",
                                  "ファイルの書き込みに失敗しました。",
                                  "リストボックスのメモリが足りません。",
                                  "ファイルが開いていません。",
                                  "メモリの確保に失敗しました。",
                                  "記号タイトルが既に存在します。",
                                  "入力エラーです。",
                                  "親タイトルは削除できません。",
                                  "親タイトルには登録できません。",
                                  "記号ファイルのコンバートに失敗しました。",
                                  "標準の記号での保存はできません。",
                                  "記号ファイルが既に存在します。",
                                  "標準の記号は削除できません。"};
    unsigned char buffer[80];
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(ACC_Sym_SetErrMsgProc(i, buffer), to_sjis(errors[i]).size());
        EXPECT_EQ(to_utf8(text(buffer)), errors[i]);
    }
    EXPECT_EQ(ACC_Sym_SetStsMsgProc(0, buffer), 18);
    EXPECT_EQ(to_utf8(text(buffer)), "候補の終わりです。");
    EXPECT_EQ(ACC_Sym_SetStsMsgProc(1, buffer), 18);
    EXPECT_EQ(to_utf8(text(buffer)), "候補はありません。");
    for (const int index : {-1, 20}) {
        EXPECT_EQ(ACC_Sym_SetErrMsgProc(index, buffer), 0);
        EXPECT_EQ(buffer[0], 0);
    }
}

} // namespace
