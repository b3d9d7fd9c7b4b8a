// The recent picks: what other processes, a person's hand and the system do to their file.
#include "picker/recents.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>

#include <algorithm>
#include <csignal>

#include "picker/codes.h"
#include "picker/folder_lock.h"
#include "tests/support/children.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

/** A folder for the state that is not there yet. */
struct State : Workspace {
    fs::path folder = root / "state" / "kigou", file = folder / "recents", aside = folder / "recents.damaged";

    Recents recents(std::size_t limit = Recents::most) const { return Recents(folder, limit); }
    void write(const std::string &bytes) const {
        fs::create_directories(folder);
        write_file(file, bytes);
    }
};

std::string text_of(const RecentPicks &picks) {
    std::string text;
    for (const Sjis &symbol : picks.symbols) text += codes_of(symbol).sjis + " ";
    return text;
}

mode_t mode_of(const fs::path &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

TEST(recents, are_the_newest_first_each_once_up_to_a_limit) {
    const State state;
    const Recents recents = state.recents(3);
    EXPECT_EQ(text_of(recents.read()), "");
    EXPECT_FALSE(fs::exists(state.folder)) << "looked at alone";
    for (const char *symbol : {"→", "　", "①", "→", "★", "★"}) EXPECT_TRUE(recents.add(to_sjis(symbol)).done);
    EXPECT_EQ(text_of(recents.read()), "819A 81A8 8740 ");
    EXPECT_EQ(mode_of(state.file), 0600U);
    EXPECT_EQ(mode_of(state.folder), 0700U);
    EXPECT_EQ(::read_file(state.file), "819A ★\n81A8 →\n8740 ①\n");
    EXPECT_EQ(text_of(state.recents(2).read()), "819A 81A8 ");
    EXPECT_EQ(text_of(recents.remove(to_sjis("→"))), "819A 8740 ");
    EXPECT_TRUE(recents.clear().done);
    EXPECT_EQ(text_of(recents.read()), "");
    EXPECT_FALSE(fs::exists(state.file));
    for (unsigned short code = 0x8140; code < 0x8140 + 150; ++code) state.recents(1000).add(pair_of(code));
    EXPECT_EQ(recents.read().symbols.size(), 3U);
    EXPECT_EQ(state.recents(1000).read().symbols.size(), Recents::most);
}

TEST(recents, keep_what_is_no_character_and_note_nothing_that_is_no_pair) {
    const State state;
    const std::vector<Sjis> pairs{{'-', '-'}, {0x85, 0x40}, {'\r', '\n'}, {' ', '\n'}, {0xFF, 0x01}, {0x81, 0x40}};
    for (const Sjis &pair : pairs) state.recents().add(pair);
    for (const Sjis &none : {Sjis{}, Sjis{0x81}, Sjis{0, 'A'}, Sjis{'A', 0}, Sjis{1, 2, 3}}) state.recents().add(none);
    const RecentPicks picks = state.recents().read();
    EXPECT_EQ(picks.symbols, std::vector<Sjis>(pairs.rbegin(), pairs.rend()));
    EXPECT_EQ(picks.trouble, "");
}

TEST(recents, that_are_switched_off_leave_nothing) {
    const State state;
    EXPECT_EQ(text_of(state.recents(0).add(to_sjis("→"))), "");
    EXPECT_FALSE(fs::exists(state.folder));
    using Asked = std::function<RecentPicks(const Recents &)>;
    const Asked asked[] = {
        [](const Recents &recents) { return recents.read(); }, [](const Recents &recents) { return recents.add(to_sjis("★")); },
        [](const Recents &recents) { return recents.remove(to_sjis("★")); }, [](const Recents &recents) { return recents.clear(); }};
    for (const Asked &ask : asked) {
        state.write("damaged");
        state.recents().add(to_sjis("→"));
        EXPECT_EQ(files_in(state.folder).size(), 3U) << "picks, what was put aside, lock";
        EXPECT_EQ(text_of(ask(state.recents(0))), "");
        EXPECT_EQ(files_in(state.folder), (std::map<std::string, std::string>{{lock_name, ""}}));
    }
}

TEST(recents, put_a_damaged_file_aside_and_keep_what_can_be_read) {
    struct Case {
        const char *name;
        std::function<void(const State &)> make;
        std::string kept;
        bool damaged = true;
    };
    const auto text = [](const std::string &bytes) { return [bytes](const State &state) { state.write(bytes); }; };
    const Case cases[] = {
        {"empty", text(""), "", false},
        {"a person's hand", text("819a\r\n\r\n81A8 an arrow\r\n819A ★\r\n"), "819A 81A8 ", false},
        {"too many lines", text("8140\n8141\n8142\n8143\n8144\n"), "8140 8141 8142 8143 ", false},
        {"no UTF-8", text("819A \xE2\x86\n81A8 →\n"), "819A 81A8 "},
        {"last line cut off", text("819A ★\n81A"), "819A "},
        {"cut off behind a code", text("819A ★\n81A8"), "819A "},
        {"binary", text(std::string("\0\x01\xFF\n81A8\n\x7F", 11)), "81A8 "},
        {"no codes", text("819A ★\n★\n81A8★\n00A8\n819\n81A8 →\n"), "819A 81A8 "},
        {"a folder",
         [](const State &state) {
             fs::create_directories(state.file);
             write_file(state.file / "x", "x");
         },
         ""},
        {"a link",
         [](const State &state) {
             state.write("");
             fs::remove(state.file);
             write_file(state.root / "elsewhere", "81A8 →\n");
             fs::create_symlink(state.root / "elsewhere", state.file);
         },
         ""},
        {"a link to nothing",
         [](const State &state) {
             state.write("");
             fs::remove(state.file);
             fs::create_symlink("nowhere", state.file);
         },
         ""},
        {"a pipe",
         [](const State &state) {
             fs::create_directories(state.folder);
             mkfifo(state.file.c_str(), 0600);
         },
         ""},
        {"1 GB",
         [](const State &state) {
             state.write("81A8 →\n");
             fs::resize_file(state.file, 1 << 30);
         },
         "81A8 "},
    };
    for (const Case &c : cases) {
        for (const bool picks : {false, true}) {
            const State state;
            c.make(state);
            const Recents recents = state.recents(4);
            const RecentPicks seen = picks ? recents.add(to_sjis("↑")) : recents.read();
            std::string expected = (picks ? "81AA " : "") + c.kept;
            if (expected.size() > 20) expected.resize(20);
            EXPECT_EQ(text_of(seen), expected) << c.name;
            EXPECT_TRUE(seen.done) << c.name;
            EXPECT_EQ(!seen.trouble.empty(), c.damaged) << c.name << ": " << seen.trouble;
            EXPECT_EQ(fs::exists(fs::symlink_status(state.aside)), c.damaged) << c.name;
            const RecentPicks again = recents.read();
            EXPECT_EQ(text_of(again), expected) << c.name;
            EXPECT_EQ(again.trouble, "") << c.name;
            if (fs::exists(state.root / "elsewhere")) {
                EXPECT_EQ(::read_file(state.root / "elsewhere"), "81A8 →\n");
            }
        }
    }
}

TEST(recents, that_cannot_be_noted_are_no_obstacle_and_the_old_ones_stay) {
    const State state;
    for (const fs::path &folder : {state.root, state.root / "state"}) {
        fs::create_directories(folder);
        fs::permissions(folder, fs::perms::all);
    }
    const auto recents_of = [&](const fs::path &folder) { return Recents(folder); };
    EXPECT_TRUE(holds_for_nobody([&] {
        const Recents recents = recents_of(state.folder);
        recents.add(to_sjis("→"));
        fs::permissions(state.file, fs::perms::none); // as one that root made
        if (recents.add(to_sjis("★")).trouble.empty() || text_of(recents.read()) != "819A ") return false;
        recents.add(to_sjis("☆"));
        fs::permissions(state.folder, fs::perms::owner_read | fs::perms::owner_exec);
        const std::string before = ::read_file(state.file);
        const RecentPicks picks = recents.add(to_sjis("↑")), cleared = recents.clear();
        const bool kept = text_of(picks) == "8199 819A " && text_of(cleared) == "8199 819A " && before == ::read_file(state.file);
        fs::permissions(state.folder, fs::perms::owner_all);
        return kept && !picks.done && !picks.trouble.empty() && !cleared.done && files_in(state.folder).size() == 3;
    }));
    write_file(state.root / "file", "");
    const RecentPicks picks = recents_of(state.root / "file" / "kigou").add(to_sjis("→"));
    EXPECT_FALSE(picks.done);
    EXPECT_NE(picks.trouble, "");
}

TEST(recents, wait_a_moment_for_another_process_and_read_without) {
    const State state;
    state.recents().add(to_sjis("→"));
    {
        const FolderLock other(state.folder, {});
        const auto start = std::chrono::steady_clock::now();
        const RecentPicks picks = state.recents().add(to_sjis("★"));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        EXPECT_FALSE(picks.done);
        EXPECT_NE(picks.trouble.find("another program"), std::string::npos) << picks.trouble;
        EXPECT_EQ(text_of(state.recents().read()), "81A8 ");
        write_file(state.file, "81A8 →\nx\n");
        EXPECT_EQ(text_of(state.recents().read()), "81A8 ") << "damaged, and not to be put aside now";
    }
    EXPECT_EQ(text_of(state.recents().add(to_sjis("★"))), "819A 81A8 ");
}

TEST(recents, lose_none_of_two_processes_and_stand_a_kill) {
    const State state;
    for (int round = 0; round < 12; ++round) {
        const bool kills = round % 2 == 1;
        std::set<Sjis> before;
        for (const Sjis &symbol : state.recents().read().symbols) before.insert(symbol);
        const auto codes = in_children(2, [&](int child) {
            if (kills && child == 1) {
                const itimerval soon{{0, 0}, {0, 1 + round * 1237 % 9000}};
                signal(SIGALRM, SIG_DFL);
                setitimer(ITIMER_REAL, &soon, nullptr);
            }
            for (int i = 0; i < 8; ++i) {
                const auto code = static_cast<unsigned short>(0x889F + (round % 6 * 2 + child) * 8 + i);
                const Sjis symbol = pair_of(code);
                for (int tries = 0; !state.recents().add(symbol).done; ++tries) {
                    if (tries == 20) return 1;
                }
            }
            return 0;
        });
        const RecentPicks picks = state.recents().read();
        EXPECT_EQ(picks.trouble, "") << "round " << round;
        EXPECT_EQ(codes[0], 0) << "round " << round;
        EXPECT_TRUE(kills || codes[1] == 0) << "round " << round;
        std::set<Sjis> now(picks.symbols.begin(), picks.symbols.end());
        for (int child = 0; child < 2; ++child) {
            for (int i = 0; i < 8 && codes[static_cast<std::size_t>(child)] == 0; ++i) {
                before.insert(pair_of(static_cast<unsigned short>(0x889F + (round % 6 * 2 + child) * 8 + i)));
            }
        }
        EXPECT_TRUE(std::ranges::includes(now, before)) << "round " << round;
    }
    for (const auto &entry : fs::directory_iterator(state.folder)) {
        fs::last_write_time(entry, fs::file_time_type::clock::now() - std::chrono::seconds(10));
    }
    state.recents().add(to_sjis("→"));
    EXPECT_EQ(files_in(state.folder).size(), 2U) << "nothing of the killed";
}

} // namespace
} // namespace kigou
