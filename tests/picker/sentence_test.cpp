// Sentences of the core in another language.
#include "picker/sentence.h"

#include <gtest/gtest.h>

#include "picker/word_list.h"

namespace kigou {
namespace {

const char *reversed(const char *text) {
    const std::string_view english = text;
    if (english == "cannot read {1}: {2}") return "{2}のため{1}は読めません{";
    if (english == "{1}, {2}") return "{1}、{2}";
    return text;
}

TEST(sentence, puts_each_part_into_its_place) {
    const struct {
        Translator translator;
        std::string file, reason, said;
    } rows[] = {
        {nullptr, "a", "b", "cannot read a: b"},
        {nullptr, "{2}", "{1}", "cannot read {2}: {1}"},
        {reversed, "a", "b", "bのためaは読めません{"},
        {reversed, "{2}", "", "のため{2}は読めません{"},
    };
    for (const auto &row : rows) {
        translate_sentences(row.translator);
        EXPECT_EQ(sentence("cannot read {1}: {2}", row.file, row.reason), row.said);
    }
    EXPECT_EQ(word_list({"一", "二", "三"}), "一、二、三");
    translate_sentences(nullptr);
    EXPECT_EQ(word_list({"一", "二", "三"}), "一, 二, 三");
}

} // namespace
} // namespace kigou
