// The entry point: unknown commands, messages, and inputs that no command may trust.
#include <gtest/gtest.h>

#include <set>

#include "support/editing.h"
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
    Editing e(worked_example());
    e.host.string(1, to_sjis("例"));
    for (const int list : {0, 11, 65535}) {
        e.host.record.wCurrentList = static_cast<unsigned short>(list);
        const State before(e);
        for (const int code : {8, 12, 13, 14, 42, 50, 55, 67, 132, 136, 137, 138, 142, 143}) {
            EXPECT_EQ(e.host.run(code), 2) << code;
            EXPECT_EQ(e.host.message(), "") << code;
            EXPECT_EQ(State(e), before) << code;
            EXPECT_EQ(e.host.list(1).cchLBItemNumMax, 9) << code;
        }
    }
}

// The texts show where they are raised; kigou's table holds all of them.
TEST(messages, have_none_for_a_number_beyond_the_last) {
    unsigned char buffer[80];
    for (const int index : {-1, 20}) EXPECT_EQ(ACC_Sym_SetErrMsgProc(index, buffer) + buffer[0], 0);
    const char *const statuses[] = {"候補の終わりです。", "候補はありません。", ""};
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(ACC_Sym_SetStsMsgProc(index, buffer), to_sjis(statuses[index]).size());
        EXPECT_EQ(to_utf8(text(buffer)), statuses[index]);
    }
}

} // namespace
