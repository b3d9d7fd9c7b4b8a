// Old-format files against the library's own conversion.
#include "picker/old_format.h"

#include <gtest/gtest.h>

#include "accsym.h"
#include "fuzz/odd_files.h"
#include "picker/session.h"
#include "picker/set_text.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

/** What the library makes of old.ini in the current directory; empty when it refuses. */
std::vector<std::pair<Sjis, Sjis>> converted(const Workspace &workspace, const Title &file) {
    const Directories directories{workspace.program, workspace.common, workspace.user};
    Session session(directories);
    session.create(file);
    Accdata record{};
    unsigned char name[] = "old.ini", message[ACC_SIZE_MESSAGE], status[1];
    record.wVkey = ACC_VKEY_FILE_CONVERT;
    record.lpchString1 = name;
    record.lpchMessage = message;
    record.lpchStatus = status;
    std::vector<std::pair<Sjis, Sjis>> blocks;
    if (AccSym(&record) != ACC_RET_OK) return blocks;
    session.save(file);
    const Snapshot snapshot(workspace.common / "@0000000.kig");
    for (std::size_t i = 1; i < snapshot.size(); ++i) {
        const auto data = snapshot.data(i);
        blocks.emplace_back(snapshot.title(i).sjis, Sjis(data.begin(), data.end()));
    }
    return blocks;
}

TEST(old_format, is_read_as_the_library_converts_it) {
    const Title file = typed_title("新");
    std::size_t taken = 0, refused = 0;
    for (std::uint64_t i = 0; i < 500; ++i) {
        Choice choice(10, i);
        const std::string bytes = OddFiles(choice).old_file();
        const Workspace workspace;
        write_file("old.ini", bytes);
        const OldFile old = read_old_file(Sjis(bytes.begin(), bytes.end()));
        const auto expected = converted(workspace, file);
        std::vector<std::pair<Sjis, Sjis>> blocks;
        for (const OldTitle &title : old.titles) {
            if (old.fatal.empty()) blocks.emplace_back(joined(file, title.title).sjis, title.data);
        }
        EXPECT_EQ(blocks, expected) << "old file " << i << (old.fatal.empty() ? "" : ": " + old.fatal.front().reason);
        (expected.empty() ? refused : taken) += 1;
    }
    EXPECT_GT(taken, 50U);
    EXPECT_GT(refused, 50U);
}

} // namespace
} // namespace kigou
