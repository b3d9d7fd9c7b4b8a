// Picking by scripts of actions, and what a front end would draw.
#include "picker/picking/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/support/children.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

/** Words of a script, in the order of Act; "-" is never used. */
const std::string act_names =
    " next prev pgdn pgup first last - enter - back sets take stay - - drop tab backtab sibling backsibling search - erase show found unfound "
    "complete copy move add new rename remove raise lower undo redo save finish cancel ";

Act act_of(const std::string &word) {
    const std::size_t at = act_names.find(' ' + word + ' ');
    EXPECT_NE(at, std::string::npos) << word;
    return static_cast<Act>(std::count(act_names.begin(), act_names.begin() + static_cast<std::ptrdiff_t>(at), ' '));
}

/** Words of a script: an action, a digit, or "=text" to type. */
void run(Picking &picking, const std::string &script) {
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        if (word.front() == '=') {
            picking.act({Act::type, word.substr(1)});
        } else if (std::isdigit(static_cast<unsigned char>(word.front()))) {
            picking.act({.act = Act::take_number, .number = std::stoul(word)});
        } else if (word.front() == '#') {
            for (const char digit : word.substr(1)) {
                picking.act({.act = Act::digit, .number = static_cast<std::size_t>(digit - '0')});
            }
        } else {
            picking.act({act_of(word)});
        }
    }
}

/** "列1 列2 | 項[目] ..." of what the view has: columns, the cursor in brackets, sets sorted. */
std::string drawn(const Picking &picking, std::size_t columns = 9) {
    const View view = picking.view(columns);
    std::string text;
    for (std::size_t c = 0; c < view.columns.size(); ++c) {
        if (c != 0) text += " | ";
        const ViewColumn &column = view.columns[c];
        if (column.first != 0) text += std::to_string(column.first) + ":";
        std::vector<std::string> items;
        for (std::size_t i = 0; i < column.items.size(); ++i) {
            const std::string label = column.items[i].label + (column.items[i].below ? "/" : "");
            items.push_back(column.cursor == i ? "[" + label + "]" : label + " ");
        }
        // Sets stand in the order of their folder, which is the file system's.
        const bool sets = !view.searching && column.path.empty();
        if (sets) std::ranges::sort(items, {}, [](const std::string &item) { return item.substr(item.front() == '['); });
        for (const std::string &item : items) text += item;
    }
    if (view.searching) text += " ?" + view.query;
    if (view.symbol) text += " =" + view.symbol->name;
    if (!view.number.empty()) text += " #" + view.number;
    if (!view.asking.empty()) text += " " + view.asking + ":" + view.answer;
    if (!view.picks.empty()) text += " +" + view.picks;
    if (!view.message.empty()) text += " !" + view.message;
    return text;
}

class PickingTest : public ::testing::Test {
  public:
    PickingTest() {
        workspace.put("a.kig", symbol_file("標準の記号", block("図", "○●\n◎◇◆\n") + block("図／星", "☆★\n") + block("矢印", "→←↑↓\n") +
                                                             block("孤／子", "※\n")));
        write_file(workspace.common / "b.kig", symbol_file("私", block("単位", "℃\n")));
    }
    Shelf shelf() const { return {{workspace.program, workspace.common, workspace.user}, Recents(workspace.root / "state")}; }
    Workspace workspace;
};

/** Folders of its own, for a row that changes them. */
struct Fresh : PickingTest {
    void TestBody() override {}
};

TEST_F(PickingTest, follows_its_actions) {
    Shelf all = shelf();
    const struct {
        const char *script, *drawn, *picks;
    } rows[] = {
        {"", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ", ""},
        {"enter last enter back", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形 +◆", "◆"},
        {"next next enter", "[標準の記号/]私/  | 図/ [矢印] | [→]← ↑  =右矢印", ""},
        {"prev back back", "[標準の記号/]私/  | 図/ 矢印 ", ""},
        {"enter next next next next", "[標準の記号/]私/  | [図/]矢印  | 3:◎ [◇]◆  =ひし形", ""},
        {"tab tab", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | [☆]★  =白星", ""},
        {"backtab", "[標準の記号/]私/  | [図/]矢印  | [※] =米印", ""},
        {"tab tab tab tab tab", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★ ", ""},
        {"enter enter sibling", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | [☆]★  =白星", ""},
        {"enter sibling", "[標準の記号/]私/  | 図/ [矢印] | [→]← ↑  =右矢印", ""},
        {"enter last sibling next sibling", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形", ""},
        {"enter backsibling", "[標準の記号/]私/  | 図/ [矢印] | [→]← ↑  =右矢印", ""},
        {"sibling", "標準の記号/ [私/] | [単位] | ℃ ", ""},
        {"sets sibling", "[標準の記号/]私/  | 図/ 矢印 ", ""},
        {"enter pgdn", "[標準の記号/]私/  | [図/]矢印  | 3:[◎]◇ ◆  =二重丸", ""},
        {"enter pgdn pgup", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★ ", ""},
        {"enter pgdn pgdn pgdn", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形", ""},
        {"enter 2", "[標準の記号/]私/  | [図/]矢印  | 星 [○]●  =丸印 +○", "○"},
        {"enter 9", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★ ", ""},
        {"enter 1", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | [☆]★  =白星", ""},
        {"enter last stay prev stay drop", "[標準の記号/]私/  | [図/]矢印  | 3:◎ [◇]◆  =ひし形 +◆", "◆"},
        {"enter last stay back finish", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ●  +◆", "◆"},
        {"enter last stay cancel", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形", ""},
        {"tab last take", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形 +◆", "◆"},
        {"search =ほ =し next stay back", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ●  +★", "★"},
        {"search =ほしx erase next show", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ [★] =黒星", ""},
        {"search =yajirusu", " ?yajirusu !meant やじるし?", ""},
        {"search =1-78 show", "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号", ""},
        {"search =95-1", " ?95-1 !kuten 95-1 is outside of the table, which goes from 1-1 to 94-94", ""},
        {"search =亜 show", "[亜] ?亜 = !it stands in no set", ""},
        {"=矢 =印 back =ほし", "[☆]★  ?ほし =白星", ""},
        {"search =矢 =印 2", "→ [←]↑  ?矢印 =左矢印 +←", "←"},
        {"back back last enter enter", "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号", ""},
        {"search =せっし back search", "[℃] ?せっし =セ氏度記号", ""},
        {"take", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ", ""},
        {"enter next sets", "[標準の記号/]私/  | 図/ 矢印 ", ""},
        {"enter #0", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★  !there is no item 0", ""},
        {"found", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ●  !nothing was looked for yet", ""},
        {"search =ほし show found found", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | [☆]★  =白星", ""},
        {"search =ほし show unfound", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ [★] =黒星", ""},
        {"stay", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ", ""},
    };
    for (const auto &row : rows) {
        Picking picking(all);
        picking.set_rows(3);
        run(picking, row.script);
        EXPECT_EQ(drawn(picking), row.drawn) << row.script;
        std::string picks;
        for (const Sjis &pick : picking.picks()) picks += to_utf8(pick);
        EXPECT_EQ(picks, row.picks) << row.script;
    }
}

/** Numbers of symbols behind the titles of the current column. */
std::string counted(const Picking &picking) {
    const ViewColumn column = picking.view(1).columns.back();
    std::string text = drawn(picking, 1) + " |";
    for (std::size_t i = 0; i < column.total; ++i) {
        if (const auto symbols = picking.symbols_below(i)) text += " " + std::to_string(*symbols);
    }
    return text;
}

/** The titles of the standard set stand among the sets while it is the only one. */
TEST_F(PickingTest, opens_the_only_set_in_the_first_column) {
    const std::string favourites = symbol_file("お気に入り", block("記号", "※\n"));
    fs::remove(workspace.common / "b.kig");
    const struct {
        const char *script, *favourites, *picks, *start, *drawn;
    } rows[] = {
        {"", "", "", "", "[図/]矢印  | 7 4"},
        {"next enter", "", "", "", "[→]← ↑ ↓  =右矢印 |"},
        {"next enter back", "", "", "", "図/ [矢印] | 7 4"},
        {"enter sibling back", "", "", "", "図/ [矢印] | 7 4"},
        {"search =ほし next show", "", "", "", "☆ [★] =黒星 |"},
        {"search =ほし next show sets", "", "", "", "[図/]矢印  | 7 4"},
        {"", "", "", "標準の記号／図／星", "[☆]★  =白星 |"},
        {"back", "", "", "標準の記号／図／星", "[星]○ ● ◎ ◇ ◆  | 2"},
        {"", "1", "", "", "[お気に入り/]図/ 矢印  | 1 7 4"},
        {"", "1", "★", "", "お気に入り/ 図/ [最近]矢印  | 1 1 7 4"},
        {"enter", "1", "★", "", "[★] =黒星 |"},
        {"next next next enter", "1", "★", "", "[→]← ↑ ↓  =右矢印 |"},
    };
    for (const auto &row : rows) {
        fs::remove(workspace.common / "f.kig");
        if (*row.favourites) write_file(workspace.common / "f.kig", favourites);
        Shelf all = shelf();
        if (*row.picks) all.note({to_sjis(row.picks)});
        Picking picking(all, row.start, FirstColumn::opened);
        run(picking, row.script);
        EXPECT_EQ(counted(picking), row.drawn) << row.script << ' ' << row.favourites;
        picking.refresh();
        EXPECT_EQ(counted(picking), row.drawn) << row.script << ", looked at again";
    }
    write_file(workspace.common / "b.kig", symbol_file("私", block("単位", "℃\n")));
    Shelf two = shelf();
    EXPECT_EQ(counted(Picking(two, "", FirstColumn::opened)), "お気に入り/ [最近]標準の記号/ 私/  | 1 1 12 1");
}

TEST_F(PickingTest, edits_one_by_one_and_takes_back) {
    const struct {
        const char *script, *drawn;
    } rows[] = {
        {"tab last copy enter copy enter", "お気に入り/ [標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形 !it is there already"},
        {"tab last stay prev stay copy enter undo",
         "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ◎ [◇] =ひし形 +◆◇ !undone: added お気に入り／記号 (2 symbols)"},
        {"back back search =ほし next copy enter", "☆ [★] ?ほし =黒星 !added お気に入り／記号 (1 symbol)"},
        {"tab last copy back", "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形"},
        {"search =ほし copy erase erase erase erase erase =私/単位 enter", "[☆]★  ?ほし =白星 !added 1 symbol to 私／単位"},
        {"back back last enter enter remove undo", "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号 !undone: removed 1 symbol from 私／単位"},
        {"back back last enter enter remove undo redo", "標準の記号/ [私/] | [単位] |  !again: removed 1 symbol from 私／単位"},
        {"back back last enter new =星 enter undo", "標準の記号/ [私/] | [単位] | ℃  !undone: added 私／星"},
        {"back back last enter new =／ enter",
         "標準の記号/ [私/] | [単位] | ℃  new title:／ !'／' cannot be a title: it holds '／', which separates or encloses titles"},
        {"back back last enter rename erase =価 enter", "標準の記号/ [私/] | [単価] | ℃  !renamed 私／単位 to 私／単価"},
        {"back back last rename =の enter undo", "標準の記号/ [私/] | 単位  !undone: renamed 私 to 私の"},
        {"back back last remove undo", "標準の記号/ [私/] | 単位  !undone: deleted the symbol file 私"},
        {"back back new =甲 enter", "標準の記号/ [甲/]私/  |  !made the symbol file 甲"},
        {"tab last raise",
         "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形 !標準の記号 cannot be changed; its symbols can be copied to a title of your own"},
        {"undo", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ◎ ◇  !there is nothing to undo"},
        {"redo", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ◎ ◇  !there is nothing to do again"},
        {"enter copy", "[標準の記号/]私/  | [図/]矢印  | [星]○ ● ◎ ◇  | ☆ ★  !there is no symbol under the cursor to copy"},
        // Moves, each taken back in one step.
        {"back back last enter enter move enter undo",
         "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号 !undone: moved 1 symbol from 私／単位 to お気に入り"},
        {"back back last enter enter move search =私/単位 enter", "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号 !it is there already"},
        {"back back last enter new =甲 enter move", "標準の記号/ [私/] | 単位 [甲] |  move below:私"},
        {"back back last enter new =甲 enter move next enter undo",
         "標準の記号/ [私/] | 単位 [甲] |  !undone: moved 私／甲 to 私／単位／甲"},
        {"back back last enter new =甲 enter move search =私/甲 enter",
         "標準の記号/ [私/] | 単位 [甲] |  move below:私/甲 !私／甲 cannot be moved below itself"},
        {"sets new =乙 enter search =℃ show back new =甲 enter move search =乙 enter undo",
         "乙/ 標準の記号/ [私/] | 単位 [甲] |  !undone: moved 私／甲 to 乙／甲"},
        {"back back last enter new =甲 enter raise lower undo", "標準の記号/ [私/] | [甲]単位  |  !undone: moved 私／甲"},
        {"back back last enter raise", "標準の記号/ [私/] | [単位] | ℃ "},
        // A title that there is not is made at the second answer.
        {"tab last copy search =新/矢/甲 enter enter search =◆ show found", "[新/]標準の記号/ 私/  | [矢/] | [甲] | [◆] =黒ひし形"},
        {"tab last copy search =新/矢/甲 enter enter undo",
         "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形 !undone: added 1 symbol to 新／矢／甲"},
        {"tab last copy search =私 complete complete", "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形 copy to:私/単位"},
        {"tab last copy next next prev", "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形 copy to:私／単位"},
        // What was made for something that cannot be done goes again.
        {"back back last enter move search =私/単位/新/古 enter",
         "標準の記号/ [私/] | [単位] | ℃  move below:私/単位/新/古 !私／単位 cannot be moved below itself"},
        {"tab last copy search =裸 enter",
         "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形 copy to:裸 !symbols stand in the titles of a set: 裸／TITLE"},
        {"tab last copy search =乙/一/二/三/四/五/六/七/八/九/十 enter enter back", "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形"},
        {"sets rename", "[標準の記号/]私/  | 図/ 矢印  !標準の記号 cannot be changed; its symbols can be copied to a title of your own"},
        {"search =ローマ数字", " ?ローマ数字 !ⅠⅡⅢⅣⅤⅥⅦⅧⅨⅩ would answer, but in no set; type the symbol itself to take it"},
        // Symbols that are typed, by the cursor or at the end.
        {"back back last enter enter add =× =1-90 enter",
         "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号 add symbols:×1-90 !4 characters cannot be stored, so nothing is; word 1, column 2: '1' "
         "(U+0031) is a single-byte character; its double-byte form is １"},
        {"back back last enter enter add =1-90 enter add =× enter first add =÷ enter",
         "標準の記号/ [私/] | [単位] | ℃ [÷]★ ×  =除算記号 !added 1 symbol to 私／単位"},
        {"back back last enter add =☆★ enter", "標準の記号/ [私/] | [単位] | ℃ ☆ ★  !added 2 symbols to 私／単位"},
        {"tab add",
         "[標準の記号/]私/  | [図/]矢印  | [星]○ ● ◎ ◇  | ☆ ★  !標準の記号 cannot be changed; its symbols can be copied to a title of your own"},
        {"search =ほし rename", "[☆]★  ?ほし =白星 !go to where it stands to change it; here it can be copied"},
    };
    for (const auto &row : rows) {
        const Fresh fresh;
        Shelf all = fresh.shelf();
        Picking picking(all);
        picking.set_rows(5);
        run(picking, row.script);
        EXPECT_EQ(drawn(picking), row.drawn) << row.script;
    }
}

/** On a page of more than nine items a digit may be the first of two. */
TEST_F(PickingTest, takes_numbers_of_two_digits) {
    write_file(workspace.common / "b.kig", symbol_file("私", block("印", "○●◎◇◆□■△▲▽▼※\n")));
    Shelf all = shelf();
    const struct {
        const char *script, *drawn;
    } rows[] = {
        {"#1", "[○]● ◎ ◇ ◆ □ ■ △ ▲ ▽ ▼ ※  =丸印 #1"},
        {"#12", "○ ● ◎ ◇ ◆ □ ■ △ ▲ ▽ ▼ [※] =米印 +※"},
        {"#1 enter", "[○]● ◎ ◇ ◆ □ ■ △ ▲ ▽ ▼ ※  =丸印 +○"},
        {"#1 drop #2", "○ [●]◎ ◇ ◆ □ ■ △ ▲ ▽ ▼ ※  =黒丸 +●"},
        {"#13", "[○]● ◎ ◇ ◆ □ ■ △ ▲ ▽ ▼ ※  =丸印 !there is no item 13"},
        {"last #1 next", "○ [●]◎ ◇ ◆ □ ■ △ ▲ ▽ ▼ ※  =黒丸"},
    };
    for (const auto &row : rows) {
        Picking picking(all, "私／印");
        picking.set_rows(15);
        run(picking, row.script);
        EXPECT_EQ(drawn(picking, 1), row.drawn) << row.script;
    }
}

/** Another program's changes are shown, and an edit is made in what is there then. */
TEST_F(PickingTest, keeps_what_another_program_changes) {
    const auto write = [&](const std::string &symbols) { write_file(workspace.common / "b.kig", symbol_file("私", block("印", symbols))); };
    const struct {
        const char *script, *symbols, *then, *drawn;
    } rows[] = {
        {"last", "○●◎\n", "look", "○ ● [◎] =二重丸 !another program changed a set; it is shown as it is now"},
        {"last", "○●◎◇\n", "remove", "○ ● [◇] =ひし形 !removed 1 symbol from 私／印; what another program changed there is kept"},
        {"last", "□○●◎\n", "raise", "□ [○]◎ ●  =丸印 !moved 1 symbol in 私／印; what another program changed there is kept"},
        {"last", "○●\n", "remove",
         "○ [●] =黒丸 !私／印 was changed by another program just now; it is shown as it is, and nothing was done to it"},
        {"last remove", "○●◇\n", "undo",
         "○ [●]◇  =黒丸 !b.kig was changed by another program or another edit since; once more to leave it and go on with the next"},
        {"last add =○ enter", "○●◎○◇\n", "look", "○ ● ◎ [○]◇  =丸印 !another program changed a set; it is shown as it is now"},
        {"last remove prev remove undo", "●◇\n", "undo undo undo", "[●]◇  =黒丸 !there is nothing to undo"},
        {"back", "○●◎◇\n", "remove",
         "[印] !私／印 was changed by another program just now; it is shown as it is, and nothing was done to it"},
        {"sets last", "○●◎◇\n", "remove",
         "標準の記号/ [私/] !私 was changed by another program just now; it is shown as it is, and nothing was done to it"},
    };
    for (const auto &row : rows) {
        write("○●◎\n");
        Shelf all = shelf();
        Picking picking(all, "私／印");
        run(picking, row.script);
        write(row.symbols);
        if (std::string(row.then) == "look") {
            EXPECT_TRUE(picking.look());
            EXPECT_FALSE(picking.look());
        } else {
            run(picking, row.then);
        }
        std::string text = drawn(picking, 1);
        if (const auto at = text.find(workspace.common.string()); at != std::string::npos)
            text.erase(at, workspace.common.string().size() + 1);
        EXPECT_EQ(text, row.drawn) << row.script << ' ' << row.then;
    }
}

/** A look goes on in the recent picks. */
TEST_F(PickingTest, stays_in_the_recent_picks) {
    Shelf all = shelf();
    all.note({to_sjis("★"), to_sjis("☆")});
    Picking picking(all, std::string(recents_title));
    run(picking, "next");
    const std::string before = drawn(picking);
    EXPECT_TRUE(before.ends_with(" | ☆ [★] =黒星")) << before;
    write_file(workspace.common / "b.kig", symbol_file("私", block("印", "○\n")));
    EXPECT_TRUE(picking.look());
    EXPECT_EQ(drawn(picking), before + " !another program changed a set; it is shown as it is now");
}

TEST_F(PickingTest, knows_what_a_question_was_asked_of) {
    Shelf all = shelf();
    Picking picking(all, "私");
    run(picking, "rename =表");
    write_file(workspace.common / "b.kig", symbol_file("私", block("角", "°\n") + block("単位", "℃\n")));
    EXPECT_TRUE(picking.look());
    run(picking, "prev enter");
    EXPECT_EQ(drawn(picking), "標準の記号/ [私/] | 角 [単位表] | ℃  !renamed 私／単位 to 私／単位表");
}

/** What a full disk keeps from being undone can be undone when there is room. */
TEST_F(PickingTest, tries_an_undo_again) {
    const auto undone = [&] {
        Shelf all = shelf();
        Picking picking(all, "私／単位");
        run(picking, "remove");
        const rlimit room = limit_files(0);
        run(picking, "undo undo");
        const bool refused = drawn(picking, 1).find("[℃]") == std::string::npos;
        setrlimit(RLIMIT_FSIZE, &room);
        run(picking, "undo");
        return refused && drawn(picking, 1) == "[℃] =セ氏度記号 !undone: removed 1 symbol from 私／単位";
    };
    EXPECT_EQ(in_children(1, [&](int) { return undone() ? 0 : 1; })[0], 0);
}

/** Edits of killed processes are asked for one by one; what is not kept stays. */
TEST_F(PickingTest, offers_what_was_never_saved) {
    const Directories directories{workspace.program, workspace.common, workspace.user};
    age(workspace.common / "b.kig", 20);
    for (const char *const symbol : {"※", "★", "☆"}) {
        in_children(1, [&](int) {
            Edit edit(directories, {}, {});
            edit.locate("私/単位");
            edit.put(to_sjis(symbol), true);
            return raise(SIGKILL);
        });
    }
    for (const fs::path &left : workspace.temp_files()) age(left);
    Shelf all = shelf();
    Picking picking(all);
    std::vector<Leftover> leftovers = sweep_leftovers(directories);
    picking.offer(leftovers);
    fs::remove(leftovers.back().path); // one that is gone by then is no trouble for the others
    const std::string question = " an edit of 私 was never saved; keep it as:私（救出）";
    EXPECT_TRUE(drawn(picking).ends_with(question)) << drawn(picking);
    run(picking, "enter");
    EXPECT_TRUE(drawn(picking).ends_with(question + "（救出） !kept as 私（救出） with 1 title; 私 has 1 title")) << drawn(picking);
    run(picking, "search =私 enter");
    EXPECT_TRUE(drawn(picking).ends_with(":私 !there is a symbol file 私 already")) << drawn(picking);
    run(picking, "back next");
    EXPECT_TRUE(drawn(picking).starts_with("標準の記号/ 私/ [私（救出）/] | [単位] | ℃ ")) << drawn(picking);
    EXPECT_EQ(workspace.temp_files().size(), 1U);
}

/** A page that was pasted by mistake neither fills the memory nor stops anything. */
TEST_F(PickingTest, bounds_what_is_typed) {
    Shelf all = shelf();
    Picking picking(all, "私／単位");
    std::string page;
    for (int i = 0; i < 30000; ++i) page += "字";
    picking.act({Act::type, page});
    EXPECT_EQ(picking.view(1).query.size(), 3 * 200U);
    EXPECT_EQ(picking.view(1).message, "only the beginning of that is looked for");
    run(picking, "back add");
    picking.act({Act::type, page});
    EXPECT_EQ(picking.view(1).answer.size(), 3 * 20000U);
    EXPECT_EQ(picking.view(1).message, "that is too long; the end of it is left out");
    run(picking, "enter");
    EXPECT_EQ(picking.view(1).message.substr(0, 40), "these are more symbols than a title can ");
}

/** A key that forgets a recent pick must not come to a set. */
TEST_F(PickingTest, stays_among_the_recent_picks) {
    Shelf all = shelf();
    all.note({to_sjis("●"), to_sjis("○"), to_sjis("★")});
    Picking picking(all, "最近");
    run(picking, "next remove");
    EXPECT_EQ(drawn(picking), "[最近]標準の記号/ 私/  | ★ [●] =黒丸 !○ is no recent pick any more");
    run(picking, "remove remove remove");
    EXPECT_EQ(drawn(picking, 1), "[標準の記号/]私/  !標準の記号 cannot be changed; its symbols can be copied to a title of your own");
}

TEST_F(PickingTest, says_which_sets_are_read_only) {
    Shelf all = shelf();
    Picking picking(all);
    EXPECT_TRUE(picking.view(1).columns[0].read_only);
    run(picking, "sets last enter");
    EXPECT_FALSE(picking.view(1).columns[0].read_only);
}

TEST_F(PickingTest, moves_symbols_within_their_lines) {
    write_file(workspace.common / "b.kig", symbol_file("私", block("単位", "℃°\n‰\n")));
    Shelf all = shelf();
    Picking picking(all, "私／単位");
    run(picking, "lower lower raise last raise undo first remove");
    const Snapshot now(workspace.common / "b.kig");
    EXPECT_EQ(to_utf8(now.data(1)), "℃\r\n‰\r\n");
}

} // namespace
} // namespace kigou
