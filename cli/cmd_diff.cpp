// cmd_diff.cpp - kigou diff: what two versions of a set differ in.
#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/set_word.h"
#include "picker/compare/set_diff.h"
#include "picker/editing.h"
#include "picker/set_formats.h"

namespace kigou {
namespace {

struct Options {
    std::string before, after;
};

std::string text_of(const Sequence &symbols) {
    std::string text;
    for (const Sjis &symbol : symbols) text += written_symbols(symbol);
    return text;
}

const char *name_of(DifferenceKind kind) {
    switch (kind) {
        case DifferenceKind::renamed:
            return "renamed";
        case DifferenceKind::added:
            return "added";
        case DifferenceKind::removed:
            return "removed";
        case DifferenceKind::moved:
            return "moved";
        case DifferenceKind::order:
            return "order";
        case DifferenceKind::symbols:
            break;
    }
    return "symbols";
}

std::string changes_of(const Difference &one) {
    std::string text;
    if (!one.added.empty()) text += " +" + text_of(one.added);
    if (!one.removed.empty()) text += " -" + text_of(one.removed);
    if (!one.moved.empty()) text += ", moved " + text_of(one.moved);
    return one.lines ? ", other lines" : text;
}

std::string line_of(const Difference &one) {
    switch (one.kind) {
        case DifferenceKind::renamed:
        case DifferenceKind::moved:
            return "* " + one.path + " is now " + one.to;
        case DifferenceKind::added:
            return "+ " + one.path + " " + text_of(one.added);
        case DifferenceKind::removed:
            return "- " + one.path + " " + text_of(one.removed);
        case DifferenceKind::order:
            return "~ " + one.path + ", other order of titles";
        case DifferenceKind::symbols:
            break;
    }
    return "~ " + one.path + changes_of(one);
}

Status run(const Context &context, const Options &options) {
    const Snapshot before = set_of_word(context, options.before);
    const Snapshot after = set_of_word(context, options.after);
    const std::vector<Difference> all =
        differences_of(set_of(before), set_of(after), before.path(), after.path());
    if (context.json) {
        nlohmann::ordered_json json = {{"differences", nlohmann::json::array()}};
        for (const Difference &one : all) {
            json["differences"].push_back({{"kind", name_of(one.kind)},
                                           {"path", one.path},
                                           {"to", one.to},
                                           {"added", text_of(one.added)},
                                           {"removed", text_of(one.removed)},
                                           {"moved", text_of(one.moved)},
                                           {"lines", one.lines}});
        }
        write(json);
    } else {
        for (const Difference &one : all) std::cout << printable(line_of(one)) << '\n';
    }
    return all.empty() ? Status::found : Status::findings;
}

Body declare(Arguments &arguments) {
    const auto options = std::make_shared<Options>();
    arguments.word("BEFORE", Value::file, options->before,
                   "A set: its title, or the name of its file");
    arguments.word("AFTER", Value::file, options->after, "The other one");
    return [options](const Context &context) { return run(context, *options); };
}

} // namespace

const Command diff_command{
    .name = "diff",
    .summary = "Tell what two sets, or two versions of one, differ in",
    .examples =
        "  kigou diff 標準の記号 私の記号\n"
        "  kigou diff old.kig new.kig",
    .declare = declare,
    .notes =
        "A title that is in one of them alone begins with + or -, one that moved with all "
        "below it with *, one that changed with ~.",
    .exit_status = "0 no difference, 1 differences, 2 a set cannot be read"};

} // namespace kigou
