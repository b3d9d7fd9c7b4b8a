// Snapshots against the library's own lists, on files from well-formed to anything but.
#include "picker/snapshot.h"

#include <gtest/gtest.h>

#include "fuzz/odd_files.h"
#include "picker/session.h"
#include "picker/set_files.h"
#include "picker/set_text.h"
#include "picker/symbol_data.h"
#include "picker/symbol_places.h"
#include "tests/picker/edits.h"

namespace kigou {
namespace {

std::vector<Sjis> paths_of(const std::vector<Title> &titles) {
    std::vector<Sjis> paths;
    for (const Title &title : titles) paths.push_back(title.sjis);
    return paths;
}

/** What one title holds, in a form that a failure can show. */
struct Shown {
    std::vector<Sjis> titles, symbols;
    bool operator==(const Shown &) const = default;
};

/** Compares all that both show of the only file of a workspace. @return lists that were compared */
std::size_t compare(const Workspace &workspace, const std::string &name) {
    const std::vector<SetFile> sets = find_sets(directories_of(workspace)).sets;
    Session session(directories_of(workspace));
    EXPECT_EQ(paths_of(session.file_titles().items).size(), sets.size()) << name;
    if (sets.empty()) return 0;
    EXPECT_EQ(session.file_titles().items.front().sjis, sets.front().title.sjis) << name;
    try {
        session.open(sets.front().title);
    } catch (const Failure &) {
        return 0; // the library opens less
    }
    const Snapshot snapshot(sets.front().path);
    const Listing<Title> tree = session.tree();
    std::vector<Sjis> paths;
    for (std::size_t i = 0; i < snapshot.size(); ++i) paths.push_back(snapshot.title(i).sjis);
    if (tree.cut_short) paths.resize(tree.items.size());
    EXPECT_EQ(paths_of(tree.items), paths) << name;
    std::size_t lists = 0;
    for (const Title &title : tree.items) {
        Contents contents;
        try {
            contents = session.contents(title);
        } catch (const Failure &) {
            continue; // the library shows no title without a parent, and none below list box 10
        }
        if (contents.cut_short) continue;
        const auto number = snapshot.find(title.sjis);
        if (!number) {
            ADD_FAILURE() << name;
            continue;
        }
        Shown shown{{}, symbols_in(snapshot.data(*number))};
        for (const std::size_t child : snapshot.children(*number)) shown.titles.push_back(snapshot.title(child).sjis);
        EXPECT_EQ(shown, (Shown{paths_of(contents.titles), contents.symbols})) << name << " " << title.text;
        EXPECT_EQ(shown.symbols.size(), snapshot.symbol_count(*number)) << name << " " << title.text;
        ++lists;
    }
    EXPECT_EQ(SetText(snapshot).text(), snapshot.text()) << name;
    return lists;
}

TEST(snapshot, has_the_lists_of_the_library) {
    std::size_t lists = 0;
    for (const auto &file : std::filesystem::directory_iterator(ACC_SOURCE_DIR "/fuzz/corpus/symbol_file")) {
        const Workspace workspace;
        std::filesystem::copy_file(file, workspace.program / "x.kig");
        lists += compare(workspace, file.path().filename());
    }
    for (std::uint64_t i = 0; i < 400; ++i) {
        const Workspace workspace;
        Choice choice(9, i);
        OddFiles files(choice);
        workspace.put("x.kig", files.symbol_file(files.file_title()));
        lists += compare(workspace, "odd file " + std::to_string(i));
    }
    EXPECT_GT(lists, 1000U);
}

TEST(snapshot, goes_on_where_the_lists_of_the_library_end) {
    const Workspace workspace;
    std::string symbols, blocks;
    for (int i = 0; i < 30000; ++i) symbols += "★";
    for (int i = 0; i < 9000; ++i) blocks += block("題" + std::to_string(i));
    blocks += block("一／二／三／四／五／六／七／八／九／十／十一", "→\n");
    workspace.put("x.kig", symbol_file("例", block("多", symbols + "→\n") + blocks));
    const std::string path = workspace.program / "x.kig";
    const Snapshot snapshot(path);
    EXPECT_EQ(snapshot.size(), 9003U);
    EXPECT_EQ(snapshot.symbol_count(1), 30001U);
    EXPECT_EQ(snapshot.children(0).size(), 9001U);
    EXPECT_EQ(snapshot.level(9002), 12U);
    const SymbolPlaces places = places_of({typed_title("→").sjis, typed_title("☆").sjis}, {{snapshot.file(), path}});
    const std::vector<std::string> expected{"例／多", "例／一／二／三／四／五／六／七／八／九／十／十一"};
    EXPECT_EQ(places.paths[0], expected);
    EXPECT_TRUE(places.paths[1].empty());
}

} // namespace
} // namespace kigou
