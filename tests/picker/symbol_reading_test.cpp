// What a person types, as symbols.
#include "picker/symbol_reading.h"

#include <gtest/gtest.h>

namespace kigou {
namespace {

TEST(symbol_reading, folds_what_is_typed_into_double_bytes) {
    const struct {
        Reading reading;
        const char *typed, *symbols;
        const char *refused; /**< places */
    } cases[] = {
        {Reading::folded, "aZ09!", "ａＺ０９！", ""},
        {Reading::folded, "\"'-~\\`", "”’−〜＼｀", ""},
        {Reading::folded, "ｱｧ｡ﾝ", "アァ。ン", ""},
        {Reading::folded, "ｶﾞｳﾞﾊﾞﾊﾟﾎﾟﾄﾞ", "ガヴバパポド", ""},
        {Reading::folded, "ｱﾞｶﾟﾟ", "ア゛カ゜゜", ""},
        {Reading::folded, "カﾞ", "カ゛", ""},
        {Reading::folded, "　→ \t①", "　→①", ""},
        {Reading::plain, "a→é", "→", ", column 1, column 3"},
        {Reading::plain, "\xFF→", "→", ", column 1"},
        {Reading::escaped, "{817B}→{}", "＋→", ", column 8, column 9"},
        {Reading::escaped, "{000D}", "", ", column 1, column 2, column 3, column 4, column 5, column 6"},
    };
    for (const auto &c : cases) {
        LeftOutList left_out;
        std::string symbols, refused;
        for (const Sjis &symbol : read_symbols(c.typed, c.reading, "", left_out)) {
            symbols += to_utf8(symbol);
        }
        for (const LeftOut &one : left_out.first()) refused += one.place;
        EXPECT_EQ(symbols, c.symbols) << c.typed;
        EXPECT_EQ(refused, c.refused) << c.typed;
    }
}

} // namespace
} // namespace kigou
