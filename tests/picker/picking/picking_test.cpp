// Picking by scripts of actions, and what a front end would draw.
#include "picker/picking/picking.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/workspace.h"

namespace kigou {
namespace {

const std::map<std::string, Act> acts{{"next", Act::next},
                                      {"prev", Act::previous},
                                      {"pgdn", Act::next_page},
                                      {"pgup", Act::previous_page},
                                      {"first", Act::first},
                                      {"last", Act::last},
                                      {"enter", Act::enter},
                                      {"back", Act::back},
                                      {"take", Act::take},
                                      {"stay", Act::take_and_stay},
                                      {"drop", Act::drop_pick},
                                      {"tab", Act::next_title},
                                      {"backtab", Act::previous_title},
                                      {"search", Act::search},
                                      {"erase", Act::erase},
                                      {"show", Act::show},
                                      {"finish", Act::finish},
                                      {"cancel", Act::cancel},
                                      {"copy", Act::copy_to},
                                      {"new", Act::new_title},
                                      {"rename", Act::rename},
                                      {"remove", Act::remove},
                                      {"raise", Act::raise},
                                      {"lower", Act::lower},
                                      {"undo", Act::undo},
                                      {"redo", Act::redo}};

/** Words of a script: an action, a digit, or "=text" to type. */
void run(Picking &picking, const std::string &script) {
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        if (word.front() == '=') {
            picking.act({Act::type, word.substr(1)});
        } else if (std::isdigit(static_cast<unsigned char>(word.front()))) {
            picking.act({.act = Act::take_number, .number = std::stoul(word)});
        } else {
            picking.act({acts.at(word)});
        }
    }
}

/** "列1 列2 | 項[目] ..." of what the view has: columns, the cursor in brackets. */
std::string drawn(const Picking &picking, std::size_t columns = 9) {
    const View view = picking.view(columns);
    std::string text;
    for (std::size_t c = 0; c < view.columns.size(); ++c) {
        if (c != 0) text += " | ";
        const ViewColumn &column = view.columns[c];
        if (column.first != 0) text += std::to_string(column.first) + ":";
        for (std::size_t i = 0; i < column.items.size(); ++i) {
            const std::string mark = column.items[i].below ? "/" : "";
            text += column.cursor == i ? "[" + column.items[i].label + mark + "]" : column.items[i].label + mark + " ";
        }
    }
    if (view.searching) text += " ?" + view.query;
    if (view.symbol) text += " =" + view.symbol->name;
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
        {"enter", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★ ", ""},
        {"enter next", "[標準の記号/]私/  | [図/]矢印  | 星 [○]●  =丸印", ""},
        {"enter last enter back", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形 +◆", "◆"},
        {"next next enter", "[標準の記号/]私/  | 図/ [矢印] | [→]← ↑  =右矢印", ""},
        {"prev back back", "[標準の記号/]私/  | 図/ 矢印 ", ""},
        {"enter enter", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | [☆]★  =白星", ""},
        {"enter next next next next", "[標準の記号/]私/  | [図/]矢印  | 3:◎ [◇]◆  =ひし形", ""},
        {"tab", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★ ", ""},
        {"tab tab", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | [☆]★  =白星", ""},
        {"backtab", "[標準の記号/]私/  | [図/]矢印  | [※] =米印", ""},
        {"tab tab tab tab tab", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★ ", ""},
        {"enter pgdn", "[標準の記号/]私/  | [図/]矢印  | 3:[◎]◇ ◆  =二重丸", ""},
        {"enter pgdn pgup", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★ ", ""},
        {"enter pgdn pgdn pgdn", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形", ""},
        {"enter 2", "[標準の記号/]私/  | [図/]矢印  | 星 [○]●  =丸印 +○", "○"},
        {"enter 9", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ ★ ", ""},
        {"enter 1", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | [☆]★  =白星", ""},
        {"enter last stay prev stay", "[標準の記号/]私/  | [図/]矢印  | 3:◎ [◇]◆  =ひし形 +◆◇", "◆◇"},
        {"enter last stay prev stay drop", "[標準の記号/]私/  | [図/]矢印  | 3:◎ [◇]◆  =ひし形 +◆", "◆"},
        {"enter last stay back finish", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ●  +◆", "◆"},
        {"enter last stay cancel", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形", ""},
        {"tab last take", "[標準の記号/]私/  | [図/]矢印  | 3:◎ ◇ [◆] =黒ひし形 +◆", "◆"},
        {"search =ほし", "[☆]★  ?ほし =白星", ""},
        {"search =ほ =し next stay back", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ●  +★", "★"},
        {"search =ほしx erase next show", "[標準の記号/]私/  | [図/]矢印  | [星]○ ●  | ☆ [★] =黒星", ""},
        {"search =yajirusu", " ?yajirusu !meant やじるし?", ""},
        {"search =1-78 show", "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号", ""},
        {"search =95-1", " ?95-1 !kuten 95-1 is outside of the table, which goes from 1-1 to 94-94", ""},
        {"search =亜 show", "[亜] ?亜 = !it stands in no set", ""},
        {"search =矢 =印 2", "→ [←]↑  ?矢印 =左矢印 +←", "←"},
        {"back", "[標準の記号/]私/  | 図/ 矢印 ", ""},
        {"back back last enter enter", "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号", ""},
        {"search =せっし back search", "[℃] ?せっし =セ氏度記号", ""},
        {"take", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ", ""},
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

TEST_F(PickingTest, edits_one_by_one_and_takes_back) {
    const struct {
        const char *script, *drawn;
    } rows[] = {
        {"tab last copy enter", "[標準の記号/]お気に入り/ 私/  | [図/]矢印  | 5:[◆] =黒ひし形 !made the symbol file お気に入り"},
        {"tab last copy enter copy enter", "[標準の記号/]お気に入り/ 私/  | [図/]矢印  | 5:[◆] =黒ひし形 !it is there already"},
        {"tab last stay prev stay copy enter undo",
         "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ◎ [◇] =ひし形 +◆◇ !undone: made the symbol file お気に入り"},
        {"back back search =ほし next copy enter", "☆ [★] ?ほし =黒星 !made the symbol file お気に入り"},
        {"tab last copy back", "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形"},
        {"search =ほし copy erase erase erase erase erase =私/単位 enter",
         "[☆]★  ?ほし =白星 !added 1 symbol to 私／単位; 0 stood there already"},
        {"back back last enter enter remove", "標準の記号/ [私/] | [単位] |  !put 0 symbols into 私／単位 in place of 1"},
        {"back back last enter enter remove undo",
         "標準の記号/ [私/] | [単位] | [℃] =セ氏度記号 !undone: put 0 symbols into 私／単位 in place of 1"},
        {"back back last enter enter remove undo redo", "標準の記号/ [私/] | [単位] |  !again: put 0 symbols into 私／単位 in place of 1"},
        {"back back last enter new =星 enter", "標準の記号/ [私/] | 単位 [星] |  !added 私／星"},
        {"back back last enter new =星 enter undo", "標準の記号/ [私/] | [単位] | ℃  !undone: added 私／星"},
        {"back back last enter new =／ enter",
         "標準の記号/ [私/] | [単位] | ℃  !'／' cannot be a title: it holds '／', which separates or encloses titles"},
        {"back back last enter rename erase =価 enter", "標準の記号/ [私/] | [単価] | ℃  !renamed 私／単位 to 私／単価"},
        {"back back last rename =の enter", "標準の記号/ [私の/] | 単位  !renamed 私 to 私の"},
        {"back back last rename =の enter undo", "標準の記号/ [私/] | 単位  !undone: renamed 私 to 私の"},
        {"back back last remove", "[標準の記号/] | 図/ 矢印  !deleted the symbol file 私"},
        {"back back last remove undo undo", "[標準の記号/]私/  | 図/ 矢印  !undone: deleted the symbol file 私"},
        {"back back new =甲 enter", "標準の記号/ [甲/]私/  |  !made the symbol file 甲"},
        {"tab last remove", "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形 !標準の記号 cannot be changed"},
        {"tab last raise", "[標準の記号/]私/  | [図/]矢印  | 5:[◆] =黒ひし形 !標準の記号 cannot be changed"},
        {"undo", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ◎ ◇  !there is nothing to undo"},
        {"redo", "[標準の記号/]私/  | [図/]矢印  | 星 ○ ● ◎ ◇  !there is nothing to do again"},
        {"enter copy", "[標準の記号/]私/  | [図/]矢印  | [星]○ ● ◎ ◇  | ☆ ★ "},
    };
    for (const auto &row : rows) {
        const Fresh fresh;
        Shelf all = fresh.shelf();
        Picking picking(all);
        picking.set_rows(5);
        run(picking, row.script);
        EXPECT_EQ(drawn(picking), row.drawn) << row.script;
    }
    Shelf all = shelf();
    Picking picking(all);
    run(picking, "back back last remove undo");
    EXPECT_TRUE(drawn(picking).ends_with("once more to do it all the same")) << drawn(picking);
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
