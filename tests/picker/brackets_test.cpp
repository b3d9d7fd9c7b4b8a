// Which symbols are brackets, and of which two.
#include "picker/brackets.h"

#include <gtest/gtest.h>

namespace kigou {
namespace {

TEST(Brackets, come_by_twos) {
    const std::string pairs = "‘’“”（）〔〕［］｛｝〈〉《》「」『』【】〝〟";
    const std::u32string characters = to_characters(pairs);
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const std::size_t open = i / 2 * 2;
        const auto pair = bracket_pair(to_sjis(to_utf8(characters[i])));
        ASSERT_TRUE(pair) << to_utf8(characters[i]);
        EXPECT_EQ(to_utf8(pair->first) + to_utf8(pair->second), to_utf8(characters[open]) + to_utf8(characters[open + 1]));
    }
    for (const char *const other : {"…", "＋", "→", "№", "亜", "A"}) EXPECT_FALSE(bracket_pair(to_sjis(other))) << other;
}

} // namespace
} // namespace kigou
