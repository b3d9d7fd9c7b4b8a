// kigou check and kigou recover, on files that the library would not take.
#include "cli/host.h"
#include "kigou_program.h"

namespace kigou {
namespace {

using nlohmann::json;

class KigouRepairs : public Kigou {
  protected:
    /** A file of UTF-8 text, in EUC-JP. */
    std::string write_disk(const std::string &text) {
        Sjis sjis = to_sjis(text);
        sjis.push_back(0);
        unsigned char *const euc = CM_sjis2euc(sjis.data());
        std::ofstream(folder / "file.kig", std::ios::binary) << reinterpret_cast<char *>(euc);
        CM_free(euc);
        return (folder / "file.kig").string();
    }

    /** What a process that is killed with the example open leaves behind. */
    std::string left_behind() {
        write_example();
        setenv("TMPDIR", folder.c_str(), 1);
        Host host({(folder / "prog").string(), (folder / "common").string(), "user"});
        host.open({to_sjis("例"), "例"});
        const std::string path = (folder / "left").string();
        fs::copy_file(host.working_file(), path);
        return path;
    }

    const std::string rule = std::string(40, '-') + "\n";
    const std::string head = "〈記号〉\n名称=例\n";
};

TEST_F(KigouRepairs, check_lists_what_is_wrong_by_line) {
    const std::string deep = "一／二／三／四／五／六／七／八／九／十";
    std::string of_300_bytes;
    for (int i = 0; i < 150; ++i) of_300_bytes += "長";
    const auto block = [&](const std::string &path, const std::string &lines) { return "［" + path + "］\n" + rule + lines + rule; };
    struct Case {
        const char *name;
        std::string text;
        std::vector<std::string> findings; /**< line and kind */
    };
    const Case cases[] = {
        {"clean", head + block("甲", "→\n←\n") + block("甲／乙", ""), {}},
        {"clean though the last line has no end", head + block("甲", "→←"), {}},
        {"wrong head", "記号\n名称=例\n", {"1 head"}},
        {"no name line", "〈記号〉\n例\n", {"1 head"}},
        {"file title", "〈記号〉\n名称=例／\n", {"2 title"}},
        {"too deep", head + block(deep, ""), {"3 too_deep", "3 no_parent"}},
        {"long title", head + block(of_300_bytes, ""), {"3 title"}},
        {"long path", head + block("甲／" + of_300_bytes + "／" + of_300_bytes, ""), {"3 title", "3 title", "3 no_parent"}},
        {"off the grid", head + block("甲", "→\n←A\n↑\n"), {"3 unterminated", "6 off_grid"}},
        {"single bytes", head + block("甲", "→AB\n"), {"5 off_grid"}},
        {"outside JIS X 0208", head + block("甲", "→①\n"), {"5 outside"}},
        {"duplicate", head + block("甲", "→←\n→\n") + block("乙", "→\n"), {"6 duplicate"}},
        {"missing parent", head + block("甲／乙", ""), {"3 no_parent"}},
        {"same title twice", head + block("甲", "") + block("甲", ""), {"6 duplicate_title"}},
        {"siblings that begin alike", head + block("甲乙", "") + block("甲", "") + block("丙", ""), {"6 prefix"}},
        {"like the beginning of no sibling", head + block("甲", "") + block("丙", "") + block("丙／甲乙", ""), {}},
        {"no end line", head + "［甲］\n" + rule + "→\n", {"3 unterminated"}},
        {"no start line", head + "［甲］\n", {"3 unterminated"}},
        {"no end line within", head + "［甲］\n" + rule + "→\n" + block("乙", "←\n"), {"6 unterminated"}},
        {"title line cut off", head + block("甲", "") + "［乙", {"6 unterminated"}},
    };
    for (const Case &c : cases) {
        const std::string path = write_disk(c.text);
        const Outcome outcome = run({"check", path, "--json"});
        EXPECT_EQ(outcome.status, c.findings.empty() ? 0 : 1) << c.name;
        std::vector<std::string> findings;
        const json report = json::parse(outcome.out);
        for (const json &finding : report["files"][0]["findings"]) {
            findings.push_back(finding["line"].dump() + " " + finding["kind"].get<std::string>());
        }
        EXPECT_EQ(findings, c.findings) << c.name << '\n' << outcome.out;
    }
    const std::string path = write_disk(head + block("甲", "→\n"));
    std::string bytes = contents_of(path);
    for (std::size_t at = 0; (at = bytes.find('\n', at)) != bytes.npos; at += 2) {
        bytes.insert(at, "\r");
    }
    std::ofstream(path, std::ios::binary) << bytes << '\0' << "rest";
    EXPECT_EQ(run({"check", path, ACC_SOURCE_DIR "/data/default.kig"}).out,
              path + ":1: 6 CR bytes from here on: line ends must be LF alone (tr -d '\\r' repairs)\n" + path +
                  ":7: a NUL byte ends the file here; 4 bytes behind it are not read\n" +
                  ACC_SOURCE_DIR "/data/default.kig: clean (標準の記号, 58 titles, 682 symbols)\n");
    const Outcome unreadable = run({"check", "/nonexistent"});
    EXPECT_EQ(unreadable.status, 2);
    EXPECT_EQ(unreadable.err, "kigou: cannot read /nonexistent: No such file or directory\n");
}

TEST_F(KigouRepairs, recovers_the_working_file_of_a_killed_process) {
    const std::string left = left_behind();
    const std::string to = (folder / "saved.kig").string();
    const Outcome taken = run({"recover", left});
    EXPECT_EQ(taken.status, 2) << "the file would be hidden";
    EXPECT_EQ(taken.err,
              "kigou: there is a symbol file 例 already\n"
              "kigou: --as NEW-TITLE recovers under another title\n"
              "kigou: --to FILE writes to a file of your choice\n");
    const Outcome saved = run({"recover", left, "--to", to});
    EXPECT_EQ(saved.status, 0) << saved.err;
    EXPECT_EQ(saved.out, "recovered 例 (6 titles, 13 symbols) to " + to + "\n");
    EXPECT_EQ(contents_of(to), contents_of(folder / "prog/rei.kig"));
    const Outcome over = run({"recover", left, "--to", to, "--as", "他"});
    EXPECT_EQ(over.status, 2);
    EXPECT_EQ(over.err, "kigou: " + to +
                            " exists and is not overwritten\n"
                            "kigou: name a file that does not exist with --to\n");
    EXPECT_EQ(contents_of(to), contents_of(folder / "prog/rei.kig"));

    std::ofstream(folder / "common/@0000000.kig") << "mine";
    EXPECT_EQ(run({"recover", left, "--as", "救出", "--dry-run"}).status, 0);
    EXPECT_EQ(run({"recover", left, "--as", "救出"}).status, 0);
    EXPECT_EQ(contents_of(folder / "common/@0000000.kig"), "mine");
    EXPECT_EQ(run({"list", "救出/矢印"}).out, "救出／矢印\n→ ← ↑ ↓\n");

    std::string damaged = contents_of(left);
    damaged[0] = 0x55;
    std::ofstream(left, std::ios::binary) << damaged;
    fs::remove(to);
    EXPECT_EQ(json::parse(run({"recover", left, "--to", to, "--json"}).out)["header_damaged"], true);
    EXPECT_EQ(contents_of(to), contents_of(folder / "prog/rei.kig"));
    EXPECT_EQ(run({"recover", (folder / "prog/rei.kig").string(), "--to", to + "2"}).status, 2);
    EXPECT_FALSE(fs::exists(to + "2"));
}

} // namespace
} // namespace kigou
