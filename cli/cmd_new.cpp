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
    arguments.word("TITLE", Value::new_title, options->title, "Title of the new symbol file");
    declare_dry_run(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command new_command{
    .name = "new",
    .summary = "Make an empty symbol file",
    .examples = "  kigou new 私の記号",
    .declare = declare,
    .notes = "The file is made in the directory of your own sets (--common-dir)."};

} // namespace kigou
