// kigou export and import: nothing is lost, or it is named.
#include "kigou_program.h"

namespace kigou {
namespace {

using nlohmann::json;

class KigouImports : public Kigou {
  protected:
    /** Writes UTF-8 text as Shift_JIS. */
    std::string write_old(const std::string &name, const std::string &text) {
        const Sjis sjis = to_sjis(text);
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary)
            .write(reinterpret_cast<const char *>(sjis.data()), static_cast<std::streamsize>(sjis.size()));
        return (folder / name).string();
    }
};

TEST_F(KigouImports, an_export_comes_back_byte_for_byte) {
    fs::copy(ACC_SOURCE_DIR "/data/default.kig", folder / "prog");
    fs::copy(ACC_SOURCE_DIR "/data/extended.kig", folder / "prog");
    write("prog/odd.kig", "奇{7B}ｱ", {{{"A{}ｱ", "\n→\n\n--①\n←\n"}}, {{"A{}ｱ／空", ""}}, {{"空", "　a{\n"}}});
    write("prog/bare.kig", "空", {});
    for (const char *title : {"標準の記号", "拡張の記号", "奇{7B}ｱ", "空"}) {
        for (const char *format : {"text", "json", "tsv"}) {
            const std::string name = std::string(title) + " " + format;
            const std::string exported = run({"export", title, "--format", format}).out;
            const Outcome back = run({"import", "-", "--into", "写"}, nullptr, "prog", exported);
            EXPECT_EQ(back.status, 0) << name << back.err;
            ASSERT_EQ(run({"rename", "写", "写し"}).status, 0) << name;
            std::string copy = contents_of(folder / "common/@0000000.kig");
            std::string original;
            for (const auto &file : fs::directory_iterator(folder / "prog")) {
                if (json::parse(run({"check", file.path(), "--json"}).out)["files"][0]["title"] == title) {
                    original = contents_of(file.path());
                }
            }
            const auto blocks = [](const std::string &text) { return text.substr(text.find('\n', text.find('\n') + 1)); };
            EXPECT_EQ(blocks(copy), blocks(original)) << name;
            fs::remove(folder / "common/@0000000.kig");
        }
    }
}

TEST_F(KigouImports, adds_to_a_file_what_it_lacks) {
    write("prog/rei.kig", "例", {{{"矢印", "→←\n"}}, {{"空", ""}}});
    const std::string text =
        "\xEF\xBB\xBF{\"file\": \"別\", \"titles\": [\n"
        "{\"path\": \"矢印\", \"lines\": [\"←↑\"]}, {\"path\": \"空\", \"lines\": [\"A★\"]},\n"
        "{\"path\": \"数／比較\", \"lines\": [\"＜\", \"＞\"]},\n"
        "{\"path\": \"甲［\", \"lines\": [\"☆\"]}]}";
    const Outcome outcome = run({"import", "-", "--into", "例"}, nullptr, "prog", text);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.out,
              "added to 例／矢印 (1 symbol)\nadded to 例／空 (1 symbol)\n"
              "added 例／数, which stands above others\nadded 例／数／比較 (2 symbols)\nsaved 例\n");
    EXPECT_EQ(outcome.err,
              "kigou: left out: title 2, line 1, column 1: 'A' (U+0041) is a single-byte "
              "character; its double-byte form is Ａ\n"
              "kigou: left out: title 4: the title 例／甲［ with its symbols: it holds '［', which "
              "separates or encloses titles\n");
    write("expected", "例", {{{"矢印", "→←\n↑\n"}}, {{"空", "★\n"}}, {{"数", ""}}, {{"数／比較", "＜\n＞\n"}}});
    EXPECT_EQ(contents_of(folder / "prog/rei.kig"), contents_of(folder / "expected"));
    EXPECT_EQ(run({"import", "-"}, nullptr, "prog", "{\"file\": \"例\", \"titles\": []}").status, 2)
        << "a set that exists is only added to when it is named";
}

TEST_F(KigouImports, converts_an_old_file_and_names_what_it_left_out) {
    const std::string old = write_old("a.b/古 い.v2.ini",
                                      "; remark\r\n"
                                      "［記号］\r\n"
                                      "----------\r\n"
                                      "sel1=★ ☆\r\n"
                                      "SEL2=１２３４５６７８９０１２\r\n"
                                      "sel12=※\r\n"
                                      "［とてもとても長い］\r\n"
                                      "［二］\r\n"
                                      "sel1=→");
    const Outcome outcome = run({"import", old, "--into", "新", "--json"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(json::parse(outcome.out)["changes"], json::parse(R"([{"change":"new","path":"新"},
                              {"change":"add","path":"新／記号","symbols":12},
                              {"change":"add","path":"新／二","symbols":1}])"));
    EXPECT_EQ(json::parse(outcome.out)["left_out"].size(), 4U);
    EXPECT_EQ(outcome.err,
              "kigou: left out: line 1: '; remark' stands before the first title\n"
              "kigou: left out: line 5: '１２' comes behind the ten symbols of a key\n"
              "kigou: left out: line 6: 'sel12=※' is none of sel1= to sel11=\n"
              "kigou: left out: line 7: '［とてもとても長い］' is no title: ］ must follow within 14 "
              "bytes; keys below it go to the title before\n");
    write("expected", "新", {{{"記号", "★☆\n１２３４５６７８９０\n"}}, {{"二", "→\n"}}});
    EXPECT_EQ(contents_of(folder / "common/@0000000.kig"), contents_of(folder / "expected"));

    const Outcome again = run({"import", old, "--into", "新"});
    EXPECT_NE(again.err.find("line 8: 新／二 stands twice in 新 now"), std::string::npos) << again.err;
    EXPECT_EQ(run({"import", write_old("plain.ini", "［一］\nsel3=→\n")}).status, 0);
    EXPECT_EQ(run({"list", "plain/一"}).out, "plain／一\n→\n");
    const Outcome bad = run({"import", write_old("bad.ini", "［一］\nsel1=→A\n"), "--into", "悪"});
    EXPECT_EQ(bad.status, 2);
    EXPECT_EQ(bad.err,
              "kigou: cannot convert the old file: converting the symbol file failed "
              "(記号ファイルのコンバートに失敗しました。)\n"
              "kigou: line 2: 'A' at byte 8 is no symbol of two bytes that a file can keep\n");
    EXPECT_EQ(run({"tree", "悪"}).status, 1) << "a failed import left a file";
}

} // namespace
} // namespace kigou
