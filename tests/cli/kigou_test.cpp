// kigou as people run it to look at symbol files.
#include "kigou_program.h"

namespace kigou {
namespace {

using nlohmann::json;

struct Case {
    const char *name;
    std::vector<std::string> arguments;
    int status;
    std::string out;
    std::string err;
};

TEST_F(Kigou, shows_the_example_as_text) {
    write_example();
    const Case cases[] = {
        {"files", {"files"}, 0, "例\n", ""},
        {"tree",
         {"tree", "例"},
         0,
         "例\n"
         "├── 矢印 (4)\n"
         "├── 数学 (4)\n"
         "│   └── 比較\n"
         "├── 数学論\n"
         "│   └── 集合 (1)\n"
         "└── 雑 (4)\n",
         ""},
        {"a file", {"list", "例"}, 0, "例\n  矢印\n  数学／\n  数学論／\n  雑\n", ""},
        {"titles before symbols, none of a sibling with a longer name", {"list", "例／数学"}, 0, "例／数学\n  比較\n＋ × ÷ ±\n", ""},
        {"typed separators", {"list", "/例/数学論/集合/"}, 0, "例／数学論／集合\n∈\n", ""},
        {"path behind --file", {"list", "矢印", "--file", "例"}, 0, "例／矢印\n→ ← ↑ ↓\n", ""},
        {"whole path behind --file", {"list", "--file", "例", "例／矢印"}, 0, "例／矢印\n→ ← ↑ ↓\n", ""},
        {"an empty title", {"list", "例／数学／比較"}, 0, "例／数学／比較\n", ""},
        {"labelled blank, and an escape that does not reach the terminal",
         {"list", "例／雑"},
         0,
         "例／雑\n[空白] ①     --     \uFFFD[\n",
         ""},
        {"codes",
         {"list", "例／雑", "--codes"},
         0,
         "例／雑\n"
         "Shift_JIS  JIS        kuten      Unicode    symbol\n"
         "8140       2121       1-1        U+3000     [空白]\n"
         "8740       2D21       13-1       U+2460     ① (vendor)\n"
         "2D2D       -          -          U+002D U+002D --\n"
         "1B5B       -          -          U+001B U+005B \uFFFD[\n",
         ""},
        {"info of two symbols in one word",
         {"info", "→∈"},
         0,
         "→\n  Shift_JIS  81A8\n  JIS        222A\n  kuten      2-10\n  Unicode    U+2192\n"
         "  stands in  例／矢印\n"
         "∈\n  Shift_JIS  81B8\n  JIS        223A\n  kuten      2-26\n  Unicode    U+2208\n"
         "  stands in  例／数学論／集合\n",
         ""},
        {"info of a code without a character",
         {"info", "9-1"},
         1,
         "\uFFFD\n  Shift_JIS  8540\n  JIS        2921\n  kuten      9-1\n  Unicode    -\n"
         "  note       no character has this code\n",
         ""},
        {"a slip",
         {"list", "例／数楽"},
         1,
         "",
         "kigou: there is no title 例／数楽\n"
         "kigou: did you mean 例／数学?\n"},
        {"a character left out",
         {"list", "例／数論"},
         1,
         "",
         "kigou: there is no title 例／数論\n"
         "kigou: did you mean 例／数学?\n"
         "kigou: did you mean 例／数学論?\n"},
        {"the last title alone",
         {"list", "集合", "--file", "例"},
         1,
         "",
         "kigou: there is no title 例／集合\n"
         "kigou: did you mean 例／数学論／集合?\n"},
        {"nothing like it",
         {"list", "例／数学／xyz"},
         1,
         "",
         "kigou: there is no title 例／数学／xyz\n"
         "kigou: 例／数学 holds: 比較\n"},
        {"no such file",
         {"tree", "無"},
         1,
         "",
         "kigou: cannot open 無: the symbol file does not exist (記号ファイルが存在しません。)\n"
         "kigou: 'kigou files' lists the symbol files\n"
         "kigou:   例\n"},
        {"a character that cannot be written", {"list", "例／€"}, 2, "", "kigou: Shift_JIS has no character € (U+20AC) at position 3\n"},
        {"a single-byte character",
         {"info", "A"},
         2,
         "",
         "kigou: 'A' is a single-byte character; symbols have two bytes\n"
         "kigou: the full-width character is Ａ\n"},
        {"a row that does not exist", {"info", "95-1"}, 2, "", "kigou: kuten 95-1 is not from 1-1 to 94-94\n"},
        {"a command that does not exist",
         {"fils"},
         2,
         "",
         "kigou: there is no command fils\n"
         "kigou: 'kigou --help' shows the commands, 'kigou COMMAND --help' their options\n"},
        {"no command",
         {},
         2,
         "",
         "kigou: A subcommand is required\n"
         "kigou: 'kigou --help' shows the commands, 'kigou COMMAND --help' their options\n"},
    };
    for (const Case &c : cases) {
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.name;
        EXPECT_EQ(outcome.out, c.out) << c.name;
        EXPECT_EQ(outcome.err, c.err) << c.name;
    }
}

TEST_F(Kigou, writes_the_documented_json) {
    write_example();
    write("common/other.kig", "例", {});
    const Case cases[] = {
        {"files",
         {"files", "--json"},
         0,
         R"({"files":[{"title":"例","hidden":false},{"title":"例","hidden":true}],
             "truncated":false})",
         ""},
        {"list",
         {"list", "例／数学", "--json"},
         0,
         R"({"path":"例／数学","titles":[{"path":"例／数学／比較","title":"比較","children":false}],
             "symbols":[
              {"symbol":"＋","sjis":"817B","jis":"215C","kuten":"1-60","unicode":"U+FF0B","vendor":false},
              {"symbol":"×","sjis":"817E","jis":"215F","kuten":"1-63","unicode":"U+00D7","vendor":false},
              {"symbol":"÷","sjis":"8180","jis":"2160","kuten":"1-64","unicode":"U+00F7","vendor":false},
              {"symbol":"±","sjis":"817D","jis":"215E","kuten":"1-62","unicode":"U+00B1","vendor":false}],
             "truncated":false})",
         ""},
        {"info by codes",
         {"--json", "info", "0x8740", "U+FF5E"},
         0,
         R"({"symbols":[
              {"symbol":"①","sjis":"8740","jis":"2D21","kuten":"13-1","unicode":"U+2460","vendor":true,"paths":["例／雑"]},
              {"symbol":"〜","sjis":"8160","jis":"2141","kuten":"1-33","unicode":"U+301C","vendor":false,"paths":[]}]})",
         ""},
    };
    for (const Case &c : cases) {
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.name;
        EXPECT_EQ(json::parse(outcome.out, nullptr, false), json::parse(c.out)) << c.name;
        EXPECT_EQ(outcome.err, c.err) << c.name;
    }
    const json tree = json::parse(run({"tree", "例", "--json"}).out);
    EXPECT_EQ(tree["file"], "例");
    EXPECT_EQ(tree["titles"][2], json::parse(R"({"path":"例／数学／比較","title":"比較",
                                                 "level":3,"symbols":0})"));
}

TEST_F(Kigou, says_what_to_do_when_a_file_cannot_be_opened) {
    write("prog/deep.kig", "深", {{{"一／二／三／四／五／六／七／八／九／十", ""}}});
    write("prog/locked.kig", "鍵", {});
    chmod((folder / "prog/locked.kig").c_str(), 0444);
    const Case cases[] = {
        {"read-only",
         {"tree", "鍵"},
         2,
         "",
         "kigou: cannot open 鍵: the symbol file does not exist (記号ファイルが存在しません。)\n"
         "kigou: the file is there but cannot be written: every set but default.kig is opened for "
         "update; make it writable\n"},
        {"too deep",
         {"list", "深"},
         2,
         "",
         "kigou: cannot open 深: not enough list-box memory (リストボックスのメモリが足りません。)\n"
         "kigou: a symbol file may be ten levels deep, its own title included\n"},
    };
    for (const Case &c : cases) {
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.name;
        EXPECT_EQ(outcome.err, c.err) << c.name;
    }
    const Outcome unreadable = run({"files"}, nullptr, "absent");
    EXPECT_EQ(unreadable.status, 2);
    EXPECT_EQ(unreadable.err, "kigou: cannot read the directory \"" + (folder / "absent").string() +
                                  "\"\n"
                                  "kigou: name the directory of the symbol sets with --program-dir\n");
    EXPECT_EQ(run({"files"}, "/dev/full").status, 2) << "a full disk goes unnoticed";
}

TEST_F(Kigou, begins_a_person_s_own_directory_with_copies_that_can_be_written) {
    fs::remove(folder / "common");
    EXPECT_EQ(run({"files"}).err.find("made"), std::string::npos) << "nothing to copy";
    fs::create_directory(folder / "prog/sets");
    write("prog/sets/rei.kig", "例", {{{"矢印", ""}}});
    chmod((folder / "prog/sets/rei.kig").c_str(), 0444);
    const Outcome first = run({"put", "例/矢印", "→"});
    EXPECT_EQ(first.status, 0) << first.err;
    EXPECT_EQ(first.err, "kigou: made " + (folder / "common").string() + " for your own sets, with copies of the installed ones\n");
    EXPECT_EQ(run({"list", "例/矢印"}).out, "例／矢印\n→\n");
    fs::remove(folder / "common/rei.kig"); // and once it is there it is a person's own
    EXPECT_EQ(run({"files"}).out, "");
}

TEST_F(Kigou, shows_the_rest_of_a_file_with_a_title_it_cannot_read) {
    write("prog/orphan.kig", "孤", {{{"親／子", "☆\n"}}, {{"他", "★\n"}}});
    const std::string complaint =
        "kigou: cannot read 孤／親／子: reading a file failed "
        "(ファイルの読み込みに失敗しました。)\n";
    const Outcome tree = run({"tree", "孤"});
    EXPECT_EQ(tree.status, 0);
    EXPECT_EQ(tree.out, "孤\n│   └── 子\n└── 他 (1)\n");
    EXPECT_EQ(tree.err, complaint);
    const Outcome info = run({"info", "★", "--json"});
    EXPECT_EQ(json::parse(info.out)["symbols"][0]["paths"], json::array({"孤／他"}));
    EXPECT_EQ(info.err, complaint);
}

TEST_F(Kigou, says_that_a_list_is_cut_short) {
    std::string symbols;
    for (int i = 0; i < 30000; ++i) symbols += "☆";
    write("prog/long.kig", "長", {{{"星", symbols + "\n"}}, {{"星／下", "★\n"}}});
    const Outcome cut = run({"list", "長／星", "--json"});
    EXPECT_EQ(cut.status, 0);
    EXPECT_EQ(cut.err, "kigou: the list is cut short: 長／星 holds more than a list box can show\n");
    const json listing = json::parse(cut.out);
    EXPECT_EQ(listing["truncated"], true);
    EXPECT_GT(listing["symbols"].size(), 21000U);
    EXPECT_EQ(run({"list", "長／星／下"}).err, "") << "its own list is whole";
}

TEST_F(Kigou, shows_every_symbol_of_the_bundled_sets) {
    fs::copy(ACC_SOURCE_DIR "/data/default.kig", folder / "prog");
    fs::copy(ACC_SOURCE_DIR "/data/extended.kig", folder / "prog");
    EXPECT_EQ(run({"list", "一般記号/矢印"}).out, "標準の記号／一般記号／矢印\n→ ← ↑ ↓ ⇒ ⇔\n");
    const json info = json::parse(run({"info", "※①", "--json"}).out);
    EXPECT_EQ(info["symbols"][0]["paths"], json::array({"標準の記号／一般記号／事務"}));
    EXPECT_EQ(info["symbols"][1]["paths"], json::array({"拡張の記号／丸数字"}));
    for (const auto &[file, symbols, vendor] : {std::tuple{"標準の記号", 682, false}, {"拡張の記号", 74, true}}) {
        int shown = 0;
        const json tree = json::parse(run({"tree", file, "--json"}).out);
        for (const json &title : tree["titles"]) {
            const json list = json::parse(run({"list", title["path"], "--json"}).out);
            EXPECT_EQ(list["symbols"].size(), title["symbols"]) << title;
            for (const json &symbol : list["symbols"]) {
                ++shown;
                EXPECT_EQ(symbol["vendor"], vendor) << symbol;
                EXPECT_FALSE(symbol["unicode"].is_null() || symbol["kuten"].is_null()) << symbol;
            }
        }
        EXPECT_EQ(shown, symbols) << file;
    }
}

} // namespace
} // namespace kigou
