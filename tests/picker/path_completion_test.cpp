// How typed paths may go on.
#include "picker/path_completion.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/workspace.h"

namespace kigou {
namespace {

struct Case {
    const char *name, *typed;
    std::optional<std::string> file;
    std::vector<std::string> paths;
};

TEST(PathCompletion, goes_on_from_title_to_title_as_it_was_typed) {
    const Workspace workspace;
    workspace.put("default.kig",
                  symbol_file("標準の記号", block("矢印", "→←") + block("矢印／太い") + block("矢印の論") + block("孤／児")));
    workspace.put("other.kig", symbol_file("矢", block("空 白") + block("＼", "→") + block("赤\033[31m") + block("赤\033[31m／下")));
    workspace.put("separated.kig", symbol_file("甲／乙", block("丙")));
    write_file(workspace.common / "hidden.kig", symbol_file("矢", block("隠")));
    write_file(workspace.common / "damaged.kig", "damaged");
    const SetFiles sets = find_sets({workspace.program, workspace.common, workspace.user});

    const std::vector<Case> cases{
        {"titles of files and of the standard set", "矢", {}, {"矢/", "矢印/", "矢印の論"}},
        {"what goes on", "矢印／", {}, {"矢印／太い"}},
        {"behind the title of a file", "標準の記号/矢印の", {}, {"標準の記号/矢印の論"}},
        {"both separators", "標準の記号／矢印/", {}, {"標準の記号／矢印/太い"}},
        {"a wide separator", "標準の記号／矢", {}, {"標準の記号／矢印／", "標準の記号／矢印の論"}},
        {"the last separator goes on", "標準の記号/矢印／太い", {}, {"標準の記号/矢印／太い"}},
        {"a file's title that others begin with", "矢/", {}, {"矢/空 白", "矢/＼"}},
        {"in a file that is named", "", "矢", {"空 白", "＼"}},
        {"in a file that is named, its title as well", "矢/空", "矢", {"矢/空 白"}},
        {"in no file", "", "無", {}},
        {"in another than its title says", "矢/", "標準の記号", {}},
        {"a separator in front", "/矢印/", {}, {"/矢印/太い"}},
        {"a separator in the title of a file", "甲", {}, {"甲／乙/"}},
        {"behind it", "甲／乙／", {}, {"甲／乙／丙"}},
        {"below what is not there", "無/", {}, {}},
        {"a title without a parent", "孤/", {}, {}},
        {"control characters that were typed", "矢/赤\033[31m/", {}, {}},
        {"what no title has", "€", {}, {}},
    };
    for (const Case &one : cases) {
        std::vector<std::string> paths;
        for (const PathCompletion &completion : path_completions(sets, one.typed, one.file)) {
            paths.push_back(completion.path);
        }
        std::sort(paths.begin(), paths.end());
        std::vector<std::string> expected = one.paths;
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(paths, expected) << one.name;
    }
    EXPECT_EQ(path_completions(sets, "標準の記号/矢印", {}).front().symbols, 2U);
}

} // namespace
} // namespace kigou
