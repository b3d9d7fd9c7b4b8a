// What a program sees of the built library: its exported names and what it needs. And a
// plain C program that uses it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

#include "support/text.h"

namespace {

using Names = std::set<std::string>;

/** What a command prints. */
std::string output_of(const std::string &command) {
    FILE *const pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> piece;
    while (const std::size_t bytes = std::fread(piece.data(), 1, piece.size(), pipe)) {
        output.append(piece.data(), bytes);
    }
    const int status = pclose(pipe);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << command << "\n" << output;
    return output;
}

/** All first groups of an expression's matches, one line each. */
Names matches(const std::string &text, const std::string &expression) {
    const std::regex pattern(expression);
    Names names;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (std::regex_search(line, match, pattern)) names.insert(match[1]);
    }
    return names;
}

/** The export list; without a JDK, what stands before the section of the bridge. */
Names listed_names() {
    std::ifstream file(ACC_EXPORT_LIST);
    std::ostringstream list;
    list << file.rdbuf();
    std::string text = list.str();
    const std::size_t bridge = text.find("# The bridge to a Java virtual machine");
    EXPECT_NE(bridge, std::string::npos);
    if (!ACC_WITH_BRIDGE) text.resize(bridge);
    return matches(text, R"(^ +(\w+);)");
}

Names needed_by(const std::string &file) {
    return matches(output_of("LC_ALL=C readelf -d '" + file + "'"), R"(\(NEEDED\).*\[(.*)\])");
}

} // namespace

TEST(Surface, exports_exactly_the_listed_names) {
    const Names listed = listed_names();
    // The version's own name, ACCSYM, is an absolute symbol.
    const Names exported = matches(output_of("nm -D --defined-only '" ACC_LIBRARY "'"), R"( [^A ] (\w+)(@|$))");
    EXPECT_GT(listed.size(), 80u);
    EXPECT_EQ(exported, listed);
}

TEST(Surface, needs_libc_alone) {
    EXPECT_EQ(needed_by(ACC_LIBRARY), Names{"libc.so.6"});
}

TEST(Surface, c_program_needs_only_the_library_and_libc) {
    EXPECT_EQ(needed_by(ACC_BROWSE), (Names{"libaccsym.so", "libc.so.6"}));
}

TEST(Surface, c_program_reads_the_first_list_of_the_standard_set) {
    const std::string list = output_of("'" ACC_BROWSE "' '" ACC_SOURCE_DIR "/data'");
    EXPECT_TRUE(list.starts_with(to_sjis("+ 標準の記号／記述記号\n"))) << to_utf8(list);
    EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 10) << to_utf8(list);
}
