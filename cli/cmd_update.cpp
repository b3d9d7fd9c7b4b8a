// cmd_update.cpp - kigou update: a new version of a set that comes with kigou into a copy of it.
#include <memory>
#include <optional>

#include "cli/conflict_words.h"
#include "cli/edit_command.h"
#include "picker/compare/shipped_versions.h"
#include "picker/failure.h"
#include "picker/shipped_sets.h"

namespace kigou {
namespace {

struct Options {
    std::string title;
    std::optional<std::string> of;
    EditOptions edit;
};

Status run(const Context &context, const Options &options) {
    const Title title = typed_title(options.title);
    const bool same = shipped_set_titled(context.directories, title).has_value();
    const std::string other(same ? options.title : standard_title);
    const auto shipped =
        shipped_set_titled(context.directories, typed_title(options.of.value_or(other)));
    if (!shipped) {
        throw Failure(FailureKind::nothing_found, "no set " + *options.of + " comes with kigou",
                      {"'kigou merge' merges any three versions of a file"});
    }
    std::vector<Conflict> conflicts;
    std::string copy;
    const EditReport report = run_edit(context, options.edit, [&](Edit &edit) {
        copy = edit.open(title).snapshot.path();
        conflicts = update_set(edit, shipped->path, state_directory());
    });
    if (!report.dry_run && !report.as_new_set) note_copy(copy, shipped->path, state_directory());
    return tell(context, report, conflicts);
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("TITLE", Value::file_title, options->title, "Title of your copy");
    arguments.option("--of", Value::file_title, options->of,
                     "Title of the set that it is a copy of (default: the same, else " +
                         std::string(standard_title) + ")");
    declare_as(arguments, options->edit);
    declare_dry_run(arguments, options->edit);
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command update_command{
    .name = "update",
    .summary = "Bring what is new in a set that comes with kigou into your copy of it",
    .examples =
        "  kigou update 拡張の記号\n"
        "  kigou update 私の記号 --of 標準の記号 --dry-run",
    .declare = declare,
    .notes =
        "It is merged as 'kigou merge' does, with the version that you had copied. Nothing "
        "of yours is lost; what cannot be both is told and stands there twice.",
    .exit_status = "0 done, 1 done with conflicts, 2 misuse or failure"};

} // namespace kigou
