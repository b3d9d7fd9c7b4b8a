// Undo and redo: the file has the bytes that it had, or it was said that it will not.
#include "picker/history.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fuzz/odd_files.h"
#include "tests/picker/edits.h"
#include "tests/support/children.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

/** The set 例 in the program folder. */
struct Sets : Workspace {
    Sets() { put("rei.kig", symbol_file("例", block("甲", "→\n") + block("甲／乙", "★") + block("丙"))); }

    Directories directories = directories_of(*this);
    History history{directories};

    /** Paths and bytes of all sets. */
    Files files() const {
        Files files;
        for (const fs::path &folder : {program, common}) {
            for (const auto &file : fs::directory_iterator(folder)) {
                if (file.path().extension() == ".kig") files[file.path()] = ::read_file(file.path());
            }
        }
        return files;
    }

    EditReport edit(const std::string &path, const std::function<void(Edit &)> &work, const EditOptions &options = {}) {
        Edit edit(directories, options, {}, true);
        if (!path.empty()) edit.locate(path);
        work(edit);
        return history.finish(edit);
    }
};

std::multiset<std::string> bytes_of(const Files &files) {
    std::multiset<std::string> bytes;
    for (const auto &file : files) bytes.insert(file.second);
    return bytes;
}

std::function<void(Edit &)> putting(const std::string &symbols, bool append = true) {
    return [=](Edit &edit) { edit.put(data_of(symbols), append); };
}

void import(Edit &edit) {
    import_blocks(edit, {{typed_title("甲").sjis, data_of("☆"), ""}, {typed_title("戊／己").sjis, data_of("→"), ""}});
}

TEST(history, takes_back_each_kind_of_edit_and_makes_it_again) {
    EditOptions as;
    as.as = "写し";
    const std::vector<Sjis> stars{to_sjis("★"), to_sjis("☆")};
    struct Case {
        const char *name;
        std::string path; /**< empty: nothing is opened */
        std::function<void(Edit &)> work;
        EditOptions options{};
        bool makes_file = false;
    };
    const auto make = [](Edit &edit) { edit.create(typed_title("新")); };
    const Case cases[] = {
        {"add", "例/甲", [](Edit &edit) { edit.add(typed_title("子")); }},
        {"rename", "例/甲", [](Edit &edit) { edit.rename(typed_title("長い題")); }},
        {"rename the file", "例", [](Edit &edit) { edit.rename(typed_title("長い題")); }},
        {"remove", "例/甲", [](Edit &edit) { edit.remove(); }},
        {"put", "例/甲/乙", putting("→←↑↓", false)},
        {"put nothing", "例/甲/乙", [](Edit &edit) { edit.put({}, false); }},
        {"append", "例/甲/乙", putting("★")},
        {"copy", "例/丙", [&](Edit &edit) { edit.copy(stars); }},
        {"import", "例", import},
        {"make", "", make, {}, true},
        {"make and import", "", [=](Edit &edit) { make(edit), import(edit); }, {}, true},
        {"keep as another", "例/甲", [](Edit &edit) { edit.remove(); }, as, true},
        {"keep a copy", "例", [](Edit &) {}, as, true},
        {"delete", "例", {}, {}, true},
    };
    for (const auto &c : cases) {
        Sets sets;
        const Files before = sets.files();
        c.work ? sets.edit(c.path, c.work, c.options) : sets.history.delete_set(typed_title(c.path), {}, {});
        const Files after = sets.files();
        EXPECT_NE(after, before) << c.name;
        for (const bool back : {true, false, true, false}) {
            const HistoryStep step = back ? *sets.history.to_undo() : *sets.history.to_redo();
            EXPECT_EQ(step.refusal, "") << c.name;
            const EditReport report = back ? sets.history.undo({}) : sets.history.redo({});
            EXPECT_EQ(report.changes.size(), step.changes.size()) << c.name;
            const Files &expected = back ? before : after, now = sets.files();
            EXPECT_EQ(bytes_of(now), bytes_of(expected)) << c.name << (back ? ", undone" : ", redone");
            EXPECT_TRUE(c.makes_file || (now == expected && step.differences.empty())) << c.name;
            EXPECT_TRUE(now == expected || !step.differences.empty()) << c.name;
        }
        EXPECT_TRUE(sets.temp_files().empty()) << c.name;
    }
}

TEST(history, says_what_of_a_file_will_not_come_back) {
    const std::string sound = symbol_file("例", block("甲", "→\n") + block("乙"));
    const struct {
        const char *name;
        std::string bytes, told;
    } cases[] = {
        {"text outside of titles, CR LF", sound + "free\r\n text\n", ""},
        {"CR", sound + "free\rtext\n", "CR in "},
        {"no end line", sound.substr(0, sound.size() - 41), "the end that it lacks"},
        {"no EUC-JP", sound + "\x8F\xA2\xB7\n", "no EUC-JP"},
        {"half a character at the end", sound + "\xA4", "no EUC-JP"},
        {"NUL", sound + std::string("\0 behind", 8), "NUL"},
    };
    for (const auto &c : cases) {
        Sets sets;
        sets.put("rei.kig", c.bytes);
        const bool deletes = c.told == "NUL"; // no other edit of it is made
        deletes ? sets.history.delete_set(typed_title("例"), {}, {}) : sets.edit("例", import);
        const HistoryStep step = *sets.history.to_undo();
        EXPECT_EQ(step.differences.size(), (c.told.empty() ? 0 : 1) + (deletes ? 1 : 0)) << c.name;
        if (!c.told.empty()) {
            EXPECT_NE(step.differences.at(0).find(c.told), std::string::npos) << c.name << ": " << step.differences[0];
        }
        sets.history.undo({});
        EXPECT_EQ(bytes_of(sets.files()).count(c.bytes) == 1, c.told.empty()) << c.name;
        sets.history.redo({});
        EXPECT_EQ(sets.history.to_undo()->differences.size(), deletes ? 1U : 0U) << c.name << ": it was as a save leaves it";
    }
}

TEST(history, says_what_the_library_will_not_take_again) {
    const std::string long_path = std::string(250, 'A') + "／" + std::string(250, 'A') + "／A234567890";
    const std::pair<const char *, std::string> cases[] = {
        {"long title", symbol_file("T", block(std::string(257, 'A')))},
        {"long path", symbol_file("T", block(long_path))},
        {"deep path", symbol_file("T", block("一／二／三／四／五／六／七／八／九／十"))},
        {"a save would make it Tremark", symbol_file("T\rremark", block("甲", "→\n"))},
    };
    for (const auto &[name, bytes] : cases) {
        Sets sets;
        sets.put("rei.kig", bytes);
        sets.history.delete_set(typed_title("T"), {}, {});
        EXPECT_NE(sets.history.to_undo()->refusal, "") << name;
        EXPECT_EQ(kind_of([&] { sets.history.undo({}); }), FailureKind::refused) << name;
        EXPECT_TRUE(sets.files().empty()) << name;
    }
}

TEST(history, leaves_a_file_alone_that_is_not_as_the_edit_left_it) {
    const std::string put = symbol_file("例", block("甲", "→\n") + block("甲／乙", "★") + block("丙", "☆\n"));
    struct Case {
        const char *name, *bytes; /**< null: the file goes */
        FailureKind kind;
    };
    const std::string star = symbol_file("例", block("甲", "→\n") + block("甲／乙", "★") + block("丙", "★\n")), cr = put + "\r";
    const Case cases[] = {{"other symbols of the same length", star.c_str(), FailureKind::changed},
                          {"CR alone", cr.c_str(), FailureKind::changed},
                          {"gone", nullptr, FailureKind::nothing_found},
                          {"no symbol file", "x", FailureKind::nothing_found}};
    for (const auto &c : cases) {
        Sets sets;
        const auto change = [&] { c.bytes ? sets.put("rei.kig", c.bytes) : void(fs::remove(sets.program / "rei.kig")); };
        const Files before = sets.files();
        sets.edit("例/丙", putting("☆"));
        change();
        const Files changed = sets.files();
        EXPECT_EQ(kind_of([&] { sets.history.undo({}); }), c.kind) << c.name;
        EXPECT_EQ(sets.files(), changed) << c.name;
        sets.put("rei.kig", put);
        EXPECT_EQ(::read_file(sets.history.undo({}).backup), put) << c.name << ": the step was kept";
        EXPECT_EQ(sets.files(), before) << c.name;
        change();
        EXPECT_EQ(kind_of([&] { sets.history.redo({}); }), c.kind) << c.name;
        EXPECT_TRUE(sets.temp_files().empty()) << c.name;
    }
    Sets sets;
    const std::string path = sets.edit("", [](Edit &edit) { edit.create(typed_title("新")); }).path;
    write_file(find_sets(sets.directories).get(typed_title("新")).path, symbol_file("新", block("大切", "→\n")));
    EXPECT_EQ(kind_of([&] { sets.history.undo({}); }), FailureKind::changed) << "it is not deleted";
}

TEST(history, does_not_hide_a_set_that_has_the_title_by_now) {
    for (const bool deletes : {true, false}) {
        Sets sets;
        write_file(sets.common / "two.kig", symbol_file("例", block("後", "→\n")));
        const auto rename = [](Edit &edit) { edit.rename(typed_title("長い題")); };
        deletes ? sets.history.delete_set(typed_title("例"), {}, {}) : sets.edit("例", rename);
        EXPECT_NE(sets.history.to_undo()->refusal, "");
        const Files files = sets.files();
        EXPECT_EQ(kind_of([&] { sets.history.undo({}); }), FailureKind::refused);
        EXPECT_EQ(sets.files(), files);
        fs::remove(sets.common / "two.kig");
        EXPECT_EQ(sets.history.undo({}).file, "例");
    }
}

TEST(history, keeps_a_step_that_could_not_be_taken) {
    Sets sets;
    const Files before = sets.files();
    sets.edit("例/丙", import);
    const Files after = sets.files();
    const EditHooks hurry{.patience = std::chrono::milliseconds(10)}, stopped{.stopped = [] { return true; }};
    for (const bool back : {true, false}) {
        const auto take = [&](const EditHooks &hooks) { return back ? sets.history.undo(hooks) : sets.history.redo(hooks); };
        {
            const FolderLock other(sets.common, {});
            EXPECT_EQ(kind_of([&] { take(hurry); }), FailureKind::busy);
        }
        EXPECT_EQ(kind_of([&] { take(stopped); }), FailureKind::interrupted);
        setenv("TMPDIR", "nowhere", 1);
        EXPECT_EQ(kind_of([&] { take({}); }), FailureKind::failed);
        setenv("TMPDIR", sets.temp.c_str(), 1);
        EXPECT_EQ(sets.files(), back ? after : before);
        take({});
        EXPECT_EQ(sets.files(), back ? before : after);
    }
    int killed = 0;
    for (int round = 0; round < 24; ++round) {
        in_children(1, [&](int) {
            die_in(1 + round * 331 % 8000);
            sets.history.undo({});
            return 0;
        });
        const Files now = sets.files();
        EXPECT_TRUE(now == before || now == after) << "killed, round " << round;
        killed += now == after ? 1 : 0;
        sets.put("rei.kig", after.at(sets.program / "rei.kig"));
    }
    EXPECT_GT(killed, 0);
}

TEST(history, forgets_what_a_new_edit_replaces_and_what_is_too_much) {
    Sets sets;
    const auto add = [&](const std::string &titles) {
        for (const char32_t title : to_characters(titles)) sets.edit("例", [&](Edit &edit) { edit.add(typed_title(to_utf8(title))); });
    };
    const auto steps = [&] {
        std::string text;
        while (const auto step = sets.history.to_undo()) {
            text += last_title(step->changes.front().path);
            sets.history.undo({});
        }
        return text;
    };
    add("一二三");
    sets.history.undo({});
    sets.history.undo({});
    EditOptions dry_run;
    dry_run.dry_run = true;
    sets.edit("例/丙", putting("★"), dry_run);
    EXPECT_TRUE(sets.history.to_redo()) << "a dry run is no edit";
    add("四");
    EXPECT_FALSE(sets.history.to_redo());
    EXPECT_EQ(steps(), "四一");
    EXPECT_EQ(kind_of([&] { sets.history.undo({}); }), FailureKind::refused);
    sets.history = History(sets.directories, 2);
    add("一二三");
    EXPECT_EQ(steps(), "三二");
    sets.history = History(sets.directories, 100, 10000);
    add("四五");
    sets.edit("例/丙", putting(std::string(12000, '*')));
    add("六");
    EXPECT_EQ(steps(), "六") << "what lies below cannot be reached";
}

/** A random edit of a random set; false for one that was not made. */
bool any_edit(Sets &sets, Choice &choice, OddFiles &odd) {
    const SetFiles files = find_sets(sets.directories);
    if (files.sets.empty()) return false;
    const SetFile &set = choice.of(files.sets);
    const auto sjis = [](const std::string &bytes) { return Sjis(bytes.begin(), bytes.end()); };
    const auto title = [&] { return title_of(sjis(odd.new_title())); };
    const auto import_odd = [&](Edit &edit) {
        LeftOutList left_out;
        const Title first = title();
        import_set(edit, {{}, {{first.sjis, sjis(odd.new_data()), ""}, {joined(first, title().sjis).sjis, {}, ""}}}, left_out);
    };
    try {
        const Snapshot snapshot(set.path);
        const std::string path = snapshot.title(choice.below(snapshot.size())).text;
        if (path.empty()) return false; // a file without a title
        EditOptions options;
        if (choice.one_in(8)) options.as = title().text;
        const std::function<void(Edit &)> of_title[] = {[&](Edit &edit) { edit.add(title()); }, [&](Edit &edit) { edit.rename(title()); },
                                                        [&](Edit &edit) { edit.rename(title()); }, [&](Edit &edit) { edit.remove(); },
                                                        [&](Edit &edit) { edit.put(sjis(odd.new_data()), choice.one_in(2)); }};
        const std::function<void(Edit &)> of_file[] = {[&](Edit &edit) { edit.create(title()), import_odd(edit); },
                                                       [&](Edit &edit) { edit.open(set.title), import_odd(edit); }};
        const std::size_t kind = choice.below(8);
        if (kind == 0) return sets.history.delete_set(set.title, {}, {}).saved;
        return (kind < 3 ? sets.edit("", of_file[kind - 1], options) : sets.edit(path, of_title[kind - 3], options)).saved;
    } catch (const Failure &) {
        return false; // the library or the core refuses it
    }
}

TEST(history, takes_back_any_edits_of_odd_files_and_makes_them_again) {
    const char *const asked = std::getenv("ACC_HISTORY_WALKS");
    const std::uint64_t walks = asked ? static_cast<std::uint64_t>(std::atoi(asked)) : 40;
    int steps = 0, inexact = 0, refused = 0;
    for (std::uint64_t walk = 0; walk < walks; ++walk) {
        Choice choice(23, walk);
        OddFiles odd(choice);
        Sets sets;
        sets.put("rei.kig", odd.symbol_file(odd.file_title()));
        write_file(sets.common / "own.kig", odd.symbol_file(odd.file_title()));
        using State = std::multiset<std::string>;
        std::vector<State> states{bytes_of(sets.files())};
        for (int i = 0; i < 8; ++i) {
            if (any_edit(sets, choice, odd)) states.push_back(bytes_of(sets.files()));
        }
        std::size_t at = states.size() - 1;
        const auto take = [&](bool back) {
            const HistoryStep step = back ? *sets.history.to_undo() : *sets.history.to_redo();
            const std::string where = "walk " + std::to_string(walk) + (back ? ", undo " : ", redo ") + std::to_string(at);
            try {
                back ? sets.history.undo({}) : sets.history.redo({});
                EXPECT_EQ(step.refusal, "") << where;
            } catch (const Failure &failure) {
                EXPECT_NE(step.refusal, "") << where << ": " << failure.what();
                ++refused;
                return false;
            }
            at = back ? at - 1 : at + 1;
            ++steps;
            const State now = bytes_of(sets.files());
            State lost, came;
            std::ranges::set_difference(states[at], now, std::inserter(lost, lost.end()));
            std::ranges::set_difference(now, states[at], std::inserter(came, came.end()));
            const bool exact =
                std::ranges::all_of(step.differences, [](const std::string &line) { return line.find("made anew") != line.npos; });
            EXPECT_EQ(lost.empty(), exact) << where;
            inexact += exact ? 0 : 1;
            for (State &state : states) { // such a file stays as it is now
                for (const std::string &bytes : lost) {
                    if (state.erase(bytes) != 0) state.insert(came.begin(), came.end());
                }
            }
            return true;
        };
        for (int round = 0; round < 2; ++round) {
            while (sets.history.to_undo() && take(true)) continue;
            while (sets.history.to_redo() && take(false)) continue;
        }
        EXPECT_TRUE(sets.temp_files().empty()) << "walk " << walk;
    }
    EXPECT_GT(steps, 10 * static_cast<int>(walks));
    EXPECT_GT(inexact, 0);
    EXPECT_GT(refused, 0);
}

} // namespace
} // namespace kigou
