// What a program sees of the built library: its exported names and what it needs. And a
// plain C program that uses it.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <regex>
#include <set>
#include <stdexcept>

#include "support/text.h"
#include "support/workspace.h"

namespace {

using Names = std::set<std::string>;

/** What a command prints. */
std::string output_of(const std::string &command) {
    FILE *const pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> piece;
    while (const std::size_t bytes = std::fread(piece.data(), 1, piece.size(), pipe)) output.append(piece.data(), bytes);
    EXPECT_EQ(pclose(pipe), 0) << command << "\n" << output;
    return output;
}

/** All first groups of an expression's matches. */
Names matches(const std::string &text, const char *expression) {
    const std::regex pattern(expression);
    Names names;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) names.insert((*match)[1]);
    return names;
}

Names needed_by(const std::string &file) {
    return matches(output_of("LC_ALL=C readelf -d '" + file + "'"), R"(\(NEEDED\).*\[(.*)\])");
}

} // namespace

TEST(Surface, exports_exactly_the_listed_names) {
    std::string list = read_file(ACC_EXPORT_LIST);
    const std::size_t bridge = list.find("# The bridge to a Java virtual machine");
    ASSERT_NE(bridge, std::string::npos);
    if (!ACC_WITH_BRIDGE) list.resize(bridge); // built without a JDK
    const Names listed = matches(list, R"(\n +(\w+);)");
    EXPECT_GT(listed.size(), 80u);
    // The version's own name, ACCSYM, is an absolute symbol.
    EXPECT_EQ(matches(output_of("nm -D --defined-only '" ACC_LIBRARY "'"), R"( [^A ] (\w+)[@\n])"), listed);
}

TEST(Surface, needs_libc_alone_and_so_does_a_program) {
    EXPECT_EQ(needed_by(ACC_LIBRARY), Names{"libc.so.6"});
    EXPECT_EQ(needed_by(ACC_BROWSE), (Names{"libaccsym.so.0", "libc.so.6"}));
}

TEST(Surface, c_program_reads_the_first_list_of_the_standard_set) {
    const std::string list = output_of("'" ACC_BROWSE "' '" ACC_SOURCE_DIR "/data'");
    EXPECT_TRUE(list.starts_with(to_sjis("+ 標準の記号／記述記号\n"))) << to_utf8(list);
    EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 10) << to_utf8(list);
}
