// cmd_delete.cpp - kigou delete: a symbol file goes.
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/command.h"
#include "cli/edit.h"
#include "cli/output.h"

namespace kigou {
namespace {

struct Options {
    std::string title;
    EditOptions edit;
};

Status run(const Context &context, const Options &options) {
    Host host(context.directories);
    const Title file = typed_title(options.title);
    const auto files = host.file_titles().items;
    const auto bearers = std::count_if(files.begin(), files.end(),
                                       [&](const Title &title) { return title.sjis == file.sjis; });
    if (bearers == 0) {
        throw Failure(Status::nothing_found, "there is no symbol file " + file.text,
                      {"'kigou files' lists the symbol files"});
    }
    if (file.text == standard_title) {
        throw Failure(Status::failed, "the standard set cannot be deleted");
    }
    if (!options.edit.dry_run) host.delete_file(file);
    if (context.json) {
        const nlohmann::ordered_json json = {
            {"file", file.text},
            {"saved", !options.edit.dry_run},
            {"changes", {{{"change", "delete"}, {"path", file.text}}}}};
        std::cout << json.dump(2) << '\n';
    } else {
        std::cout << (options.edit.dry_run ? "would have " : "") << "deleted the symbol file "
                  << printable(file.text) << '\n';
        if (options.edit.dry_run) std::cout << "dry run: nothing is deleted\n";
    }
    if (bearers > 1)
        complain("another file titled " + file.text + " was hidden by it and shows now");
    return Status::found;
}

Body declare(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("FILE-TITLE", options->title, "Title of the symbol file")->required();
    declare_dry_run(app, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command delete_command{"delete", "Delete a symbol file",
                             "  kigou delete 私の記号\n"
                             "'kigou export 私の記号 > backup.txt' before keeps what it holds.",
                             declare};

} // namespace kigou
