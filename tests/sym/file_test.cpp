// Creating, saving and deleting symbol files.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <set>

#include "support/children.h"
#include "support/editing.h"
#include "support/faults.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

constexpr int new_file = ACC_VKEY_FILE_NEW;
const char *const opening_failed = "ファイルのオープンに失敗しました。";

using Names = std::vector<std::string>;
using Files = std::map<std::string, std::string>;

TEST(new_file, lies_in_the_temp_file_until_it_is_saved) {
    Editing e(worked_example());
    e.focus("例／矢印");
    e.host.list(10).cchLBItemHead = 77;
    EXPECT_EQ(e.edit(new_file, ""), 1);
    EXPECT_EQ(e.host.list(10).cchLBItemHead, 4);
    EXPECT_EQ(e.host.message(), "");
    EXPECT_EQ(e.text(), "〈記号〉\r\n名称=\r\n");
    EXPECT_EQ(e.host.shown(1), "");
    EXPECT_EQ(e.host.record.wCurrentList, 1);
    EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 1);
    EXPECT_EQ(e.edit(ACC_VKEY_TITLE_ADD, "A"), 1);
    EXPECT_EQ(e.edit(ACC_VKEY_TITLE_CHANGE, "新"), 1);
    EXPECT_EQ(e.host.shown(1), "1: 新／A<2>");
    EXPECT_EQ(files_in(e.ws.common), (Files{{"a.kig", worked_example()}}));
    EXPECT_EQ(e.save("新"), 1);
    EXPECT_EQ(e.host.message(), "記号タイトルが既に存在します。"); // the title was the file's already
    EXPECT_EQ(files_in(e.ws.common), (Files{{"a.kig", worked_example()}, {"@0000000.kig", symbol_file("新", block("A"))}}));
    EXPECT_EQ(e.edit(new_file, "新"), 0);
    EXPECT_EQ(g_tAccFile[1].hFile, 0); // the open file was closed first
}

TEST(save, and_delete_touch_the_file_of_that_title_alone) {
    Editing e(worked_example());
    write_file(e.ws.common / "other.kig", symbol_file("他"));
    e.focus("例／矢印");
    EXPECT_EQ(e.edit(ACC_VKEY_DATA_REGISTER, "☆"), 1);
    EXPECT_EQ(e.save("例"), 1);
    const std::string saved = symbol_file("例", block("矢印", "☆") + block("数学", "＋×÷\n±\n") + block("数学／比較"));
    EXPECT_EQ(files_in(e.ws.common), (Files{{"a.kig", saved}, {"other.kig", symbol_file("他")}}));
    EXPECT_EQ(e.edit(ACC_VKEY_FILE_DELETE, "例"), 1); // the open file's own
    EXPECT_EQ(files_in(e.ws.common), (Files{{"other.kig", symbol_file("他")}}));
    EXPECT_EQ(m_lSymSVValue, 1);
    EXPECT_EQ(e.host.shown(1), "1: 例／矢印<2> 2: 例／数学<3>");
    EXPECT_EQ(e.save("例"), 1); // and it can be saved again
    EXPECT_EQ(e.save("他"), 1); // the title line stays the open file's
    EXPECT_EQ(files_in(e.ws.common), (Files{{"@0000000.kig", saved}, {"other.kig", saved}}));
}

TEST(save, gives_a_new_title_a_free_name) {
    const struct {
        const char *name;
        Names listed, unlisted;
        const char *expected, *in_program = "a.txt";
    } cases[] = {
        {"none", {}, {}, "@0000000.kig"},
        {"after a run", {"@0000000.kig", "@0000001.kig", "@0000002.kig"}, {}, "@0000003.kig"},
        {"in a gap", {"@0000000.kig", "@0000001.kig", "@0000003.kig"}, {}, "@0000002.kig"},
        {"before all", {"@0000001.kig", "@0000002.kig"}, {}, "@0000000.kig"},
        {"behind one of the program's", {}, {"@0000000.kig"}, "@0000002.kig", "@0000001.kig"},
        {"names that are taken though not listed", {"@0000000.kig"}, {"@0000001.kig", "@0000002.kig"}, "@0000003.kig"},
    };
    for (const auto &c : cases) {
        Editing e(symbol_file("例"));
        for (const std::string &name : c.listed) write_file(e.ws.common / name, symbol_file(name));
        for (const std::string &name : c.unlisted) write_file(e.ws.common / name, "no symbol file");
        e.ws.put(c.in_program, symbol_file("他"));
        Files expected = files_in(e.ws.common);
        expected[c.expected] = symbol_file("新");
        EXPECT_EQ(e.save("新"), 1) << c.name;
        EXPECT_EQ(e.host.message(), "") << c.name;
        EXPECT_EQ(files_in(e.ws.common), expected) << c.name;
    }
}

TEST(save, needs_the_common_directory) {
    Editing e(worked_example());
    fs::remove_all(e.ws.common);
    EXPECT_EQ(e.save("新"), 0);
    EXPECT_EQ(e.host.message(), opening_failed);
    EXPECT_EQ(e.host.run(ACC_VKEY_GET_EDIT), 1); // its title has changed
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
    EXPECT_EQ(files_in(target.parent_path()).size(), 1u);
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

TEST(save, leaves_a_file_alone_whose_directory_or_self_cannot_be_written) {
    Editing e(worked_example());
    for (const fs::path &path : {e.ws.root, e.ws.temp}) fs::permissions(path, fs::perms::all);
    const auto refused = [&] { return e.save("例") == 0 && e.host.message() == opening_failed; };
    fs::permissions(e.ws.common / "a.kig", fs::perms(0666));
    fs::permissions(e.ws.common, fs::perms(0555));
    EXPECT_TRUE(holds_for_nobody(refused));
    fs::permissions(e.ws.common / "a.kig", fs::perms(0444));
    fs::permissions(e.ws.common, fs::perms(0777));
    EXPECT_TRUE(holds_for_nobody(refused));
    EXPECT_EQ(files_in(e.ws.common), (Files{{"a.kig", worked_example()}}));
}

// No file may grow; or all that is seen of it is a flush that fails.
TEST(full_disk, shows_in_every_command_that_writes) {
    const rlimit kept = limit_files(RLIM_INFINITY);
    for (const bool in_flush_alone : {false, true}) {
        Editing e(worked_example());
        e.focus("例／矢印");
        const State before(e);
        std::vector<std::pair<int, std::string>> outcomes;
        const auto note = [&](int result) { outcomes.emplace_back(result, e.host.message()); };
        if (in_flush_alone) {
            acc::set_fault_hook([](acc::Operation operation) { return operation == acc::Operation::flush; });
        } else {
            limit_files(10);
        }
        note(e.edit(ACC_VKEY_DATA_REGISTER, "☆"));
        note(e.save("例"));
        e.host.close();
        note(e.edit(new_file, "新"));
        note(e.host.open("例"));
        acc::set_fault_hook(nullptr);
        setrlimit(RLIMIT_FSIZE, &kept);
        const std::string writing = "ファイルの書き込みに失敗しました。";
        EXPECT_EQ(outcomes, (decltype(outcomes){{2, writing}, {-1, ""}, {0, writing}, {0, writing}})) << in_flush_alone;
        ASSERT_EQ(e.host.open("例"), 1);
        e.focus("例／矢印");
        EXPECT_EQ(State(e), before);
    }
}

TEST(save, of_programs_side_by_side_loses_no_file) {
    Workspace ws;
    const int programs = 4, saves = 12;
    const auto codes = in_children(programs, [&](int program) {
        Host host(ws);
        host.open("none"); // hands over the directories
        for (int i = 0; i < saves; ++i) {
            host.string(1, std::to_string(program) + "-" + std::to_string(i));
            if (host.run(ACC_VKEY_FILE_NEW) != 1 || host.run(ACC_VKEY_FILE_SAVE) != 1) return 1;
        }
        return 0;
    });
    EXPECT_EQ(codes, std::vector<int>(programs, 0));
    const Files files = files_in(ws.common);
    std::set<std::string> contents; // each with its own title
    for (const auto &[name, content] : files) contents.insert(content);
    EXPECT_EQ(files.size(), std::size_t{programs * saves});
    EXPECT_EQ(contents.size(), files.size());
}

// The process dies at each operation of a save in turn.
TEST(save, of_a_process_that_is_killed_leaves_the_old_file_or_the_new_one) {
    static int countdown;
    int olds = 0, news = 0;
    for (int nth = 1;; ++nth) {
        Editing e(worked_example());
        e.focus("例／矢印");
        e.edit(ACC_VKEY_DATA_REGISTER, "☆");
        const int code = in_children(1, [&](int) {
            countdown = nth;
            acc::set_fault_hook([](acc::Operation) {
                if (--countdown == 0) _exit(7);
                return false;
            });
            return e.save("例") == 1 ? 0 : 1;
        })[0];
        const std::string file = read_file(e.ws.common / "a.kig");
        const std::string changed = symbol_file("例", block("矢印", "☆") + block("数学", "＋×÷\n±\n") + block("数学／比較"));
        ASSERT_TRUE(file == worked_example() || file == changed) << nth;
        (file == changed ? news : olds) += 1;
        e.host.close();
        EXPECT_EQ(e.host.open("例"), 1) << e.host.message(); // what is left over hinders nobody
        EXPECT_EQ(e.save("例"), 1);
        if (code == 0) break;
        ASSERT_EQ(code, 7);
    }
    EXPECT_GT(olds, 5);
    EXPECT_GE(news, 2);
}

} // namespace
