// kigou_program.h - kigou as people run it: arguments and input in, output, error output
// and exit status out.
#ifndef KIGOU_TESTS_KIGOU_PROGRAM_H
#define KIGOU_TESTS_KIGOU_PROGRAM_H

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#ifdef __linux__
#include <linux/capability.h>
#include <sys/prctl.h>
#endif

#include "cli/text_codec.h"
#include "common/acccom.h"

namespace kigou {
namespace fs = std::filesystem;
using nlohmann::json;

inline std::string contents_of(const fs::path &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

struct Outcome {
    int status;
    std::string out, err;
};

/** A scratch folder with a program and a common directory, and the program run on them. */
class Kigou : public testing::Test {
  protected:
    Kigou() {
        std::string name = (fs::temp_directory_path() / "kigou_test_XXXXXX").string();
        folder = mkdtemp(name.data());
        for (const char *sub : {"prog", "common", "tmp"}) fs::create_directory(folder / sub);
    }
    ~Kigou() override { fs::remove_all(folder); }

    /** A symbol file of a title and blocks, each "path" and its symbol lines. */
    void write(const std::string &file, const std::string &title, const std::vector<std::array<std::string, 2>> &blocks) {
        const std::string hyphens(40, '-');
        std::string text = "〈記号〉\n名称=" + title + "\n";
        for (const auto &[path, symbols] : blocks) {
            text += "［" + path + "］\n" + hyphens + "\n" + symbols + hyphens + "\n";
        }
        Sjis sjis = to_sjis(text);
        sjis.push_back(0);
        unsigned char *const euc = CM_sjis2euc(sjis.data());
        std::ofstream(folder / file, std::ios::binary) << reinterpret_cast<const char *>(euc);
        CM_free(euc);
    }

    void write_example() {
        write("prog/rei.kig", "例",
              {{{"矢印", "→←↑↓\n"}},
               {{"数学", "＋×÷\n±\n"}},
               {{"数学／比較", ""}},
               {{"数学論", ""}},
               {{"数学論／集合", "∈\n"}},
               {{"雑", "　①--\x1b[\n"}}});
    }

    Outcome run(std::vector<std::string> arguments, const char *output = nullptr, const std::string &program_directory = "prog",
                const std::string &input = "") {
        const fs::path in = folder / "in";
        std::ofstream(in, std::ios::binary) << input;
        const fs::path out = folder / "out";
        const fs::path err = folder / "err";
        const pid_t child = fork();
        if (child == 0) {
            const std::string tmp = "TMPDIR=" + (folder / "tmp").string();
            const std::string home = "XDG_DATA_HOME=" + (folder / "home").string();
            const std::string common = "KIGOU_COMMON_DIR=" + (folder / "common").string();
            const std::string program = "KIGOU_PROGRAM_DIR=" + (folder / program_directory).string();
            arguments.insert(arguments.begin(), KIGOU_PROGRAM);
            std::vector<char *> argv, env;
            for (std::string &argument : arguments) argv.push_back(argument.data());
            for (const std::string *text : {&tmp, &home, &common, &program}) {
                env.push_back(const_cast<char *>(text->c_str()));
            }
            std::string locale = "LC_ALL=C";
            env.push_back(locale.data());
            argv.push_back(nullptr);
            env.push_back(nullptr);
#ifdef __linux__
            prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE); // file modes hold for root as well
#endif
            if (!freopen(output ? output : out.c_str(), "w", stdout) || !freopen(err.c_str(), "w", stderr) ||
                !freopen(in.c_str(), "r", stdin)) {
                _exit(126);
            }
            execve(argv[0], argv.data(), env.data());
            _exit(127);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_TRUE(fs::is_empty(folder / "tmp")) << "a working file was left";
        return {WEXITSTATUS(status), contents_of(out), contents_of(err)};
    }

    fs::path folder;
};

} // namespace kigou

#endif
