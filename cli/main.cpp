// main.cpp - kigou, the command line of the symbol accessory.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command_line.h"
#include "cli/completion.h"
#include "cli/edit_command.h"
#include "cli/encoded_output.h"
#include "cli/failure_words.h"
#include "cli/output.h"
#include "cli/shell_word.h"
#include "cli/stop_signals.h"
#include "picker/compare/shipped_versions.h"
#include "picker/recovery.h"
#include "picker/shipped_sets.h"

namespace kigou {
namespace {

constexpr std::size_t most_told = 3; // files of killed processes

/** What was to be done at another time: sets to be copied, and what killed processes left. */
void look_around(const Invocation &invocation) {
    const Directories &directories = invocation.context.directories;
    for (const std::string &title :
         provide_shipped_sets(directories, state_directory(), edit_hooks())) {
        complain("put " + title + " among your own sets, in " + directories.common);
    }
    for (const std::string &title : keep_shipped_versions(directories, state_directory())) {
        complain("a new version of " + title +
                 " came with kigou; to bring it into a copy of yours:");
        // Of the others a copy was put among the person's own sets.
        const bool has_copy = title != standard_title;
        complain("  kigou update " +
                 (has_copy ? shell_word(title) : "TITLE-OF-YOUR-COPY --of " + shell_word(title)));
    }
    // One who recovers knows of them, and the browser asks.
    if (invocation.command == &recover_command || invocation.command == &browse_command) return;
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

Status run(const std::vector<std::string> &words) {
    CommandLine line;
    const std::optional<Invocation> invocation = line.parse(words);
    if (!invocation) return Status::found;
    look_around(*invocation);
    const Context &context = invocation->context;
    std::optional<EncodedOutput> encoded;
    if (context.output() != Encoding::utf_8) encoded.emplace(std::cout, context.output());
    return invocation->body(context);
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

/** Without a word it is the browser on a terminal. */
std::vector<std::string> with_command(std::vector<std::string> words) {
    const bool on_terminal = words.empty() && isatty(STDIN_FILENO) && isatty(STDOUT_FILENO);
    if (on_terminal) words.emplace_back(browse_command.name);
    return words;
}

/** Runs the command and reports what ended it early. */
Status run_reporting(const std::vector<std::string> &words) {
    // A mistake in the options may keep the parser from ever seeing this one.
    const auto end = std::find(words.begin(), words.end(), "--");
    const bool json = std::find(words.begin(), end, "--json") != end;
    try {
        return run(words);
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
        if (argc > 1 && argv[1] == std::string_view(kigou::completion_verb)) {
            kigou::write_completion(std::vector<std::string>(argv + 2, argv + argc));
            return 0;
        }
        const kigou::Status status =
            kigou::run_reporting(kigou::with_command({argv + std::min(argc, 1), argv + argc}));
        if (std::cout.flush()) return static_cast<int>(status);
        kigou::complain("the output could not be written");
    } catch (const std::exception &error) {
        std::fprintf(stderr, "kigou: %s\n", error.what()); // not even a failure could be told
    }
    return static_cast<int>(kigou::Status::failed);
}
