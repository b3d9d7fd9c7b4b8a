// cmd_rename.cpp - kigou rename: another name for a title or a symbol file.
#include <memory>

#include "cli/command.h"
#include "cli/edit.h"
#include "cli/storable.h"

namespace kigou {
namespace {

struct Options {
    std::string path, title;
    EditOptions edit;
};

Status run(const Context &context, const Options &options) {
    const Title title = new_title(options.title);
    Edit edit(context, options.edit);
    const Located located = edit.locate(options.path);
    const Title &file = located.tree.items.front();
    std::string renamed = title.text;
    if (located.path.sjis == file.sjis) {
        if (options.edit.as) {
            throw Failure(Status::failed, "--as gives the file a title already",
                          {"leave out --as to rename " + file.text});
        }
        new_file_title(options.title);
        edit.refuse_taken(title); // one of the two files would be hidden
    } else {
        renamed = located.path.text.substr(
                      0, located.path.text.size() - last_title(located.path.text).size()) +
                  title.text;
    }
    edit.host().rename_title(located.path, title);
    if (located.path.sjis == file.sjis) edit.renamed_file(title);
    edit.did("renamed " + located.path.text + " to " + renamed,
             {{"change", "rename"}, {"path", located.path.text}, {"to", renamed}});
    edit.finish();
    return Status::found;
}

Body declare(CLI::App &app) {
    const auto options = std::make_shared<Options>();
    app.add_option("PATH", options->path, "Title to rename; a file title renames the file")
        ->required();
    app.add_option("TITLE", options->title, "Its new name, without what stands above")->required();
    declare_edit_options(app, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command rename_command{"rename", "Rename a title or a symbol file",
                             "  kigou rename 私の記号/矢印 やじるし\n"
                             "  kigou rename 私の記号 よく使う記号\n"
                             "What lies below a title moves with it.",
                             declare};

} // namespace kigou
