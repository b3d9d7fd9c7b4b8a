// Who owns a file that somebody else has saved. Needs root, who can make such files.
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "common/save_file.h"
#include "support/text.h"

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
        std::string directory = std::filesystem::temp_directory_path() / "save_owner_XXXXXX";
        ASSERT_NE(mkdtemp(directory.data()), nullptr);
        ASSERT_EQ(chmod(directory.c_str(), 0777), 0);
        const std::string name = directory + "/a.kig";
        std::ofstream(name) << "old";
        ASSERT_EQ(chown(name.c_str(), 1001, 2000), 0);
        ASSERT_EQ(chmod(name.c_str(), c.mode), 0);
        const pid_t child = fork();
        if (child == 0) {
            const bool changed = setgroups(1, &c.also) == 0 && setgid(c.gid) == 0 && setuid(c.uid) == 0;
            const std::string fresh = "new";
            _exit(changed && acc::replace_file(bytes(name), {bytes(fresh), fresh.size()}) == acc::SaveResult::saved ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        struct stat saved;
        ASSERT_EQ(stat(name.c_str(), &saved), 0);
        EXPECT_EQ(saved.st_size, 3);
        EXPECT_EQ(saved.st_uid, c.expected_uid);
        EXPECT_EQ(saved.st_gid, c.expected_gid);
        EXPECT_EQ(saved.st_mode & 07777, c.expected_mode);
        std::filesystem::remove_all(directory);
    }
}

} // namespace
