// The table of commands: what stands in the help and the manual holds.
#include <gtest/gtest.h>

#include <algorithm>

#include "cli/command_line.h"
#include "cli/help_texts.h"
#include "cli/manual_page.h"
#include "picker/failure.h"

namespace kigou {
namespace {

/** The calls of kigou in a line for a shell, each as the words behind its name. */
std::vector<std::vector<std::string>> calls_in(const std::string &line) {
    std::vector<std::vector<std::string>> calls;
    std::vector<std::string> words;
    bool ended = false; // by a file to read or write
    const auto end_call = [&] {
        EXPECT_EQ(words.empty() ? "" : words.front(), "kigou") << line;
        if (!words.empty()) calls.emplace_back(words.begin() + 1, words.end());
        words.clear();
        ended = false;
    };
    for (std::size_t i = 0; i < line.size();) {
        if (line[i] == ' ') {
            ++i;
        } else if (line[i] == '|') {
            end_call();
            ++i;
        } else {
            const bool quoted = line[i] == '\'';
            const std::size_t begin = i + (quoted ? 1 : 0);
            const std::size_t end = std::min(line.find(quoted ? '\'' : ' ', begin), line.size());
            const std::string word = line.substr(begin, end - begin);
            ended = ended || word == "<" || word == ">";
            if (!ended) words.push_back(word);
            i = end + (quoted ? 1 : 0);
        }
    }
    end_call();
    return calls;
}

void expect_to_parse(const std::string &line, const Command *command) {
    const auto calls = calls_in(line);
    bool shows_command = command == nullptr;
    for (const auto &words : calls) {
        try {
            const auto invocation = CommandLine().parse(words);
            ASSERT_TRUE(invocation) << line;
            shows_command = shows_command || invocation->command == command;
        } catch (const Failure &failure) {
            ADD_FAILURE() << line << ": " << failure.what();
        }
    }
    EXPECT_TRUE(shows_command) << line;
}

TEST(Commands, examples_can_be_typed) {
    for (const Command *command : commands()) {
        const std::string examples = command->examples;
        ASSERT_FALSE(examples.empty()) << command->name;
        for (std::size_t begin = 0; begin < examples.size();) {
            const std::size_t end = std::min(examples.find('\n', begin), examples.size());
            expect_to_parse(examples.substr(begin, end - begin), command);
            begin = end + 1;
        }
    }
    for (const Example &example : program_examples()) expect_to_parse(example.command, nullptr);
}

TEST(Commands, words_and_options_are_told_of) {
    const CommandLine line;
    ASSERT_EQ(line.declared().size(), commands().size() + 1);
    for (const Declared &declared : line.declared()) {
        const std::string name = declared.command ? declared.command->name : "kigou";
        EXPECT_STRNE(declared.command ? declared.command->summary : program_summary, "") << name;
        for (const Argument &argument : declared.arguments) {
            EXPECT_FALSE(argument.help.empty()) << name << ' ' << argument.names.front();
            EXPECT_FALSE(argument.is_word() && argument.value == Value::none) << name;
        }
    }
}

TEST(Commands, a_name_stands_for_itself_also_when_others_begin_so) {
    const Command one{.name = "pr", .summary = "", .examples = "", .declare = nullptr};
    const Command other{.name = "print", .summary = "", .examples = "", .declare = nullptr, .alias = "show"};
    const std::vector<Declared> table{{}, {&other, {}}, {&one, {}}};
    const auto names = [&](const char *verb) {
        std::string text;
        for (const MeantVerb &meant : meant_by(verb, table)) text += meant.name + ' ';
        return text;
    };
    EXPECT_EQ(names("pr"), "pr ");
    EXPECT_EQ(names("p"), "print pr ");
    EXPECT_EQ(names("pri"), "print ");
    EXPECT_EQ(names("s"), "show ");
    EXPECT_EQ(names("x"), "");
}

TEST(Commands, an_option_that_browse_alone_has_stands_for_it) {
    const struct {
        std::vector<std::string> words;
        const char *command; /**< null: misuse */
    } rows[] = {
        {{"--pick"}, "browse"},
        {{"--copy", "--pick"}, "browse"},
        {{"--pick-to=x", "矢印"}, "browse"},
        {{"--json", "--pick-to", "x"}, "browse"},
        {{"--common-dir", "list", "--copy"}, "browse"},
        {{"--file", "list", "--pick"}, "browse"},
        {{"--pick", "list"}, "browse"},
        {{"list", "--pick"}, nullptr},
        {{"--file", "x"}, nullptr},
        {{"--codes"}, nullptr},
        {{"--json"}, nullptr},
        {{"--json", "tree"}, "tree"},
        {{"--", "--pick"}, nullptr},
    };
    for (const auto &row : rows) {
        std::string name;
        for (const std::string &word : row.words) name += word + ' ';
        try {
            CommandLine line;
            const auto invocation = line.parse(row.words);
            ASSERT_TRUE(row.command) << name;
            EXPECT_STREQ(invocation.value().command->name, row.command) << name;
        } catch (const Failure &failure) {
            EXPECT_FALSE(row.command) << name << failure.what();
        }
    }
}

TEST(Commands, manual_shows_a_text_to_the_letter) {
    ManualPage page("kigou", "x", "1");
    const std::size_t begin = page.roff().size();
    page.text(".kig --json\n\n'%(name)\\t' `~^` 罫線");
    EXPECT_EQ(page.roff().substr(begin),
              "\\&.kig \\-\\-json\n.PP\n"
              "\\(aq%(name)\\(rst\\(aq \\(ga\\(ti\\(ha\\(ga 罫線\n");
}

} // namespace
} // namespace kigou
