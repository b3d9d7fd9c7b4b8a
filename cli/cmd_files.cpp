// cmd_files.cpp - kigou files: the titles of all symbol files.
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "cli/command.h"
#include "cli/host.h"
#include "cli/output.h"

namespace kigou {
namespace {

Status run(const Context &context) {
    Host host(context.directories);
    const Listing<Title> files = host.file_titles();
    nlohmann::ordered_json json = {{"files", nlohmann::json::array()},
                                   {"truncated", files.cut_short}};
    std::set<std::string> seen;
    for (const Title &file : files.items) {
        const bool hidden = !seen.emplace(file.sjis.begin(), file.sjis.end()).second;
        json["files"].push_back({{"title", file.text}, {"hidden", hidden}});
        if (context.json) continue;
        std::cout << printable(file.text) << (hidden ? "  (hidden by the one above)" : "") << '\n';
    }
    if (context.json) std::cout << json.dump(2) << '\n';
    if (files.cut_short) complain("the list is cut short: there are more symbol files");
    if (files.items.empty()) {
        complain("there is no symbol file in " + context.directories.program + " and " +
                 context.directories.common);
        return Status::nothing_found;
    }
    return Status::found;
}

Body declare(CLI::App &) {
    return run;
}

} // namespace

const Command files_command{"files", "List the titles of the symbol files",
                            "  kigou files\n"
                            "  kigou files --json\n"
                            "Of two files with the same title the first hides the second.",
                            declare};

} // namespace kigou
