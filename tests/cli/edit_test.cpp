// The editing commands of kigou: what they say, and the bytes of the file afterwards.
#include <map>

#include "kigou_program.h"

namespace kigou {
namespace {

using nlohmann::json;

class KigouEdits : public Kigou {
  protected:
    /** Every symbol file by its path below the folder. */
    std::map<std::string, std::string> files() {
        std::map<std::string, std::string> all;
        for (const char *sub : {"prog", "common"}) {
            for (const auto &entry : fs::directory_iterator(folder / sub)) {
                all[fs::relative(entry.path(), folder)] = contents_of(entry.path());
            }
        }
        return all;
    }

    void write_small() { write("prog/rei.kig", "例", {{{"矢印", "→←\n"}}, {{"矢印論", "★\n"}}}); }
};

struct Step {
    const char *name;
    std::vector<std::string> arguments;
    std::string input;
    int status;
    std::string out, err;
    std::string title;
    std::vector<std::array<std::string, 2>> blocks; /**< of the file afterwards */
};

TEST_F(KigouEdits, changes_the_file_step_by_step) {
    write_small();
    const std::array<std::string, 2> longer{"矢印論", "★\n"};
    const Step steps[] = {
        {"add goes behind what lies below, not behind a longer name",
         {"add", "例/矢印", "太"},
         "",
         0,
         "added 例／矢印／太\nsaved 例\n",
         "",
         "例",
         {{"矢印", "→←\n"}, {"矢印／太", ""}, longer}},
        {"put replaces, ten symbols a line",
         {"put", "矢印/太", "--file", "例", "０１２３４５６７８９", "２", "1-4"},
         "",
         0,
         "put 12 symbols into 例／矢印／太 in place of 0\nsaved 例\n",
         "",
         "例",
         {{"矢印", "→←\n"}, {"矢印／太", "０１２３４５６７８９\n２，\n"}, longer}},
        {"lines of the standard input stay lines, CR LF or not",
         {"put", "例/矢印/太"},
         "＋ ×\r\n\n÷\t　\n",
         0,
         "put 4 symbols into 例／矢印／太 in place of 12\nsaved 例\n",
         "",
         "例",
         {{"矢印", "→←\n"}, {"矢印／太", "＋×\n÷　\n"}, longer}},
        {"append keeps the lines that are there, and --fold folds",
         {"put", "例/矢印/太", "--append", "--fold", "A1", "ﾊﾟ"},
         "",
         0,
         "added 3 symbols to 例／矢印／太\nsaved 例\n",
         "",
         "例",
         {{"矢印", "→←\n"}, {"矢印／太", "＋×\n÷　\nＡ１パ\n"}, longer}},
        {"copy leaves out what is there",
         {"copy", "→※", "2-10", "※", "例/矢印"},
         "",
         0,
         "added 1 symbol to 例／矢印; 3 stood there already\nsaved 例\n",
         "",
         "例",
         {{"矢印", "→←\n※\n"}, {"矢印／太", "＋×\n÷　\nＡ１パ\n"}, longer}},
        {"copy of nothing new saves nothing",
         {"copy", "→", "例/矢印"},
         "",
         0,
         "nothing to do; 例 is as it was\n",
         "",
         "例",
         {{"矢印", "→←\n※\n"}, {"矢印／太", "＋×\n÷　\nＡ１パ\n"}, longer}},
        {"rename takes along what lies below",
         {"rename", "例/矢印", "印"},
         "",
         0,
         "renamed 例／矢印 to 例／印\nsaved 例\n",
         "",
         "例",
         {{"印", "→←\n※\n"}, {"印／太", "＋×\n÷　\nＡ１パ\n"}, longer}},
        {"put --empty",
         {"put", "例/印", "--empty"},
         "",
         0,
         "put 0 symbols into 例／印 in place of 3\nsaved 例\n",
         "",
         "例",
         {{"印", ""}, {"印／太", "＋×\n÷　\nＡ１パ\n"}, longer}},
        {"rename of the file",
         {"rename", "例", "見本"},
         "",
         0,
         "renamed 例 to 見本\nsaved 見本\n",
         "",
         "見本",
         {{"印", ""}, {"印／太", "＋×\n÷　\nＡ１パ\n"}, longer}},
        {"rm takes what lies below and no longer name",
         {"rm", "見本/印"},
         "",
         0,
         "removed 見本／印 (0 symbols)\nremoved 見本／印／太 (7 symbols)\nsaved 見本\n",
         "",
         "見本",
         {longer}},
        {"every character that cannot be stored is named",
         {"put", "見本/矢印論", "A→ｱ", "€", "髙"},
         "",
         2,
         "",
         "kigou: 4 characters cannot be stored, so nothing is\n"
         "kigou: argument 1, column 1: 'A' (U+0041) is a single-byte character; its double-byte "
         "form is Ａ\n"
         "kigou: argument 1, column 3: 'ｱ' (U+FF71) is a single-byte character; its double-byte "
         "form is ア\n"
         "kigou: argument 2, column 1: '€' (U+20AC) is not in Shift_JIS\n"
         "kigou: argument 3, column 1: '髙' (U+9AD9) is a vendor character that a file cannot keep\n"
         "kigou: --fold takes single-byte characters for their double-byte forms\n",
         "見本",
         {longer}},
        {"the place in the standard input",
         {"put", "見本/矢印論", "--fold"},
         "★\n☆ \x1b\n",
         2,
         "",
         "kigou: 1 character cannot be stored, so nothing is\n"
         "kigou: line 2, column 3: U+001B is a control character\n",
         "見本",
         {longer}},
        {"an empty input does not wipe a title",
         {"put", "見本/矢印論"},
         "\n",
         2,
         "",
         "kigou: no symbols were given, so nothing is stored\n"
         "kigou: --empty takes all symbols out of a title\n",
         "見本",
         {longer}},
        {"a title that exists",
         {"add", "見本", "矢印論"},
         "",
         2,
         "",
         "kigou: cannot add 矢印論 below 見本: the symbol title already exists "
         "(記号タイトルが既に存在します。)\n",
         "見本",
         {longer}},
        {"a title that cannot be one",
         {"add", "見本", "甲／乙"},
         "",
         2,
         "",
         "kigou: '甲／乙' cannot be a title: it holds '／', which separates or encloses titles\n",
         "見本",
         {longer}},
        {"symbols of the file itself",
         {"put", "見本", "→"},
         "",
         2,
         "",
         "kigou: a symbol file holds symbols only in its titles\n"
         "kigou: name one of them: 'kigou tree 見本' shows them\n"
         "kigou: or make one: kigou add 見本 TITLE\n",
         "見本",
         {longer}},
        {"rm of the file itself",
         {"rm", "見本"},
         "",
         2,
         "",
         "kigou: 見本 is a symbol file and no title in one\nkigou: 'kigou delete 見本' deletes it\n",
         "見本",
         {longer}},
    };
    for (const Step &step : steps) {
        const Outcome outcome = run(step.arguments, nullptr, "prog", step.input);
        EXPECT_EQ(outcome.status, step.status) << step.name;
        EXPECT_EQ(outcome.out, step.out) << step.name;
        EXPECT_EQ(outcome.err, step.err) << step.name;
        write("expected", step.title, step.blocks);
        EXPECT_EQ(contents_of(folder / "prog/rei.kig"), contents_of(folder / "expected")) << step.name;
    }
}

TEST_F(KigouEdits, a_dry_run_says_the_same_and_changes_nothing) {
    write_small();
    std::ofstream(folder / "old.ini") << to_utf8(Sjis{}) << "\x81\x6D\x88\xC0\x81\x6E\nsel1=\x81\x9A\n";
    const auto before = files();
    const std::vector<std::string> commands[] = {
        {"new", "新"},
        {"add", "例", "新"},
        {"rename", "例/矢印", "新"},
        {"rename", "例", "新"},
        {"rm", "例/矢印"},
        {"put", "例/矢印", "※"},
        {"copy", "※", "例/矢印"},
        {"delete", "例"},
        {"import", (folder / "old.ini").string(), "--into", "新"},
        {"add", "例", "甲", "--as", "新"},
    };
    for (std::vector<std::string> command : commands) {
        command.push_back("--dry-run");
        const Outcome outcome = run(command);
        EXPECT_EQ(outcome.status, 0) << command[0] << outcome.err;
        EXPECT_TRUE(outcome.out.starts_with("would have ")) << command[0] << outcome.out;
        EXPECT_EQ(files(), before) << command[0];
        command.push_back("--json");
        const json report = json::parse(run(command).out, nullptr, false);
        EXPECT_EQ(report["saved"], false) << command[0];
        EXPECT_FALSE(report["changes"].empty()) << command[0];
        command.erase(command.end() - 2);
        fs::copy(folder / "prog", folder / "kept", fs::copy_options::recursive);
        EXPECT_EQ(json::parse(run(command).out)["changes"], report["changes"]) << command[0];
        EXPECT_NE(files(), before) << command[0];
        for (const char *sub : {"prog", "common"}) fs::remove_all(folder / sub);
        fs::rename(folder / "kept", folder / "prog");
        fs::create_directory(folder / "common");
    }
}

TEST_F(KigouEdits, the_standard_set_is_edited_as_another) {
    fs::copy(ACC_SOURCE_DIR "/data/default.kig", folder / "prog");
    fs::remove_all(folder / "common");
    const Outcome refused = run({"add", "一般記号", "新"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err,
              "kigou: 標準の記号 cannot be changed\n"
              "kigou: --as NEW-TITLE keeps the result as a set of your own\n"
              "kigou: --file TITLE or a path that begins with a file title edits another set\n");
    EXPECT_EQ(run({"add", "一般記号", "新", "--as", "私"}).out,
              "added 標準の記号／一般記号／新\n"
              "saved as 私; its paths begin with that title now\n");
    EXPECT_EQ(contents_of(folder / "prog/default.kig"), contents_of(ACC_SOURCE_DIR "/data/default.kig"));
    EXPECT_EQ(run({"list", "私/一般記号/新"}).out, "私／一般記号／新\n");
    EXPECT_EQ(run({"add", "一般記号", "新", "--as", "私"}).status, 2) << "another file was replaced";
    EXPECT_EQ(run({"rename", "私", "標準の記号"}).status, 2) << "a file would be hidden";
    EXPECT_EQ(run({"delete", "標準の記号"}).status, 2);
}

TEST_F(KigouEdits, does_not_add_below_the_tenth_level) {
    write("prog/deep.kig", "深", {});
    std::string path = "深";
    for (const char *title : {"二", "三", "四", "五", "六", "七", "八", "九", "十"}) {
        ASSERT_EQ(run({"add", path, title}).status, 0) << title;
        path += std::string("/") + title;
    }
    EXPECT_EQ(run({"add", path, "百"}).status, 2);
    EXPECT_EQ(run({"put", path, "→"}).status, 0);
    EXPECT_EQ(run({"rm", path}).status, 0);
}

TEST_F(KigouEdits, edits_beside_a_title_without_parent) {
    write("prog/orphan.kig", "孤", {{{"親／子", "☆\n"}}, {{"他", "★\n"}}});
    EXPECT_EQ(run({"put", "孤/親/子", "※"}).err, "");
    write("expected", "孤", {{{"親／子", "※\n"}}, {{"他", "★\n"}}});
    EXPECT_EQ(contents_of(folder / "prog/orphan.kig"), contents_of(folder / "expected"));
    EXPECT_EQ(run({"rm", "孤/親/子"}).status, 0);
    EXPECT_EQ(run({"tree", "孤"}).out, "孤\n└── 他 (1)\n");
}

TEST_F(KigouEdits, explains_what_the_system_refuses) {
    write("prog/rei.kig", "例", {{{"矢印", "→\n"}}});
    const auto before = files();
    const std::string rights = "kigou:   " + (folder / "prog").string() + "\nkigou:   " + (folder / "common").string() + "\n";
    chmod((folder / "prog").c_str(), 0555);
    chmod((folder / "common").c_str(), 0555);
    const Outcome saved = run({"put", "例/矢印", "※"});
    EXPECT_EQ(saved.status, 2);
    EXPECT_EQ(saved.err,
              "kigou: cannot save 例: a file could not be opened "
              "(ファイルのオープンに失敗しました。)\n"
              "kigou: the file or the directory that holds it cannot be written; look at the "
              "rights of\n" +
                  rights);
    const Outcome deleted = run({"delete", "例"});
    EXPECT_EQ(deleted.status, 2) << "a file that stays was reported as deleted";
    EXPECT_EQ(deleted.err,
              "kigou: the system refused to delete the file of 例\n"
              "kigou: the directory that holds it must be writable; look at the rights of\n" +
                  rights);
    EXPECT_EQ(run({"new", "新"}).status, 2);
    EXPECT_EQ(files(), before);
    chmod((folder / "prog").c_str(), 0755);
    EXPECT_EQ(run({"delete", "例"}).out, "deleted the symbol file 例\n");
    EXPECT_EQ(run({"delete", "例"}).status, 1);
}

} // namespace
} // namespace kigou
