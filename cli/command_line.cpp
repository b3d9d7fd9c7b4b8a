// command_line.cpp - see command_line.h. The build passes KIGOU_VERSION.
#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>

#include "cli/help_texts.h"
#include "cli/program_data.h"
#include "picker/failure.h"
#include "picker/near_titles.h"

namespace kigou {
namespace {

constexpr std::array table{
    &browse_command, &files_command,    &tree_command,      &list_command,   &find_command,
    &show_command,   &print_command,    &chart_command,     &new_command,    &add_command,
    &rename_command, &rm_command,       &put_command,       &copy_command,   &delete_command,
    &export_command, &import_command,   &check_command,     &diff_command,   &merge_command,
    &update_command, &coverage_command, &git_setup_command, &recover_command};

constexpr const char *where_words_are_told =
    "'kigou --help' shows the commands, 'kigou COMMAND --help' their options";

/** What may have been meant by a word that is no command or no option of it. */
std::vector<std::string> near_words(const CLI::App &app, const std::string &word) {
    std::vector<std::string> words;
    if (!word.starts_with('-')) {
        for (const Command *command : commands()) {
            words.emplace_back(command->name);
            if (command->alias) words.emplace_back(command->alias);
        }
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
    // A word that was taken for an option may be the one that is lacking.
    const bool extra =
        dynamic_cast<const CLI::ExtrasError *>(&error) ||
        (dynamic_cast<const CLI::RequiredError *>(&error) && !app.remaining(true).empty());
    if (no_command || extra) {
        const std::string word = no_command ? unknown.front() : app.remaining(true).front();
        if (!no_command) text = "what is " + word + "?";
        hints = did_you_mean(near_words(app, word));
        if (hints.empty() && word.starts_with('-'))
            hints.emplace_back("a word that begins with - stands behind --");
    }
    hints.emplace_back(where_words_are_told);
    return {FailureKind::refused, text, hints};
}

/**
 * Puts the name of the command in the place of its beginning, when it begins no other, and
 * before an option that stands for it.
 */
void write_out_verb(std::vector<std::string> &words, const std::vector<Declared> &declared) {
    const TypedLine line(words, declared);
    if (!line.verb && line.command) words.insert(words.begin(), line.command->command->name);
    if (!line.verb || words[*line.verb].empty()) return;
    std::string &verb = words[*line.verb];
    const std::vector<MeantVerb> meant = meant_by(verb, declared);
    if (meant.empty()) return;
    if (meant.size() == 1) {
        verb = meant.front().name;
        return;
    }
    std::string names = meant.front().name;
    for (std::size_t i = 1; i < meant.size(); ++i) {
        names += (i + 1 == meant.size() ? " or " : ", ") + meant[i].name;
    }
    throw Failure(FailureKind::refused, verb + " may be " + names, {where_words_are_told});
}

constexpr const char *write_json = "Write JSON";

} // namespace

struct CommandLine::Parser {
    CLI::App app{program_summary, "kigou"};
};

std::span<const Command *const> commands() {
    return table;
}

CommandLine::CommandLine() : parser_(std::make_unique<Parser>()) {
    declare_general();
    for (const Command *command : commands()) declare(*command);
}

CommandLine::~CommandLine() = default;

void CommandLine::declare_general() {
    CLI::App &app = parser_->app;
    app.footer(program_footer());
    app.require_subcommand(1);
    app.fallthrough();
    app.set_version_flag("--version", "kigou " KIGOU_VERSION);
    Directories &directories = invocation_.context.directories;
    directories = default_directories(program_data());
    Arguments arguments(app);
    arguments.folder("--program-dir", "KIGOU_PROGRAM_DIR", directories.program,
                     "Directory of the sets that come with kigou");
    arguments.folder("--common-dir", "KIGOU_COMMON_DIR", directories.common,
                     "Directory of your own sets");
    arguments.folder("--user-dir", "KIGOU_USER_DIR", directories.user,
                     "User directory; nothing is read there");
    arguments.flag("--json", invocation_.context.json, write_json);
    arguments.choice("--to", invocation_.context.encoding, encoding_names(),
                     "Encoding of what is written: UTF-8 (default), EUC-JP or Shift_JIS");
    declared_.push_back({nullptr, arguments.all()});
    std::vector<Argument> &all = declared_.back().arguments;
    all.push_back({.names = {"-h", "--help"}, .help = app.get_help_ptr()->get_description()});
    all.push_back({.names = {"--version"}, .help = app.get_version_ptr()->get_description()});
}

void CommandLine::declare(const Command &command) {
    CLI::App *const options = parser_->app.add_subcommand(command.name, command.summary);
    if (command.alias) options->alias(command.alias);
    std::string footer = std::string("Examples:\n") + command.examples;
    if (command.notes) footer += std::string("\n") + command.notes;
    if (command.exit_status) footer += std::string("\nExit status: ") + command.exit_status + ".";
    options->footer(footer);
    // One of all commands; here it stands in the help of each.
    options->add_flag("--json", invocation_.context.json, write_json);
    Arguments arguments(*options);
    options->callback([this, &command, body = command.declare(arguments)] {
        invocation_.body = body;
        invocation_.command = &command;
    });
    declared_.push_back({&command, arguments.all()});
}

std::optional<Invocation> CommandLine::parse(std::vector<std::string> words) {
    CLI::App &app = parser_->app;
    if (!words.empty() && words.front() == "help") {
        words.erase(words.begin());
        words.emplace_back("--help");
    }
    write_out_verb(words, declared_);
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
