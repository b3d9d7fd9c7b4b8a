// cmd_rename.cpp - kigou rename: another name for a title or a symbol file.
#include <memory>

#include "cli/edit_command.h"

namespace kigou {
namespace {

struct Options {
    std::string path, title;
    EditOptions edit;
};

Status run(const Context &context, const Options &options) {
    const Title title = new_title(options.title);
    return tell(context, run_edit(context, options.edit, [&](Edit &edit) {
                    edit.locate(options.path);
                    edit.rename(title);
                }));
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("PATH", Value::path, options->path,
                   "Title to rename; a file title renames the file");
    arguments.word("TITLE", Value::new_title, options->title,
                   "Its new name, without what stands above");
    declare_edit_options(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command rename_command{.name = "rename",
                             .summary = "Rename a title or a symbol file",
                             .examples =
                                 "  kigou rename 私の記号/矢印 やじるし\n"
                                 "  kigou rename 私の記号 よく使う記号",
                             .declare = declare,
                             .notes = "What lies below a title moves with it."};

} // namespace kigou
