// Who owns a file that somebody else has saved. Needs root, who can make such files.
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "common/save_file.h"
#include "support/children.h"
#include "support/text.h"
#include "support/workspace.h"

namespace {

TEST(SavedFile, keeps_its_group_or_gives_that_of_the_saver_nothing) {
    if (getuid() != 0) GTEST_SKIP() << "only root can give files away";
    const struct {
        const char *saver;
        uid_t uid;
        gid_t gid, also;
        mode_t mode;
        uid_t expected_uid;
        gid_t expected_gid;
        mode_t expected_mode;
    } cases[] = {
        {"root", 0, 0, 0, 02664, 1001, 2000, 02664},
        {"the owner", 1001, 1001, 2000, 0640, 1001, 2000, 0640},
        {"a member of the group", 1002, 1002, 2000, 0660, 1002, 2000, 0660},
        {"a member, and bits beyond permissions", 1002, 1002, 2000, 06770, 1002, 2000, 0770},
        {"somebody else", 1003, 1003, 1003, 0666, 1003, 1003, 0606},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.saver);
        const Workspace ws;
        for (const auto &path : {ws.root, ws.common}) std::filesystem::permissions(path, std::filesystem::perms::all);
        const std::string name = ws.common / "a.kig";
        write_file(name, "old");
        ASSERT_EQ(chown(name.c_str(), 1001, 2000), 0);
        ASSERT_EQ(chmod(name.c_str(), c.mode), 0);
        const auto save = [&](int) {
            const bool changed = setgroups(1, &c.also) == 0 && setgid(c.gid) == 0 && setuid(c.uid) == 0;
            return changed && acc::replace_file(bytes(name), {bytes("new"), 3}) == acc::SaveResult::saved ? 0 : 1;
        };
        EXPECT_EQ(in_children(1, save)[0], 0);
        struct stat saved;
        ASSERT_EQ(stat(name.c_str(), &saved), 0);
        EXPECT_EQ(saved.st_size, 3);
        EXPECT_EQ(saved.st_uid, c.expected_uid);
        EXPECT_EQ(saved.st_gid, c.expected_gid);
        EXPECT_EQ(saved.st_mode & 07777, c.expected_mode);
    }
}

} // namespace
