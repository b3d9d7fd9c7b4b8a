// What killed processes leave beside the sets and in the temporary directory.
#include "picker/recovery.h"

#include <gtest/gtest.h>

#include <set>

#include "picker/backup.h"
#include "picker/editing.h"
#include "tests/support/children.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

/** A workspace with the set 例, which has an arrow. */
struct Sets : Workspace {
    Sets() { put("rei.kig", before); }

    Directories directories() const { return {program, common, user}; }
    std::vector<Leftover> sweep() const { return sweep_leftovers(directories()); }
    std::map<std::string, std::string> backups() const { return files_in(program / "backup"); }

    /** A process adds a symbol and is killed before it saves; that was before the set was saved. */
    void leave_edit(const std::string &symbol) const {
        in_children(1, [&](int) {
            Edit edit(directories(), {}, {});
            edit.locate("例/甲");
            edit.put(to_sjis(symbol + "\r\n"), false);
            return raise(SIGKILL);
        });
        for (const fs::path &left : temp_files()) age(left);
    }

    std::string before = symbol_file("例", block("甲", "→\n")), after = symbol_file("例", block("甲", "↑\n"));
    fs::path file = program / "rei.kig";
};

TEST(recovery, keeps_each_older_edit_of_a_set_once_and_under_a_name_of_its_own) {
    const Sets sets;
    for (const char *const symbol : {"※", "★", "※", "☆"}) sets.leave_edit(symbol);
    std::map<std::string, std::string> told;
    for (const Leftover &left : sets.sweep()) told[fs::path(left.kept).filename()] = ::read_file(left.kept);
    EXPECT_EQ(told, sets.backups());
    std::set<std::string> names, texts;
    for (const auto &[name, text] : told) {
        names.insert(name);
        texts.insert(text);
    }
    EXPECT_EQ(names, (std::set<std::string>{"unsaved-例-2.kig", "unsaved-例-3.kig", "unsaved-例.kig"}));
    std::set<std::string> left;
    for (const char *const symbol : {"※", "★", "☆"}) left.insert(symbol_file("例", block("甲", symbol + std::string("\n"))));
    EXPECT_EQ(texts, left);
    EXPECT_TRUE(sets.temp_files().empty());
}

/** Killed while the library opened the file; with a sign that the set lacks it is no such file. */
TEST(recovery, removes_a_beginning_of_the_set_that_was_never_edited) {
    for (const bool edited : {false, true}) {
        const Sets sets;
        age(sets.file, 20);
        sets.leave_edit(edited ? "※" : "→");
        ASSERT_EQ(sets.temp_files().size(), 1U);
        const fs::path left = sets.temp_files().front();
        std::string bytes = ::read_file(left);
        bytes.replace(0, 8, 8, '\0');
        write_file(left, bytes.substr(0, bytes.size() - 30));
        age(left);
        EXPECT_EQ(sets.sweep().size(), edited ? 1U : 0U);
        EXPECT_EQ(sets.temp_files().size(), edited ? 1U : 0U);
    }
}

TEST(recovery, leaves_an_edit_where_it_is_and_the_kept_ones_when_the_disk_is_full) {
    const Sets sets;
    sets.leave_edit("※");
    ASSERT_EQ(sets.sweep().size(), 1U);
    const auto kept = sets.backups();
    for (const char *const symbol : {"★", "※"}) sets.leave_edit(symbol);
    EXPECT_EQ(in_children(1,
                          [&](int) {
                              limit_files(0);
                              std::multiset<bool> is_kept;
                              for (const Leftover &left : sets.sweep()) is_kept.insert(!left.kept.empty());
                              return is_kept == std::multiset<bool>{false, true} ? 0 : 1;
                          })[0],
              0)
        << "told of both, and the one that is kept already needs no room";
    EXPECT_EQ(sets.backups(), kept);
    ASSERT_EQ(sets.temp_files().size(), 1U);
    EXPECT_EQ(Snapshot::of_text(recover(sets.temp_files()[0]).text, "").data(1).size(), 4U);
    EXPECT_EQ(sets.sweep().size(), 1U);
    EXPECT_EQ(sets.backups().size(), 2U);
}

TEST(recovery, ends_the_backup_of_an_edit_that_was_killed) {
    const std::string earlier = symbol_file("例", block("甲", "↓\n"));
    const struct {
        const char *name;
        std::function<void(const Sets &)> next; /**< what the process did behind its backup */
        bool is_saved;
    } cases[] = {
        {"killed before its save", [](const Sets &) {}, false},
        {"behind its save",
         [](const Sets &sets) {
             write_file(sets.root / "saved", sets.after);
             fs::rename(sets.root / "saved", sets.file);
         },
         true},
        {"behind its deletion", [](const Sets &sets) { fs::remove(sets.file); }, true},
    };
    for (const auto &c : cases) {
        for (const bool edits : {false, true}) { // the next edit does it as well, also one that fails then
            SCOPED_TRACE(c.name);
            const Sets sets;
            fs::create_directory(sets.program / "backup");
            write_file(sets.program / "backup/例.kig", earlier);
            in_children(1, [&](int) {
                const Backup backup(sets.file, "例");
                c.next(sets);
                return raise(SIGKILL);
            });
            write_file(sets.program / "backup/.accsym-save-1-w0", "half");
            age(sets.program / "backup/.accsym-save-1-w0");
            const auto left = sets.backups();
            ASSERT_TRUE(left.contains("例.kig.new"));
            const bool sweeps = !edits || !fs::exists(sets.file);
            if (!sweeps) {
                const Backup fails(sets.file, "例");
            } else {
                {
                    const FolderLock living(sets.program, {});
                    sets.sweep();
                    EXPECT_TRUE(sets.backups().contains("例.kig.new")) << "it may be of the living one";
                }
                sets.sweep();
            }
            auto ended = sets.backups();
            EXPECT_EQ(ended.erase(".accsym-save-1-w0"), sweeps ? 0U : 1U);
            EXPECT_EQ(ended, (std::map<std::string, std::string>{{"例.kig", c.is_saved ? sets.before : earlier}}));
        }
    }
}

} // namespace
} // namespace kigou
