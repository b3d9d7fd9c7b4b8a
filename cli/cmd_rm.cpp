// cmd_rm.cpp - kigou rm: a title goes with all that lies below it.
#include <memory>

#include "cli/command.h"
#include "cli/edit.h"
#include "cli/symbol_input.h"
#include "cli/working_copy.h"

namespace kigou {
namespace {

struct Options {
    std::string path;
    EditOptions edit;
};

Status run(const Context &context, const Options &options) {
    Edit edit(context, options.edit);
    const Located located = edit.locate(options.path);
    const std::string &path = located.path.text;
    if (located.path.sjis == located.tree.items.front().sjis) {
        throw Failure(Status::failed, path + " is a symbol file and no title in one",
                      {"'kigou delete " + path + "' deletes it"});
    }
    bool found = false; // of titles that stand twice the first goes
    for (const WorkingBlock &block : working_copy(edit.host()).blocks) {
        const bool itself = block.path.sjis == located.path.sjis && !found;
        if (!itself && !lies_below(block.path.text, path)) continue;
        found = found || itself;
        const std::size_t symbols = symbols_in(block.data).size();
        edit.did("removed " + block.path.text + " (" + counted(symbols, "symbol") + ")",
                 {{"change", "remove"}, {"path", block.path.text}, {"symbols", symbols}});
    }
    edit.host().delete_title(located.path);
    edit.finish();
    return Status::found;
}

Body declare(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("PATH", options->path, "Title to remove, with all titles below it")->required();
    declare_edit_options(app, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command rm_command{"rm", "Remove a title with all that lies below it",
                         "  kigou rm 私の記号/矢印 --dry-run\n"
                         "  kigou rm 私の記号/矢印",
                         declare};

} // namespace kigou
