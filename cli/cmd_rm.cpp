// cmd_rm.cpp - kigou rm: a title goes with all that lies below it.
#include <memory>

#include "cli/edit_command.h"

namespace kigou {
namespace {

struct Options {
    std::string path;
    EditOptions edit;
};

Status run(const Context &context, const Options &options) {
    return tell(context, run_edit(context, options.edit, [&](Edit &edit) {
                    edit.locate(options.path);
                    edit.remove();
                }));
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("PATH", Value::path, options->path, "Title to remove, with all titles below it");
    declare_edit_options(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command rm_command{.name = "rm",
                         .summary = "Remove a title with all that lies below it",
                         .examples =
                             "  kigou rm 私の記号/矢印 --dry-run\n"
                             "  kigou rm 私の記号/矢印",
                         .declare = declare};

} // namespace kigou
