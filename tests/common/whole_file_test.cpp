#include "common/whole_file.h"

#include <gtest/gtest.h>

#include <fstream>

#include "common/faults.h"
#include "common/stream.h"
#include "support/text.h"
#include "support/workspace.h"

namespace {

using acc::Operation;
using Result = acc::WholeFile::Result;

bool grown;

/** The file grows once, when its size has been looked at. */
bool grow(Operation operation) {
    if (operation == Operation::read && !std::exchange(grown, true)) {
        std::ofstream("a", std::ios::app) << std::string(5000, 'b');
    }
    return false;
}

TEST(WholeFile, is_read_from_where_the_handle_stands_to_its_end) {
    const Workspace ws;
    const struct {
        const char *what;
        std::size_t bytes;
        int from;
        unsigned most;
        bool (*hook)(Operation);
        Result result;
        std::size_t read;
    } cases[] = {
        {"empty", 0, 0, 10, nullptr, Result::read, 0},
        {"all of it", 10, 0, 10, nullptr, Result::read, 10},
        {"the rest", 10, 7, 10, nullptr, Result::read, 3},
        {"one byte too many", 11, 0, 10, nullptr, Result::too_large, 0},
        {"one that grows", 10, 0, 9000, grow, Result::read, 5010},
        {"one that grows too much", 10, 0, 5009, grow, Result::too_large, 0},
        {"no memory", 10, 0, 10, [](Operation o) { return o == Operation::heap; }, Result::no_memory, 0},
        {"a read that fails", 10, 0, 10, [](Operation o) { return o == Operation::read; }, Result::failed, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        write_file("a", std::string(c.bytes, 'a'));
        const acc::OpenFile file(CM_open(bytes("a"), "rb"));
        ASSERT_EQ(CM_seek(file.handle(), c.from, 0), 0);
        grown = false;
        acc::set_fault_hook(c.hook);
        const acc::WholeFile whole = acc::read_to_end(file.handle(), c.most);
        acc::set_fault_hook(nullptr);
        EXPECT_EQ(whole.result, c.result);
        EXPECT_EQ(whole.length, c.read);
        EXPECT_TRUE(!whole || whole.bytes[c.read] == 0);
    }
}

} // namespace
