// cmd_files.cpp - kigou files: the titles of all symbol files.
#include <iostream>
#include <set>
#include <string>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/shell_word.h"
#include "picker/set_files.h"

namespace kigou {
namespace {

Status run(const Context &context) {
    const SetFiles files = find_sets(context.directories);
    nlohmann::ordered_json json = {{"files", nlohmann::json::array()},
                                   {"truncated", false},
                                   {"unusable", nlohmann::json::array()}};
    std::set<Sjis> seen;
    for (const SetFile &file : files.sets) {
        const bool hidden = !seen.insert(file.title.sjis).second;
        json["files"].push_back(
            {{"title", file.title.text}, {"hidden", hidden}, {"path", file.path}});
        if (context.json) continue;
        std::cout << printable(file.title.text) << (hidden ? "  (hidden by the one above)" : "")
                  << '\n';
    }
    for (const SpoiltFile &file : files.spoilt) {
        json["unusable"].push_back({{"path", file.path}, {"reason", file.reason}});
        if (context.json) continue;
        complain(file.path + " cannot be used: " + file.reason);
        complain(quoted_command("kigou check " + path_word(file.path)) + " says more");
    }
    if (context.json) write(json);
    if (!files.sets.empty()) return Status::found;
    if (!context.json) {
        complain("there is no symbol file in " + context.directories.program + " and " +
                 context.directories.common);
    }
    return Status::nothing_found;
}

Body declare(Arguments &) {
    return run;
}

} // namespace

const Command files_command{
    .name = "files",
    .summary = "List the titles of the symbol files",
    .examples =
        "  kigou files\n"
        "  kigou files --json",
    .declare = declare,
    .notes = "Of two files with the same title the first hides the second."};

} // namespace kigou
