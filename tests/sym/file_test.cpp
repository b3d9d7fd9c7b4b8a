// Creating, saving and deleting symbol files.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "support/editing.h"
#include "support/faults.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

constexpr int new_file = ACC_VKEY_FILE_NEW, delete_file = ACC_VKEY_FILE_DELETE;
const char *const exists = "記号タイトルが既に存在します。";
const char *const opening_failed = "ファイルのオープンに失敗しました。";

std::vector<std::string> names_in(const fs::path &directory) {
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(directory)) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

using Names = std::vector<std::string>;

TEST(new_file, lies_in_the_temp_file_until_it_is_saved) {
    Editing e(worked_example());
    EXPECT_EQ(e.edit(new_file, "新"), 1);
    EXPECT_EQ(e.host.message(), "");
    EXPECT_EQ(e.text(), "〈記号〉\r\n名称=新\r\n");
    EXPECT_EQ(e.host.shown(1), "");
    EXPECT_EQ(to_utf8(text(e.host.list(1).lpchLBLevel)), "新");
    EXPECT_EQ(e.host.record.wCurrentList, 1);
    EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 1);
    EXPECT_EQ(names_in(e.ws.common), Names{"a.kig"});
    EXPECT_EQ(e.ws.temp_files().size(), 1u);

    EXPECT_EQ(e.edit(ACC_VKEY_TITLE_ADD, "矢印"), 1);
    EXPECT_EQ(e.host.shown(1), "1: 新／矢印<2>");
    EXPECT_EQ(e.save("新"), 1);
    EXPECT_EQ(e.host.message(), exists); // the title was the file's already
    EXPECT_EQ(read_file(e.ws.common / "@0000000.kig"), symbol_file("新", block("矢印")));
    EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 2);

    EXPECT_EQ(e.edit(new_file, "新"), 0);
    EXPECT_EQ(e.host.message(), "記号ファイルが既に存在します。");
    EXPECT_EQ(e.host.close(), 0); // the open file was closed first
    EXPECT_EQ(e.edit(new_file, "もう一つ"), 1);
    EXPECT_EQ(e.host.message(), "ファイルが開いていません。"); // of the close
}

TEST(new_file, takes_the_titles_that_a_file_can_bear) {
    const std::pair<std::string, bool> cases[] = {
        {"", true}, {std::string(255, 'a'), true}, {std::string(256, 'a'), false}, {"A／B", false}, {"［", false}, {"A\n", false}};
    for (const auto &[title, taken] : cases) {
        Editing e(worked_example());
        EXPECT_EQ(e.edit(new_file, title), taken ? 1 : 0) << title;
        EXPECT_EQ(e.host.message(), taken ? "" : "入力エラーです。") << title;
        EXPECT_EQ(g_tAccFile[1].hFile != 0, taken) << title;
    }
    Editing e(worked_example());
    ASSERT_EQ(e.edit(new_file, ""), 1);
    EXPECT_EQ(e.save(""), 0); // a file on disk has a title
    EXPECT_EQ(e.host.message(), "入力エラーです。");
    EXPECT_EQ(e.edit(ACC_VKEY_TITLE_ADD, "A"), 1);
    EXPECT_EQ(e.save("題"), 1);
    EXPECT_EQ(read_file(e.ws.common / "@0000000.kig"), symbol_file("題", block("A")));
}

TEST(save, writes_over_the_file_of_that_title_and_keeps_the_open_one_s_own) {
    Editing e(worked_example());
    write_file(e.ws.common / "other.kig", symbol_file("他"));
    e.focus("例／矢印");
    EXPECT_EQ(e.edit(ACC_VKEY_DATA_REGISTER, "☆"), 1);
    EXPECT_EQ(e.save("例"), 1);
    const std::string saved = read_file(e.ws.common / "a.kig");
    EXPECT_EQ(saved, symbol_file("例", block("矢印", "☆") + block("数学", "＋×÷\n±\n") + block("数学／比較")));
    EXPECT_EQ(e.save("他"), 1);
    EXPECT_EQ(read_file(e.ws.common / "other.kig"), saved);
    EXPECT_EQ(names_in(e.ws.common), (Names{"a.kig", "other.kig"}));
}

TEST(save, gives_a_new_title_a_free_name) {
    const struct {
        const char *name;
        Names listed, unlisted;
        const char *expected;
    } cases[] = {
        {"none", {}, {}, "@0000000.kig"},
        {"after a run", {"@0000000.kig", "@0000001.kig", "@0000002.kig"}, {}, "@0000003.kig"},
        {"in a gap", {"@0000000.kig", "@0000001.kig", "@0000003.kig"}, {}, "@0000002.kig"},
        {"before all", {"@0000001.kig", "@0000002.kig"}, {}, "@0000000.kig"},
        {"names that are taken though not listed", {"@0000000.kig"}, {"@0000001.kig", "@0000002.kig"}, "@0000003.kig"},
    };
    for (const auto &c : cases) {
        Editing e(worked_example());
        for (const std::string &name : c.listed) write_file(e.ws.common / name, symbol_file(name));
        for (const std::string &name : c.unlisted) write_file(e.ws.common / name, "no symbol file");
        EXPECT_EQ(e.save("新"), 1) << c.name;
        EXPECT_EQ(e.host.message(), "") << c.name;
        std::string expected = worked_example();
        expected.replace(expected.find(to_euc("例")), 2, to_euc("新"));
        EXPECT_EQ(read_file(e.ws.common / c.expected), expected) << c.name;
        EXPECT_EQ(e.host.run(ACC_VKEY_FILE_TITLES), 1);
        EXPECT_NE(e.host.displayed().find("新|"), std::string::npos) << c.name;
        for (const std::string &name : c.unlisted) EXPECT_EQ(read_file(e.ws.common / name), "no symbol file");
    }
}

TEST(save, follows_links_and_keeps_the_mode) {
    Editing e(worked_example());
    fs::create_directory(e.ws.root / "elsewhere");
    const fs::path target = e.ws.root / "elsewhere" / "real.kig";
    fs::rename(e.ws.common / "a.kig", target);
    fs::create_symlink(target, e.ws.common / "a.kig");
    chmod(target.c_str(), 0664); // more than a umask leaves
    e.focus("例／矢印");
    e.edit(ACC_VKEY_DATA_REGISTER, "☆");
    EXPECT_EQ(e.save("例"), 1);
    EXPECT_TRUE(fs::is_symlink(e.ws.common / "a.kig"));
    EXPECT_NE(read_file(target), worked_example());
    struct stat status;
    ASSERT_EQ(stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0664u);
    EXPECT_EQ(names_in(target.parent_path()), Names{"real.kig"});
    EXPECT_EQ(e.save("新"), 1);
    ASSERT_EQ(stat((e.ws.common / "@0000000.kig").c_str(), &status), 0);
    const mode_t mask = umask(0);
    umask(mask);
    EXPECT_EQ(status.st_mode & 07777, 0666u & ~mask);
}

// Somebody tidies the temp directory while a file is open.
TEST(save, needs_no_name_of_the_temp_file_and_takes_no_cut_one) {
    std::string symbols;
    for (int i = 0; i < 60000; ++i) symbols += "☆";
    const std::string file = symbol_file("例", block("A", symbols + "\n"));
    Editing e(file);
    fs::remove(text(g_tAccFile[1].ucFullName));
    EXPECT_EQ(e.save("例"), 1);
    EXPECT_EQ(read_file(e.ws.common / "a.kig"), file);
    e.host.close();
    ASSERT_EQ(e.host.open("例"), 1);
    fs::resize_file(text(g_tAccFile[1].ucFullName), 40000);
    EXPECT_EQ(e.save("例"), 0);
    EXPECT_EQ(e.host.message(), "ファイルの書き込みに失敗しました。");
    EXPECT_EQ(read_file(e.ws.common / "a.kig"), file);
}

TEST(save, answers_what_it_cannot_do) {
    Editing e(worked_example());
    const std::string before = read_file(e.ws.common / "a.kig");
    EXPECT_EQ(e.save("標準の記号"), 0);
    EXPECT_EQ(e.host.message(), "標準の記号での保存はできません。");
    e.host.string(2, "");
    EXPECT_EQ(e.save("例"), 0);
    EXPECT_EQ(e.host.message(), "引数エラー");
    e.host.string(2, "x");
    e.host.null_string(1);
    EXPECT_EQ(e.host.run(ACC_VKEY_FILE_SAVE), 0);
    EXPECT_EQ(e.host.message(), "メモリが割り当てられていません。");
    EXPECT_EQ(e.save("A／B"), 0);
    EXPECT_EQ(e.host.message(), "入力エラーです。");
    fs::remove_all(e.ws.common);
    EXPECT_EQ(e.save("新"), 0); // no directory to put it in
    EXPECT_EQ(e.host.message(), opening_failed);
    EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 1); // its title has changed
    e.host.close();
    EXPECT_EQ(e.save("例"), 0);
    EXPECT_EQ(e.host.message(), opening_failed);
}

TEST(save, leaves_a_file_alone_whose_directory_or_self_cannot_be_written) {
    Editing e(worked_example());
    for (const fs::path &path : {e.ws.root, e.ws.temp}) fs::permissions(path, fs::perms::all);
    const auto save_as_nobody = [&] {
        const pid_t child = fork();
        if (child == 0) {
            if (getuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(9);
            _exit(e.save("例") == 0 && e.host.message() == opening_failed ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return status;
    };
    fs::permissions(e.ws.common / "a.kig", fs::perms(0666));
    fs::permissions(e.ws.common, fs::perms(0555));
    EXPECT_EQ(save_as_nobody(), 0);
    fs::permissions(e.ws.common / "a.kig", fs::perms(0444));
    fs::permissions(e.ws.common, fs::perms(0777));
    EXPECT_EQ(save_as_nobody(), 0);
    EXPECT_EQ(read_file(e.ws.common / "a.kig"), worked_example());
    EXPECT_EQ(names_in(e.ws.common), Names{"a.kig"});
}

// No file may grow: what is buffered fails when it is flushed, and not before.
TEST(full_disk, shows_in_every_command_that_writes) {
    Editing e(worked_example());
    e.focus("例／矢印");
    const std::string before = e.text();
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit kept;
    getrlimit(RLIMIT_FSIZE, &kept);
    const rlimit none = {10, kept.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    const int edited = e.edit(ACC_VKEY_DATA_REGISTER, "☆");
    const std::string edit_message = e.host.message();
    const int saved = e.save("例");
    e.host.close();
    const int made = e.edit(new_file, "新");
    const int opened = e.host.open("例");
    const std::string open_message = e.host.message();
    setrlimit(RLIMIT_FSIZE, &kept);
    EXPECT_EQ(edited, 2);
    EXPECT_EQ(edit_message, "ファイルの書き込みに失敗しました。");
    EXPECT_EQ(saved, -1);
    EXPECT_EQ(made, 0);
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(open_message, "ファイルの書き込みに失敗しました。");
    EXPECT_EQ(names_in(e.ws.common), Names{"a.kig"});
    ASSERT_EQ(e.host.open("例"), 1);
    EXPECT_EQ(e.text(), before);
}

TEST(delete_file, removes_the_file_of_a_title_and_nothing_else) {
    Editing e(worked_example());
    write_file(e.ws.common / "other.kig", symbol_file("他"));
    EXPECT_EQ(e.edit(delete_file, "標準の記号"), 0);
    EXPECT_EQ(e.host.message(), "標準の記号は削除できません。");
    EXPECT_EQ(e.edit(delete_file, "無い"), 0);
    EXPECT_EQ(e.host.message(), "記号ファイルが存在しません。");
    e.host.string(2, "");
    EXPECT_EQ(e.edit(delete_file, "他"), 0);
    EXPECT_EQ(e.host.message(), "引数エラー");
    e.host.string(2, "x");
    EXPECT_EQ(names_in(e.ws.common), (Names{"a.kig", "other.kig"}));
    EXPECT_EQ(e.edit(delete_file, "例"), 1); // the open file's own
    EXPECT_EQ(names_in(e.ws.common), Names{"other.kig"});
    EXPECT_EQ(m_lSymSVValue, 1);
    EXPECT_EQ(e.host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>");
    EXPECT_EQ(e.save("例"), 1); // and it can be saved again
    EXPECT_EQ(read_file(e.ws.common / "@0000000.kig"), worked_example());
}

/** Runs a body in child processes side by side and gives their exit statuses. */
template <typename Body>
std::vector<int> in_children(int count, Body body) {
    std::vector<pid_t> children;
    for (int i = 0; i < count; ++i) {
        children.push_back(fork());
        if (children.back() == 0) _exit(body(i));
    }
    std::vector<int> statuses;
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        statuses.push_back(status);
    }
    return statuses;
}

TEST(save, of_programs_side_by_side_loses_no_file) {
    Workspace ws;
    const int programs = 4, saves = 12;
    const auto statuses = in_children(programs, [&](int program) {
        Host host(ws);
        host.open("none"); // hands over the directories
        for (int i = 0; i < saves; ++i) {
            host.string(1, "file " + std::to_string(program) + "-" + std::to_string(i));
            if (host.run(ACC_VKEY_FILE_NEW) != 1 || host.run(ACC_VKEY_FILE_SAVE) != 1) return 1;
        }
        return 0;
    });
    EXPECT_EQ(statuses, std::vector<int>(programs, 0));
    Host host(ws);
    host.open("none");
    host.run(ACC_VKEY_FILE_TITLES);
    EXPECT_EQ(m_lSymSVValue, programs * saves);
    const std::string titles = host.displayed();
    for (int program = 0; program < programs; ++program) {
        for (int i = 0; i < saves; ++i) {
            EXPECT_NE(titles.find("file " + std::to_string(program) + "-" + std::to_string(i) + "|"), std::string::npos);
        }
    }
}

// The process dies at each operation of a save in turn.
TEST(save, of_a_process_that_is_killed_leaves_the_old_file_or_the_new_one) {
    static int countdown;
    int olds = 0, news = 0;
    for (int nth = 1;; ++nth) {
        Editing e(worked_example());
        e.focus("例／矢印");
        e.edit(ACC_VKEY_DATA_REGISTER, "☆");
        const auto statuses = in_children(1, [&](int) {
            countdown = nth;
            acc::set_fault_hook([](acc::Operation) {
                if (--countdown == 0) _exit(7);
                return false;
            });
            return e.save("例") == 1 ? 0 : 1;
        });
        const std::string file = read_file(e.ws.common / "a.kig");
        const std::string changed = symbol_file("例", block("矢印", "☆") + block("数学", "＋×÷\n±\n") + block("数学／比較"));
        ASSERT_TRUE(file == worked_example() || file == changed) << nth;
        (file == changed ? news : olds) += 1;
        e.host.close();
        EXPECT_EQ(e.host.open("例"), 1) << e.host.message(); // what is left over hinders nobody
        EXPECT_EQ(e.save("例"), 1);
        if (statuses[0] == 0) break;
        ASSERT_EQ(WEXITSTATUS(statuses[0]), 7);
    }
    EXPECT_GT(olds, 5);
    EXPECT_GE(news, 2);
}

} // namespace
