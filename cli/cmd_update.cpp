// cmd_update.cpp - kigou update: a new version of a set that comes with kigou into a copy of it.
#include <memory>
#include <optional>

#include "cli/conflict_words.h"
#include "cli/edit_command.h"
#include "picker/compare/set_update.h"
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

/** The set that a copy is of. @throws Failure */
SetFile origin_of(const Context &context, const Options &options, const Title &title) {
    if (!options.of) {
        const std::string copy = find_sets(context.directories).get(title).path;
        if (const auto noted = noted_origin(copy, context.directories, state_directory())) {
            return *noted;
        }
    }
    const std::string of = options.of.value_or(options.title);
    if (const auto shipped = shipped_set_titled(context.directories, typed_title(of))) {
        return *shipped;
    }
    if (options.of) {
        throw Failure(FailureKind::nothing_found, "no set " + of + " comes with kigou",
                      {"'kigou merge' merges any three versions of a file"});
    }
    throw Failure(FailureKind::refused, "which set that comes with kigou is " + of + " a copy of?",
                  {"--of TITLE says so, as --of " + std::string(standard_title)});
}

Status run(const Context &context, const Options &options) {
    const Title title = typed_title(options.title);
    const SetFile shipped = origin_of(context, options, title);
    std::vector<Conflict> conflicts;
    std::string copy;
    const EditReport report = run_edit(context, options.edit, [&](Edit &edit) {
        copy = edit.open(title).snapshot.path();
        conflicts = update_set(edit, shipped, state_directory());
    });
    if (!report.dry_run && !report.as_new_set) note_copy(copy, shipped.path, state_directory());
    return tell(context, report, conflicts);
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("TITLE", Value::file_title, options->title, "Title of your copy");
    arguments.option("--of", Value::file_title, options->of,
                     "Title of the set that it is a copy of (default: that of which it is known to "
                     "be one, or the same)");
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
