// main.cpp - kigou, the command line of the symbol accessory.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string_view>
#include <vector>

#include "cli/command.h"
#include "cli/edit_command.h"
#include "cli/failure_words.h"
#include "cli/output.h"
#include "cli/program_data.h"
#include "cli/shell_word.h"
#include "cli/stop_signals.h"
#include "picker/near_titles.h"
#include "picker/recovery.h"
#include "picker/shipped_sets.h"

namespace kigou {
namespace {

const std::array commands{&files_command,  &tree_command,   &list_command,   &find_command,
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

constexpr std::size_t most_told = 3; // files of killed processes

struct Invocation {
    Context context;
    Body body;
    const Command *command = nullptr;
};

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
    for (const Command *command : commands) {
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
        for (const Command *command : commands) words.emplace_back(command->name);
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

/** What was to be done at another time: sets to be copied, and what killed processes left. */
void look_around(const Invocation &invocation) {
    const Directories &directories = invocation.context.directories;
    for (const std::string &title :
         provide_shipped_sets(directories, state_directory(), edit_hooks())) {
        complain("put " + title + " among your own sets, in " + directories.common);
    }
    if (invocation.command == &recover_command) return; // told of them already
    std::size_t told = 0;
    for (const Leftover &leftover : sweep_leftovers(directories)) {
        if (!leftover.kept.empty()) {
            complain("an edit of " + leftover.title +
                     " that was not saved is older than the set now; it is kept in");
            complain("  " + leftover.kept);
            continue;
        }
        if (++told > most_told) continue;
        complain("a process that was killed left an edit of " + leftover.title +
                 " that is not saved; to keep it:");
        complain("  kigou recover " + path_word(leftover.path) + " --as NEW-TITLE");
    }
    if (told > most_told) complain(std::to_string(told - most_told) + " more were left");
}

Status run(CLI::App &app, Invocation &invocation, int argc, char **argv) {
    app.set_version_flag("--version", "kigou " KIGOU_VERSION);
    app.footer(footer);
    declare_directories(app, invocation.context.directories);
    declare_commands(app, invocation);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &asked_for_help) {
        app.exit(asked_for_help);
        return Status::found;
    } catch (const CLI::ParseError &error) {
        throw misuse(app, error);
    }
    look_around(invocation);
    return invocation.body(invocation.context);
}

Status report(const Failure &failure, bool json) {
    if (json) {
        std::cout << json_of(failure) << '\n';
    } else {
        complain(failure.what());
        for (const std::string &hint : hints_of(failure)) complain(hint);
    }
    return status_of(failure.kind());
}

/** Runs the command and reports what ended it early. */
Status run_reporting(int argc, char **argv) {
    Invocation invocation;
    CLI::App app("Shows and edits the symbol files of the symbol accessory.", "kigou");
    // A mistake in the options may keep the parser from ever seeing this one.
    char **const end = std::find(argv, argv + argc, std::string_view("--"));
    const bool json = std::find(argv, end, std::string_view("--json")) != end;
    try {
        return run(app, invocation, argc, argv);
    } catch (const Failure &failure) {
        if (failure.kind() == FailureKind::interrupted) StopSignals::die_if_came();
        return report(failure, json);
    } catch (const std::exception &error) {
        return report(Failure(FailureKind::failed, error.what()), json);
    }
}

} // namespace
} // namespace kigou

int main(int argc, char **argv) {
    try {
        std::ios::sync_with_stdio(false);
        const kigou::Status status = kigou::run_reporting(argc, argv);
        if (std::cout.flush()) return static_cast<int>(status);
        kigou::complain("the output could not be written");
    } catch (const std::exception &error) {
        std::fprintf(stderr, "kigou: %s\n", error.what()); // not even a failure could be told
    }
    return static_cast<int>(kigou::Status::failed);
}
