// main.cpp - kigou, the command line host of the symbol accessory.
#include <algorithm>
#include <array>
#include <exception>
#include <iostream>
#include <vector>

#include "cli/command.h"
#include "cli/output.h"

namespace kigou {
namespace {

const std::array commands{&files_command,  &tree_command,  &list_command,   &info_command,
                          &new_command,    &add_command,   &rename_command, &rm_command,
                          &put_command,    &copy_command,  &delete_command, &export_command,
                          &import_command, &check_command, &recover_command};

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

struct Invocation {
    Context context;
    Body body;
};

void declare_directories(CLI::App &app, Directories &directories) {
    directories = default_directories();
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
        options->callback(
            [&invocation, body = command->declare(*options)] { invocation.body = body; });
    }
}

Status run(int argc, char **argv) {
    Invocation invocation;
    CLI::App app("Shows and edits the symbol files of the symbol accessory.", "kigou");
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
        const std::vector<std::string> unknown = app.remaining();
        const bool no_command = app.get_subcommands().empty() && !unknown.empty();
        complain(no_command ? "there is no command " + unknown.front() : error.what());
        complain("'kigou --help' shows the commands, 'kigou COMMAND --help' their options");
        return Status::failed;
    }
    const Directories &directories = invocation.context.directories;
    if (provide_own_sets(directories)) {
        complain("made " + directories.common +
                 " for your own sets, with copies of the installed ones");
    }
    return invocation.body(invocation.context);
}

/** Runs the command and reports what ended it early. */
Status run_reporting(int argc, char **argv) {
    try {
        return run(argc, argv);
    } catch (const Failure &failure) {
        complain(failure.what());
        for (const std::string &hint : failure.hints()) complain(hint);
        return failure.status();
    } catch (const std::exception &error) {
        complain(error.what());
        return Status::failed;
    }
}

} // namespace
} // namespace kigou

int main(int argc, char **argv) {
    std::ios::sync_with_stdio(false);
    const kigou::Status status = kigou::run_reporting(argc, argv);
    if (!std::cout.flush()) {
        kigou::complain("the output could not be written");
        return static_cast<int>(kigou::Status::failed);
    }
    return static_cast<int>(status);
}
