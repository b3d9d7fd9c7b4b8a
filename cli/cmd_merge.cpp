// cmd_merge.cpp - kigou merge: both changes of a symbol file; what git calls too.
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "cli/conflict_words.h"
#include "cli/edit_command.h"
#include "cli/json.h"
#include "picker/compare/file_merge.h"
#include "picker/failure.h"

namespace kigou {
namespace {

struct Options {
    std::string base, ours, theirs;
    std::optional<std::string> output, name;
};

/** git hands over files that are gone behind the merge: they are called by what they are. */
[[noreturn]] void fail_by_name(const Failure &failure, const Options &options) {
    std::string text = failure.what();
    for (const auto &[path, which] : {std::pair{options.base, " (the old version)"},
                                      {options.ours, " (ours)"},
                                      {options.theirs, " (theirs)"}}) {
        const auto at = text.find(path);
        if (at != std::string::npos) text.replace(at, path.size(), *options.name + which);
    }
    throw Failure(failure.kind(), text);
}

std::vector<Conflict> merge(const Options &options, const std::string &to) {
    try {
        return merge_files(options.base, options.ours, options.theirs, to, edit_hooks());
    } catch (const Failure &failure) {
        if (!options.name) throw;
        fail_by_name(failure, options);
    }
}

Status run(const Context &context, const Options &options) {
    const std::string to = options.output.value_or(options.ours);
    const std::vector<Conflict> conflicts = merge(options, to);
    if (!context.json) complain_of(conflicts, options.name.value_or(to));
    if (context.json) write({{"path", to}, {"conflicts", json_of(conflicts)}});
    return conflicts.empty() ? Status::found : Status::findings;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("BASE", Value::file, options->base,
                   "The symbol file that both began with; an empty file when there was none");
    arguments.word("OURS", Value::file, options->ours, "One change of it; gets the result");
    arguments.word("THEIRS", Value::file, options->theirs, "The other change");
    arguments.option("-o,--output", Value::file, options->output,
                     "File that gets the result instead");
    arguments.option("--name", Value::text, options->name, "What to call the file in messages");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command merge_command{
    .name = "merge",
    .summary = "Make both changes of a symbol file, by titles and symbols",
    .examples =
        "  kigou merge old.kig mine.kig theirs.kig\n"
        "  kigou merge old.kig mine.kig theirs.kig -o new.kig",
    .declare = declare,
    .notes =
        "Nothing of either is lost. What cannot be both is told, and stands there twice: of "
        "symbols that both changed, theirs are in a title of their own, 別版：矢印 beside "
        "矢印. 'kigou git-setup' makes git merge symbol files so.",
    .exit_status = "0 merged, 1 merged with conflicts, 2 nothing was written"};

} // namespace kigou
