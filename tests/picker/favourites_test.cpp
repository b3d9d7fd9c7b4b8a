// The favourites: made at their first use, kept in order, and whole after a person's hand.
#include "picker/favourites.h"

#include <gtest/gtest.h>

#include "tests/support/workspace.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

struct Own : Workspace {
    Favourites favourites{Directories{program, common, user}};

    std::string text() const {
        std::string text;
        for (const Sjis &symbol : favourites.read()) text += to_utf8(symbol);
        return text;
    }
    void write(const std::string &bytes) const { write_file(common / "own.kig", bytes); }

    /** Title by title, "|" between lines. */
    std::string layout() const {
        const SetFiles sets = find_sets({program, common, user});
        const Snapshot file(sets.get(typed_title(std::string(favourites_title))).path);
        std::string text;
        for (std::size_t i = 1; i < file.size(); ++i) {
            if (i > 1) text += ' ';
            text += last_title(file.title(i).text) + ':';
            for (const char byte : to_utf8(file.data(i))) text += byte == '\r' ? "|" : byte == '\n' ? "" : std::string(1, byte);
        }
        return text;
    }
};

std::string failure_of(const std::function<void()> &work) {
    try {
        work();
    } catch (const Failure &failure) {
        return failure.advice().empty() ? "no advice" : failure.advice().front().subject;
    }
    return "did not fail";
}

TEST(favourites, are_a_set_that_is_made_at_the_first_use) {
    const Own own;
    fs::remove(own.common);
    EXPECT_EQ(own.text(), "");
    own.favourites.remove(to_sjis("→"), {});
    own.favourites.move(to_sjis("→"), 0, {});
    EXPECT_FALSE(fs::exists(own.common)) << "nothing was added yet";
    const EditReport report = own.favourites.add(to_sjis("→"), {});
    EXPECT_TRUE(report.saved);
    EXPECT_EQ(report.changes.size(), 2U);
    for (const char *symbol : {"★", "→", "　", "①"}) own.favourites.add(to_sjis(symbol), {});
    EXPECT_EQ(own.layout(), "記号:→★　①|");
    EXPECT_TRUE(own.favourites.has(to_sjis("①")));
    EXPECT_FALSE(own.favourites.has(to_sjis("②")));
    EXPECT_FALSE(own.favourites.add(to_sjis("★"), {}).saved);
    for (char digit = '0'; digit <= '9'; ++digit) own.favourites.add({0x82, static_cast<unsigned char>(digit + 0x1F)}, {});
    EXPECT_EQ(own.layout(), "記号:→★　①０１２３４５|６７８９|");
    EXPECT_TRUE(own.favourites.remove(to_sjis("★"), {}).saved);
    EXPECT_EQ(own.layout(), "記号:→　①０１２３４５|６７８９|");
    EXPECT_EQ(files_in(own.common / "backup").size(), 1U);
    EXPECT_FALSE(own.favourites.remove(to_sjis("★"), {}).saved);
    EXPECT_EQ(failure_of([&] { own.favourites.add({'A'}, {}); }).substr(0, own.common.string().size()), own.common);
    EXPECT_EQ(find_sets({own.program, own.common, own.user}).sets.size(), 1U);
}

TEST(favourites, keep_what_a_person_did_by_hand) {
    using Act = std::function<EditReport(const Favourites &)>;
    const auto add = [](const char *symbol) -> Act { return [=](const Favourites &own) { return own.add(to_sjis(symbol), {}); }; };
    const auto remove = [](const char *symbol) -> Act { return [=](const Favourites &own) { return own.remove(to_sjis(symbol), {}); }; };
    const auto move = [](const char *symbol, std::size_t place) -> Act {
        return [=](const Favourites &own) { return own.move(to_sjis(symbol), place, {}); };
    };
    const std::string two = block("甲", "→←\n★\n") + block("甲／乙") + block("丙", "★☆\n※\n");
    const struct {
        const char *name;
        std::string blocks;
        Act act;
        std::string layout, symbols;
        bool saved = true;
    } cases[] = {
        {"add to the first title", two, add("↑"), "甲:→←|★↑| 乙: 丙:★☆|※|", "→←★↑☆※"},
        {"add what another title has", two, add("※"), "甲:→←|★| 乙: 丙:★☆|※|", "→←★☆※", false},
        {"add to an empty title", block("甲"), add("↑"), "甲:↑|", "↑"},
        {"add where no title is left", "", add("↑"), "記号:↑|", "↑"},
        {"add behind a line without end", block("甲", "→"), add("↑"), "甲:→↑|", "→↑"},
        {"remove from all titles", two, remove("★"), "甲:→←| 乙: 丙:☆|※|", "→←☆※"},
        {"remove the last", block("甲", "→\n"), remove("→"), "甲:", ""},
        {"remove what is not there", two, remove("↑"), "甲:→←|★| 乙: 丙:★☆|※|", "→←★☆※", false},
        {"move to the start", two, move("※", 0), "甲:※→←|★| 乙: 丙:★☆|", "※→←★☆"},
        {"move to the end", two, move("→", 4), "甲:←|★| 乙: 丙:★☆|※→|", "←★☆※→"},
        {"move far behind the end", two, move("→", 99), "甲:←|★| 乙: 丙:★☆|※→|", "←★☆※→"},
        {"move one forth", two, move("→", 1), "甲:←→|★| 乙: 丙:★☆|※|", "←→★☆※"},
        {"move one back", two, move("☆", 2), "甲:→←|☆★| 乙: 丙:★|※|", "→←☆★※"},
        {"move to where it is", two, move("☆", 3), "甲:→←|★| 乙: 丙:★☆|※|", "→←★☆※", false},
        {"move the only one", block("甲", "→\n"), move("→", 5), "甲:→|", "→", false},
        {"move what is not there", two, move("↑", 0), "甲:→←|★| 乙: 丙:★☆|※|", "→←★☆※", false},
        {"two titles of one name", block("甲", "→\n") + block("甲", "←★\n"), remove("←"), "甲:→| 甲:★|", "→★"},
    };
    for (const auto &c : cases) {
        const Own own;
        own.write(symbol_file("お気に入り", c.blocks));
        EXPECT_EQ(c.act(own.favourites).saved, c.saved) << c.name;
        EXPECT_EQ(own.layout(), c.layout) << c.name;
        EXPECT_EQ(own.text(), c.symbols) << c.name;
        EXPECT_TRUE(own.temp_files().empty()) << c.name;
    }
}

TEST(favourites, that_are_spoilt_are_told_and_not_made_again) {
    const std::string good = symbol_file("お気に入り", block("記号", "→\n"));
    const Sjis sjis = to_sjis("〈記号〉\n名称=お気に入り\n");
    const struct {
        const char *name;
        std::string bytes;
        bool reads = false, adds = false;
    } cases[] = {
        {"first line gone", good.substr(good.find('\n') + 1)},
        {"saved as UTF-8", "〈記号〉\n名称=お気に入り\n"},
        {"saved as Shift_JIS", {sjis.begin(), sjis.end()}},
        {"another set that is spoilt", "〈記号〉\n名称=例\n", true, true},
    };
    for (const auto &c : cases) {
        const Own own;
        own.write(c.bytes);
        const std::string path = own.common / "own.kig";
        EXPECT_EQ(failure_of([&] { own.favourites.read(); }), c.reads ? "did not fail" : path) << c.name;
        EXPECT_EQ(failure_of([&] { own.favourites.add(to_sjis("☆"), {}); }), c.adds ? "did not fail" : path) << c.name;
        if (!c.adds) {
            EXPECT_EQ(files_in(own.common)["own.kig"], c.bytes) << c.name;
        }
    }
    {
        const Own own;
        const std::string half(20, '-'), bytes = symbol_file("お気に入り", block("甲", half + "→" + half + "\n"));
        own.write(bytes);
        EXPECT_EQ(failure_of([&] { own.favourites.remove(to_sjis("→"), {}); }), own.common / "own.kig") << "an end line would come about";
        EXPECT_EQ(files_in(own.common)["own.kig"], bytes);
    }
    const Own own;
    fs::create_directory(own.common / "folder.kig");
    fs::create_symlink("nowhere", own.common / "own.kig"); // it cannot be read: a disk that is not there now
    EXPECT_EQ(own.text(), "");
    EXPECT_EQ(failure_of([&] { own.favourites.add(to_sjis("→"), {}); }), own.common / "own.kig");
}

} // namespace
} // namespace kigou
