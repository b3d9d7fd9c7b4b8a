// cmd_new.cpp - kigou new: an empty symbol file.
#include <memory>

#include "cli/edit_command.h"

namespace kigou {
namespace {

struct Options {
    std::string title;
    EditOptions edit;
};

Status run(const Context &context, const Options &options) {
    const Title title = new_file_title(options.title);
    return tell(context, run_edit(
                             context, options.edit, [&](Edit &edit) { edit.create(title); }, true));
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("TITLE", options->title, "Title of the new symbol file");
    declare_dry_run(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command new_command{"new", "Make an empty symbol file",
                          "  kigou new 私の記号\n"
                          "The file is made in the directory of your own sets (--common-dir).",
                          declare};

} // namespace kigou
