// The recent picks: what other processes, a person's hand and the system do to their file.
#include "picker/recents.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

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
    RecentPicks add(const char *symbol) const { return recents().add(to_sjis(symbol)); }
    std::string text() const { return ::read_file(file); }
};

std::string text_of(const RecentPicks &picks) {
    std::string text;
    for (const Sjis &symbol : picks.symbols) text += codes_of(symbol).sjis + " ";
    return text;
}

TEST(recents, are_the_newest_first_each_once_up_to_a_limit) {
    const State state;
    EXPECT_EQ(text_of(state.recents().read()), "");
    EXPECT_FALSE(fs::exists(state.folder)) << "looked at alone";
    for (const char *symbol : {"→", "　", "①", "→", "★", "★"}) EXPECT_TRUE(state.recents(3).add(to_sjis(symbol)).done);
    EXPECT_EQ(state.text(), "819A ★\n81A8 →\n8740 ①\n");
    EXPECT_EQ(fs::status(state.file).permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(state.folder).permissions(), fs::perms(0700));
    EXPECT_EQ(text_of(state.recents(2).read()), "819A 81A8 ");
    EXPECT_EQ(text_of(state.recents().remove(to_sjis("→"))), "819A 8740 ");
    const std::vector<Sjis> pairs{{'-', '-'}, {0x85, 0x40}, {'\r', '\n'}, {' ', '\n'}, {0xFF, 0x01}, {0x81, 0x40}};
    for (const Sjis &pair : pairs) state.recents(6).add(pair);
    for (const Sjis &none : {Sjis{}, Sjis{0x81}, Sjis{0, 'A'}, Sjis{'A', 0}}) state.recents().add(none);
    EXPECT_EQ(state.recents().read().symbols, std::vector<Sjis>(pairs.rbegin(), pairs.rend()));
    EXPECT_FALSE(fs::exists(state.aside));
    for (unsigned short code = 0x8140; code < 0x8140 + 101; ++code) state.recents(1000).add(pair_of(code));
    EXPECT_EQ(state.recents(1000).read().symbols.size(), Recents::most);
}

TEST(recents, that_are_switched_off_or_forgotten_leave_nothing) {
    const Recents off = State().recents(0);
    EXPECT_EQ(text_of(off.add(to_sjis("→"))), "");
    const std::function<RecentPicks(const State &)> asked[] = {[](const State &state) { return state.recents(0).read(); },
                                                               [](const State &state) { return state.recents(0).add(to_sjis("★")); },
                                                               [](const State &state) { return state.recents().clear(); }};
    for (const auto &ask : asked) {
        const State state;
        fs::create_directories(state.folder);
        write_file(state.file, "damaged");
        state.add("→");
        EXPECT_EQ(files_in(state.folder).size(), 3U) << "picks, what was put aside, lock";
        EXPECT_EQ(text_of(ask(state)), "");
        EXPECT_EQ(files_in(state.folder), (std::map<std::string, std::string>{{lock_name, ""}}));
    }
}

TEST(recents, put_a_damaged_file_aside_and_keep_what_can_be_read) {
    const struct {
        const char *name;
        std::string bytes, kept;
        std::function<void(const fs::path &)> make{}; /**< in place of a file with the bytes */
        bool damaged = true;
    } cases[] = {
        {"empty", "", "", {}, false},
        {"a person's hand", "819a\r\n\r\n81A8 an arrow\r\n819A ★\r\n", "819A 81A8 ", {}, false},
        {"no UTF-8", "819A \xE2\x86\n81A8 →\n", "819A 81A8 "},
        {"last line cut off", "819A ★\n81A", "819A "},
        {"cut off behind a code", "819A ★\n81A8", "819A "},
        {"binary", std::string("\0\x01\xFF\n81A8\n\x7F", 10), "81A8 "},
        {"no codes", "819A ★\n★\n81A8★\n00A8\n819\n81A8 →\n", "819A 81A8 "},
        {"a folder", "", "", [](const fs::path &file) { fs::create_directories(file / "x"); }},
        {"a link", "", "", [](const fs::path &file) { fs::create_symlink("../../elsewhere", file); }},
        {"a link to nothing", "", "", [](const fs::path &file) { fs::create_symlink("nowhere", file); }},
        {"a pipe", "", "", [](const fs::path &file) { mkfifo(file.c_str(), 0600); }},
        {"1 GB", "81A8 →\n", "81A8 ",
         [](const fs::path &file) {
             write_file(file, "81A8 →\n");
             fs::resize_file(file, 1 << 30);
         }},
    };
    for (const auto &c : cases) {
        for (const bool picks : {false, true}) {
            const State state;
            fs::create_directories(state.folder);
            write_file(state.root / "elsewhere", "81A8 →\n");
            c.make ? c.make(state.file) : write_file(state.file, c.bytes);
            const RecentPicks seen = picks ? state.add("↑") : state.recents().read(), again = state.recents().read();
            EXPECT_EQ(text_of(seen), (picks ? "81AA " : "") + c.kept) << c.name;
            EXPECT_EQ(text_of(again), text_of(seen)) << c.name;
            EXPECT_TRUE(seen.done && again.trouble.empty()) << c.name;
            EXPECT_EQ(seen.trouble.find("damaged") != std::string::npos, c.damaged) << c.name << ": " << seen.trouble;
            EXPECT_EQ(fs::exists(fs::symlink_status(state.aside)), c.damaged) << c.name;
            EXPECT_EQ(::read_file(state.root / "elsewhere"), "81A8 →\n") << c.name;
        }
    }
}

TEST(recents, of_a_damaged_file_stay_when_the_disk_is_full) {
    const State state;
    fs::create_directories(state.folder);
    write_file(state.file, "81A8 →\nx\n");
    for (const char *const when : {"first", "again"}) {
        EXPECT_EQ(in_children(1,
                              [&](int) {
                                  limit_files(0);
                                  const RecentPicks picks = state.add("★");
                                  return !picks.done && text_of(picks) == "81A8 " ? 0 : 1;
                              })[0],
                  0)
            << when;
    }
    EXPECT_EQ(text_of(state.add("★")), "819A 81A8 ");
    EXPECT_EQ(::read_file(state.aside), "81A8 →\nx\n");
}

TEST(recents, that_cannot_be_noted_are_no_obstacle_and_the_old_ones_stay) {
    const State state;
    fs::create_directories(state.root / "state");
    for (const fs::path &folder : {state.root, state.root / "state"}) fs::permissions(folder, fs::perms::all);
    EXPECT_TRUE(holds_for_nobody([&] {
        state.add("→");
        fs::permissions(state.file, fs::perms::none); // as one that root made
        if (text_of(state.add("★")) != "819A " || state.recents().read().trouble != "") return false;
        fs::permissions(state.folder, fs::perms(0500));
        const RecentPicks picks = state.add("↑"), cleared = state.recents().clear();
        fs::permissions(state.folder, fs::perms(0700));
        const bool told = !picks.done && !picks.trouble.empty() && !cleared.done;
        return told && text_of(picks) == "819A " && text_of(cleared) == "819A " && state.text() == "819A ★\n";
    }));
    write_file(state.root / "file", "");
    EXPECT_FALSE(Recents(state.root / "file" / "kigou").add(to_sjis("→")).done);
}

TEST(recents, wait_a_moment_for_another_process_and_read_without) {
    const State state;
    state.add("→");
    {
        const FolderLock other(state.folder, {});
        const auto start = std::chrono::steady_clock::now();
        EXPECT_NE(state.add("★").trouble.find("another program"), std::string::npos);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        write_file(state.file, "81A8 →\nx\n");
        EXPECT_EQ(text_of(state.recents().read()), "81A8 ") << "damaged, and not to be put aside now";
    }
    EXPECT_EQ(text_of(state.add("★")), "819A 81A8 ");
}

TEST(recents, lose_none_of_two_processes_and_stand_a_kill) {
    const State state;
    for (int round = 0; round < 12; ++round) {
        const bool kills = round % 2 == 1;
        const auto symbol = [&](int child, int i) {
            return pair_of(static_cast<unsigned short>(0x889F + (round % 6 * 2 + child) * 8 + i));
        };
        std::vector<Sjis> expected = state.recents().read().symbols;
        const auto codes = in_children(2, [&](int child) {
            if (kills && child == 1) die_in(1 + round * 1237 % 9000);
            for (int i = 0, tries = 0; i < 8; ++i) {
                while (!state.recents().add(symbol(child, i)).done) { // the disk may be slow
                    if (++tries == 50) return 1;
                }
            }
            return 0;
        });
        EXPECT_TRUE(codes[0] == 0 && (kills || codes[1] == 0)) << "round " << round;
        const RecentPicks picks = state.recents().read();
        EXPECT_EQ(picks.trouble, "") << "round " << round;
        for (int i = 0; i < 16; ++i) {
            if (codes[static_cast<std::size_t>(i / 8)] == 0) expected.push_back(symbol(i / 8, i % 8));
        }
        for (const Sjis &one : expected) EXPECT_EQ(std::ranges::count(picks.symbols, one), 1) << "round " << round;
    }
    write_file(state.folder / ".accsym-save-1-w0", "819A"); // of one that was killed as it wrote
    for (const auto &entry : fs::directory_iterator(state.folder)) age(entry);
    state.add("→");
    EXPECT_EQ(files_in(state.folder).size(), 2U) << "nothing of the killed";
}

} // namespace
} // namespace kigou
