// cmd_add.cpp - kigou add: a new title below another.
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
                    edit.add(title);
                }));
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("PATH", Value::path, options->path,
                   "Title to add below; a file title adds at the first level");
    arguments.word("TITLE", Value::new_title, options->title,
                   "The new title, without what stands above");
    declare_edit_options(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command add_command{.name = "add",
                          .summary = "Add a title below another",
                          .examples =
                              "  kigou add 私の記号 矢印\n"
                              "  kigou add 私の記号/矢印 太い矢印\n"
                              "  kigou add 一般記号 新記号 --as 私の記号",
                          .declare = declare};

} // namespace kigou
