// cmd_delete.cpp - kigou delete: a symbol file goes.
#include <memory>

#include "cli/edit_command.h"
#include "cli/stop_signals.h"

namespace kigou {
namespace {

struct Options {
    std::string title;
    EditOptions edit;
};

Status run(const Context &context, const Options &options) {
    const Title title = typed_title(options.title);
    const auto deleted = [&] {
        const StopSignals signals;
        return delete_set(context.directories, title, options.edit, edit_hooks());
    };
    return tell(context, deleted());
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("FILE-TITLE", Value::file_title, options->title, "Title of the symbol file");
    declare_dry_run(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command delete_command{
    .name = "delete",
    .summary = "Delete a symbol file",
    .examples = "  kigou delete 私の記号",
    .declare = declare,
    .notes = "The file as it was is kept in the folder backup beside the sets."};

} // namespace kigou
