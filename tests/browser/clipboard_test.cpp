// The bytes that set a clipboard, as a terminal, tmux and screen want them.
#include "browser/clipboard.h"

#include <gtest/gtest.h>

namespace kigou {
namespace {

TEST(clipboard, bytes_are_as_what_passes_them_on_wants_them) {
    const struct {
        const char *text;
        Between between;
        const char *bytes;
    } rows[] = {
        {"f", Between::nothing, "\033]52;c;Zg==\a"},
        {"fo", Between::nothing, "\033]52;c;Zm8=\a"},
        {"foo", Between::nothing, "\033]52;c;Zm9v\a"},
        {"→℃〜", Between::nothing, "\033]52;c;4oaS4oSD44Cc\a"},
        {"\xff\xfe\xfb\xef", Between::nothing, "\033]52;c;//777w==\a"},
        {"→", Between::tmux, "\033Ptmux;\033\033]52;c;4oaS\a\033\\"},
        {"→", Between::screen, "\033P\033]52;c;4oaS\a\033\\"},
    };
    for (const auto &row : rows) EXPECT_EQ(clipboard_bytes(row.text, row.between), row.bytes);
}

TEST(clipboard, screen_gets_what_is_long_in_pieces_it_can_hold) {
    std::string symbols, passed_on;
    for (int i = 0; i < 300; ++i) symbols += "→";
    std::string bytes = clipboard_bytes(symbols, Between::screen);
    while (!bytes.empty()) {
        const auto end = bytes.find("\033\\");
        ASSERT_EQ(bytes.substr(0, 2), "\033P");
        ASSERT_LE(end, 255U);
        passed_on += bytes.substr(2, end - 2);
        bytes.erase(0, end + 2);
    }
    EXPECT_EQ(passed_on, clipboard_bytes(symbols, Between::nothing));
}

} // namespace
} // namespace kigou
