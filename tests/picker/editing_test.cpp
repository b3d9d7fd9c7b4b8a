// One edit at a time: what another process, another program and the system do to it.
#include "picker/editing.h"

#include <gtest/gtest.h>

#include "fuzz/odd_files.h"
#include "picker/recovery.h"
#include "picker/symbol_data.h"
#include "tests/picker/edits.h"
#include "tests/support/children.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

/** A workspace with the set 例: 甲 with an arrow and the empty 乙, 左 and 右. */
struct Sets : Workspace {
    Sets() { put("rei.kig", symbol_file("例", block("甲", "→\n") + block("乙") + block("左") + block("右"))); }

    Directories directories() const { return directories_of(*this); }
    fs::path file() const { return program / "rei.kig"; }
    Snapshot snapshot() const { return Snapshot(file()); }

    /** Symbols of a title, in UTF-8; "-" for a title that is not there. */
    std::string symbols(const std::string &path) const {
        const Snapshot now = snapshot();
        const auto number = now.find(typed_title(path).sjis);
        if (!number) return "-";
        std::string text;
        for (const Sjis &symbol : symbols_in(now.data(*number))) text += to_utf8(symbol);
        return text;
    }
};

void append(Edit &edit, const std::string &symbols) {
    edit.locate("例/甲");
    edit.put(data_of(symbols), true);
}

/** The title of the first level that begins so. */
std::string title_beginning(const Snapshot &snapshot, const std::string &start) {
    for (std::size_t i = 1; i < snapshot.size(); ++i) {
        if (snapshot.title(i).text.starts_with("例／" + start)) return snapshot.title(i).text;
    }
    return "例／" + start;
}

/** Each of two processes has a title of its own to rename. */
std::string side_of(const std::string &number) {
    return number.back() % 2 ? "右" : "左";
}

/** Something that each of two processes does at the same time, with a number of its own, and what must be there then. */
struct Work {
    std::function<void(Edit &, const Sets &, const std::string &)> edit; /**< none: a set is deleted */
    std::string title, symbols;                                          /**< without the number; as Sets::symbols tells it */

    EditReport run(const Sets &sets, const std::string &number) const {
        if (!edit) return delete_set(sets.directories(), typed_title(title + number), {}, {});
        Edit made(sets.directories(), {}, {}, true);
        edit(made, sets, number);
        return made.finish();
    }
    bool is_done(const Sets &sets, const std::string &number) const {
        const std::string whole = title + (title.ends_with("／") ? side_of(number) : "") + number;
        if (title.starts_with("例")) return sets.symbols(whole) == symbols;
        return (find_sets(sets.directories()).find(typed_title(whole).sjis) != nullptr) == (symbols != "-");
    }
};

const Work works[] = {
    {[](Edit &edit, const Sets &, const std::string &) { append(edit, "☆"); }, "例／甲", "-"}, // counted
    {[](Edit &edit, const Sets &, const std::string &number) { edit.locate("例"), edit.add(typed_title("題" + number)); }, "例／題", ""},
    {[](Edit &edit, const Sets &, const std::string &number) { edit.create(typed_title("新" + number)); }, "新", ""},
    {[](Edit &edit, const Sets &, const std::string &number) {
         edit.open(typed_title("例"));
         import_blocks(edit, {{typed_title("取" + number).sjis, data_of("※"), ""}});
     },
     "例／取", "※"},
    {[](Edit &edit, const Sets &sets, const std::string &number) {
         edit.locate(title_beginning(sets.snapshot(), side_of(number)));
         edit.rename(typed_title(side_of(number) + number));
     },
     "例／", ""},
    {{}, "捨", "-"},
};

TEST(editing, loses_none_of_two_edits_at_the_same_time) {
    const char *const asked = std::getenv("ACC_RACE_ROUNDS");
    const int rounds = asked ? std::atoi(asked) : 36;
    const Sets sets;
    std::size_t stars = 0;
    for (int i = 0; i < rounds; ++i) {
        // In every third round one of the two is killed somewhere on its way.
        const bool kills = i % 3 == 2;
        const Work *const both[] = {&works[i % 6], &works[i / 6 % 6]};
        for (const int number : {2 * i, 2 * i + 1}) {
            write_file(sets.common / (std::to_string(number) + ".kig"), symbol_file("捨" + std::to_string(number)));
        }
        const std::vector<int> codes = in_children(2, [&](int child) {
            if (kills && child == 1) die_in(1 + i * 37 % 6000);
            try {
                return both[child]->run(sets, std::to_string(2 * i + child)).saved ? 0 : 1;
            } catch (const std::exception &) {
                return 2;
            }
        });
        EXPECT_EQ(codes[0], 0) << "round " << i;
        EXPECT_TRUE(kills || codes[1] == 0) << "round " << i;
        for (int child = 0; child < 2; ++child) {
            if (codes[static_cast<std::size_t>(child)] != 0) continue; // killed: done or not done
            if (both[child] == &works[0]) ++stars;
            EXPECT_TRUE(both[child]->is_done(sets, std::to_string(2 * i + child))) << "round " << i << ", " << child;
            fs::remove(sets.common / (std::to_string(2 * i + child) + ".kig"));
        }
        const std::size_t held = symbols_in(sets.snapshot().data(1)).size() - 1;
        EXPECT_GE(held, stars) << "round " << i;
        stars = held; // one that was killed behind its save counts
    }
}

TEST(editing, makes_one_file_of_a_title_that_two_want) {
    const Sets sets;
    for (int i = 0; i < 10; ++i) {
        const Title title = typed_title("新" + std::to_string(i));
        const std::vector<int> codes = in_children(2, [&](int) {
            try {
                Edit edit(sets.directories(), {}, {}, true);
                edit.create(title);
                return edit.finish().saved ? 0 : 2;
            } catch (const Failure &failure) {
                return failure.kind() == FailureKind::refused ? 1 : 2;
            }
        });
        EXPECT_EQ(codes[0] + codes[1], 1);
        const auto files = find_sets(sets.directories()).sets;
        EXPECT_EQ(std::count_if(files.begin(), files.end(), [&](const SetFile &file) { return file.title.sjis == title.sjis; }), 1);
    }
}

TEST(editing, saves_nothing_over_a_file_that_was_changed_since) {
    const struct {
        const char *name;
        std::function<void(const Sets &)> change;
        bool saved;
    } cases[] = {
        {"not changed", [](const Sets &) {}, true},
        {"written anew with other symbols",
         [](const Sets &sets) { sets.put("rei.kig", symbol_file("例", block("甲", "←\n") + block("乙"))); }, false},
        {"replaced by another of the same size and time",
         [](const Sets &sets) {
             const auto time = fs::last_write_time(sets.file());
             sets.put("other", symbol_file("例", block("甲", "←\n") + block("乙")));
             fs::rename(sets.program / "other", sets.file());
             fs::last_write_time(sets.file(), time);
         },
         false},
        {"touched", [](const Sets &sets) { age(sets.file(), 0); }, true},
        {"gone", [](const Sets &sets) { fs::remove(sets.file()); }, false},
        {"no symbol file any more", [](const Sets &sets) { sets.put("rei.kig", "x"); }, false},
    };
    for (const auto &c : cases) {
        const Sets sets;
        Edit edit(sets.directories(), {}, {});
        append(edit, "※");
        c.change(sets);
        const auto there = files_in(sets.program);
        if (c.saved) {
            edit.finish();
            EXPECT_EQ(sets.symbols("例／甲"), "→※") << c.name;
            continue;
        }
        EXPECT_EQ(kind_of([&] { edit.finish(); }), FailureKind::changed) << c.name;
        EXPECT_EQ(files_in(sets.program), there) << c.name;
        edit.keep_as("別");
        EXPECT_TRUE(edit.finish().saved) << c.name;
        const Snapshot kept(find_sets(sets.directories()).get(typed_title("別")).path);
        EXPECT_EQ(symbols_in(kept.data(1)).size(), 2U) << c.name;
        EXPECT_TRUE(sets.temp_files().empty()) << c.name;
    }
}

TEST(editing, does_not_replace_a_file_that_took_the_title_meanwhile) {
    const Sets sets;
    Edit edit(sets.directories(), {}, {}, true);
    edit.create(typed_title("新"));
    write_file(sets.common / "theirs.kig", symbol_file("新", block("甲", "→\n")));
    const auto there = files_in(sets.common);
    EXPECT_EQ(kind_of([&] { edit.finish(); }), FailureKind::refused);
    EXPECT_EQ(files_in(sets.common), there);
}

TEST(editing, waits_for_another_and_says_so_and_can_be_stopped) {
    const Sets sets;
    Edit first(sets.directories(), {}, {});
    std::vector<std::string> told;
    bool stop = false;
    EditHooks hooks{.waits = [&](const std::string &folder) { told.push_back(folder); },
                    .stopped = [&] { return stop; },
                    .patience = std::chrono::milliseconds(30)};
    EXPECT_EQ(kind_of([&] { Edit(sets.directories(), {}, hooks); }), FailureKind::busy);
    EXPECT_EQ(told, std::vector<std::string>{sets.common});
    EditOptions dry_run;
    dry_run.dry_run = true;
    Edit(sets.directories(), dry_run, hooks); // saves nothing, so it need not wait
    stop = true;
    EXPECT_EQ(kind_of([&] { Edit(sets.directories(), {}, hooks); }), FailureKind::interrupted);
    stop = false;
    append(first, "※");
    first.finish();
    {
        Edit second(sets.directories(), {}, hooks); // the first one is done with the file
        append(second, "★");
        stop = true;
        EXPECT_EQ(kind_of([&] { second.finish(); }), FailureKind::interrupted);
    }
    EXPECT_EQ(sets.symbols("例／甲"), "→※");
    EXPECT_TRUE(sets.temp_files().empty());
}

TEST(editing, leaves_of_a_killed_process_what_is_not_saved_and_nothing_of_a_living_one) {
    const Sets sets;
    age(sets.file(), 30);
    in_children(1, [&](int) {
        Edit edit(sets.directories(), {}, {});
        append(edit, "※");
        return raise(SIGKILL);
    });
    ASSERT_EQ(sets.temp_files().size(), 1U);
    EXPECT_TRUE(sweep_leftovers(sets.directories()).empty()) << "a moment old";
    age(sets.temp_files()[0]);
    {
        Edit living(sets.directories(), {}, {});
        append(living, "★");
        for (const auto &file : sets.temp_files()) age(file);
        const auto left = sweep_leftovers(sets.directories());
        ASSERT_EQ(left.size(), 1U);
        EXPECT_EQ(left[0].title, "例");
        EXPECT_EQ(sets.temp_files().size(), 2U);
        living.finish();
    }
    EXPECT_EQ(sets.symbols("例／甲"), "→★");
    Recovered recovered = recover(sets.temp_files().at(0));
    recovered.rename(typed_title("救出"));
    const Snapshot kept(keep_recovered(sets.directories(), recovered, {}));
    EXPECT_EQ(kept.file().text, "救出");
    EXPECT_EQ(to_utf8(kept.data(1)), "→\r\n※\r\n");
    EXPECT_FALSE(recovered.header_damaged);
    const auto older = sweep_leftovers(sets.directories()); // the set is newer now, but lacks the ※
    ASSERT_EQ(older.size(), 1U);
    EXPECT_EQ(to_utf8(Snapshot(older[0].kept).data(1)), "→\r\n※\r\n");
    EXPECT_TRUE(sweep_leftovers(sets.directories()).empty());
    EXPECT_TRUE(sets.temp_files().empty());
}

/** Adds blocks to the first set, one edit of the library each. */
void add_one_by_one(const Sets &sets, const std::vector<SetBlock> &blocks) {
    for (const SetBlock &block : blocks) {
        const Title file = find_sets(sets.directories()).sets.front().title;
        Session session(sets.directories());
        session.open(file);
        const Title path = joined(file, block.path);
        session.add_title(title_of(parent_of(path.sjis)), title_of(Sjis(path.sjis.end() - 2, path.sjis.end())));
        session.set_data(path, block.data);
        session.save(file);
    }
}

TEST(editing, imports_as_if_the_titles_were_added_one_by_one_or_nothing) {
    const std::vector<SetBlock> blocks{{typed_title("龠").sjis, data_of("→"), ""},
                                       {typed_title("龠／龝").sjis, data_of("←"), ""},
                                       {typed_title("A／龠").sjis, data_of("↑"), ""}};
    int imported = 0, compared = 0, refused = 0;
    for (std::uint64_t i = 0; i < 150; ++i) {
        SCOPED_TRACE("odd file " + std::to_string(i));
        Choice choice(11, i);
        const std::string bytes = OddFiles(choice).symbol_file("T");
        const Sets one, other;
        one.put("rei.kig", bytes);
        other.put("rei.kig", bytes);
        if (find_sets(one.directories()).sets.empty()) continue;
        const Snapshot before = one.snapshot();
        const std::vector<SetBlock> added(blocks.begin(), blocks.end() - (before.find(typed_title("T／A").sjis) ? 0 : 1));
        try {
            Edit edit(other.directories(), {}, {});
            edit.open(before.file());
            import_blocks(edit, added);
            edit.finish();
        } catch (const Failure &) {
            EXPECT_EQ(::read_file(other.file()), bytes);
            ++refused;
            continue;
        }
        ++imported;
        const Snapshot after = other.snapshot();
        EXPECT_EQ(bytes.find('\0'), std::string::npos);
        EXPECT_EQ(after.size(), before.size() + added.size());
        for (std::size_t number = 0; number < before.size(); ++number) {
            const auto there = after.find(before.path_of(number));
            ASSERT_TRUE(there) << before.title(number).text;
            const auto first = before.find(before.path_of(number));
            EXPECT_TRUE(std::ranges::equal(after.data(*there), before.data(*first)));
        }
        try {
            add_one_by_one(one, added);
            EXPECT_EQ(::read_file(other.file()), ::read_file(one.file()));
            ++compared;
        } catch (const Failure &) {
            continue; // the library adds no title below one without a parent
        }
    }
    EXPECT_GT(imported, 50);
    EXPECT_GT(compared, 30);
    EXPECT_GT(refused, 5);
}

} // namespace
} // namespace kigou
