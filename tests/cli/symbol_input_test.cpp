// What a person types, as symbols.
#include "cli/symbol_input.h"

#include <gtest/gtest.h>

namespace kigou {
namespace {

TEST(symbol_input, folds_what_is_typed_into_double_bytes) {
    struct Case {
        Reading reading;
        const char *typed, *symbols;
        std::vector<std::size_t> refused;
    };
    const Case cases[] = {
        {Reading::folded, "aZ09!", "ａＺ０９！", {}},
        {Reading::folded, "\"'-~\\`", "”’−〜＼｀", {}},
        {Reading::folded, "ｱｧ｡ﾝ", "アァ。ン", {}},
        {Reading::folded, "ｶﾞｳﾞﾊﾞﾊﾟﾎﾟﾄﾞ", "ガヴバパポド", {}},
        {Reading::folded, "ｱﾞｶﾟﾟ", "ア゛カ゜゜", {}},
        {Reading::folded, "カﾞ", "カ゛", {}},
        {Reading::folded, "　→ \t①", "　→①", {}},
        {Reading::plain, "a→é", "→", {1, 3}},
        {Reading::plain, "\xFF→", "→", {1}},
        {Reading::escaped, "{817B}→{}", "＋→", {8, 9}},
        {Reading::escaped, "{000D}", "", {1, 2, 3, 4, 5, 6}},
    };
    for (const Case &c : cases) {
        const SymbolLine line = read_symbols(c.typed, c.reading);
        std::string symbols;
        std::vector<std::size_t> refused;
        for (const Sjis &symbol : line.symbols) symbols += to_utf8(symbol);
        for (const Refusal &refusal : line.refused) refused.push_back(refusal.column);
        EXPECT_EQ(symbols, c.symbols) << c.typed;
        EXPECT_EQ(refused, c.refused) << c.typed;
    }
}

} // namespace
} // namespace kigou
