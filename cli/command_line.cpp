// command_line.cpp - see command_line.h. The build passes KIGOU_VERSION.
#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>

#include "cli/program_data.h"
#include "picker/failure.h"
#include "picker/near_titles.h"

namespace kigou {
namespace {

constexpr std::array table{&files_command,  &tree_command,   &list_command,   &find_command,
                           &show_command,   &print_command,  &new_command,    &add_command,
                           &rename_command, &rm_command,     &put_command,    &copy_command,
                           &delete_command, &export_command, &import_command, &check_command,
                           &recover_command};

constexpr const char *footer =
    "Examples:\n"
    "  kigou tree                        the titles of the standard set\n"
    "  kigou list 一般記号/矢印 --codes  its arrows with their codes\n"
    "  kigou info ※                      where a symbol stands\n"
    "  kigou new 私の記号                a symbol file of your own\n"
    "  kigou add 私の記号 矢印           a title in it\n"
    "  kigou put 私の記号/矢印 →←        symbols in the title\n"
    "Exit status: 0 found or done, 1 nothing found, 2 misuse or failure,\n"
    "3 an import left something out.";

void declare_directories(CLI::App &app, Directories &directories) {
    directories = default_directories(program_data());
    app.add_option("--program-dir", directories.program,
                   "Directory of the sets that come with kigou")
        ->envname("KIGOU_PROGRAM_DIR")
        ->capture_default_str();
    app.add_option("--common-dir", directories.common, "Directory of your own sets")
        ->envname("KIGOU_COMMON_DIR")
        ->capture_default_str();
    app.add_option("--user-dir", directories.user, "User directory; nothing is read there")
        ->envname("KIGOU_USER_DIR")
        ->capture_default_str();
}

void declare_commands(CLI::App &app, Invocation &invocation) {
    app.require_subcommand(1);
    app.fallthrough();
    app.add_flag("--json", invocation.context.json, "Write JSON");
    for (const Command *command : commands()) {
        CLI::App *const options = app.add_subcommand(command->name, command->summary);
        options->footer(std::string("Examples:\n") + command->examples);
        options->add_flag("--json", invocation.context.json, "Write JSON");
        Arguments arguments(*options);
        options->callback([&invocation, command, body = command->declare(arguments)] {
            invocation.body = body;
            invocation.command = command;
        });
    }
}

/** What may have been meant by a word that is no command or no option of it. */
std::vector<std::string> near_words(const CLI::App &app, const std::string &word) {
    std::vector<std::string> words;
    if (!word.starts_with('-')) {
        for (const Command *command : commands()) words.emplace_back(command->name);
        return nearest(words, word);
    }
    const auto chosen = app.get_subcommands();
    for (const CLI::App *one : {chosen.empty() ? &app : chosen.front(), &app}) {
        for (const CLI::Option *option : one->get_options()) {
            for (const std::string &name : option->get_lnames()) words.push_back("--" + name);
        }
    }
    return nearest(words, word.substr(0, word.find('=')));
}

Failure misuse(const CLI::App &app, const CLI::ParseError &error) {
    const std::vector<std::string> unknown = app.remaining();
    const bool no_command = app.get_subcommands().empty() && !unknown.empty();
    std::string text = error.what();
    std::vector<std::string> hints;
    if (no_command) text = "there is no command " + unknown.front();
    if (no_command || dynamic_cast<const CLI::ExtrasError *>(&error)) {
        const std::string word = no_command ? unknown.front() : app.remaining(true).front();
        if (!no_command) text = "what is " + word + "?";
        hints = did_you_mean(near_words(app, word));
        if (hints.empty() && word.starts_with('-'))
            hints.emplace_back("a word that begins with - stands behind --");
    }
    hints.emplace_back("'kigou --help' shows the commands, 'kigou COMMAND --help' their options");
    return {FailureKind::refused, text, hints};
}

} // namespace

struct CommandLine::Parser {
    CLI::App app{"Shows and edits the symbol files of the symbol accessory.", "kigou"};
};

std::span<const Command *const> commands() {
    return table;
}

CommandLine::CommandLine() : parser_(std::make_unique<Parser>()) {
    CLI::App &app = parser_->app;
    app.set_version_flag("--version", "kigou " KIGOU_VERSION);
    app.footer(footer);
    declare_directories(app, invocation_.context.directories);
    declare_commands(app, invocation_);
}

CommandLine::~CommandLine() = default;

std::optional<Invocation> CommandLine::parse(std::vector<std::string> words) {
    CLI::App &app = parser_->app;
    std::reverse(words.begin(), words.end()); // as the parser takes them
    try {
        app.parse(std::move(words));
    } catch (const CLI::Success &asked_for_help) {
        app.exit(asked_for_help);
        return std::nullopt;
    } catch (const CLI::ParseError &error) {
        throw misuse(app, error);
    }
    return invocation_;
}

} // namespace kigou
