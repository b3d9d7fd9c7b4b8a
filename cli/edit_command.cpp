// edit_command.cpp - see edit_command.h.
#include "cli/edit_command.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "cli/conflict_words.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/shell_word.h"
#include "cli/stop_signals.h"
#include "picker/change_words.h"
#include "picker/compare/shipped_versions.h"
#include "picker/shipped_sets.h"

namespace kigou {
namespace {

constexpr std::size_t most_left_out_told = 20;

const char *name_of(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::made:
            return "new";
        case ChangeKind::added:
            return "add";
        case ChangeKind::renamed:
            return "rename";
        case ChangeKind::moved:
            return "move";
        case ChangeKind::removed:
            return "remove";
        case ChangeKind::put:
            return "put";
        case ChangeKind::appended:
            return "append";
        case ChangeKind::deleted:
            break;
    }
    return "delete";
}

nlohmann::ordered_json json_of(const Change &change) {
    nlohmann::ordered_json json = {{"change", name_of(change.kind)}, {"path", change.path}};
    if (!change.to.empty()) json["to"] = change.to;
    if (change.symbols) json["symbols"] = *change.symbols;
    if (change.before) json["before"] = *change.before;
    return json;
}

nlohmann::ordered_json json_of(const EditReport &report) {
    nlohmann::ordered_json json = {
        {"file", report.file}, {"saved", report.saved}, {"changes", nlohmann::json::array()}};
    for (const Change &change : report.changes) json["changes"].push_back(json_of(change));
    if (!report.backup.empty()) json["backup"] = report.backup;
    return json;
}

void add_left_out(nlohmann::ordered_json &json, const LeftOutList &left_out) {
    json["left_out"] = nlohmann::json::array();
    for (const LeftOut &one : left_out.first()) {
        json["left_out"].push_back({{"place", one.place}, {"reason", one.reason}});
    }
    json["left_out_count"] = left_out.count();
}

void write_sentences(const EditReport &report) {
    for (const Change &change : report.changes) {
        std::cout << (report.dry_run ? "would have " : "") << printable(sentence_of(change))
                  << '\n';
    }
    const bool deleted =
        !report.changes.empty() && report.changes.front().kind == ChangeKind::deleted;
    if (report.changes.empty() && !report.saved) {
        std::cout << "nothing to do; " << printable(report.file) << " is as it was\n";
    } else if (!report.saved) {
        std::cout << "dry run: nothing is " << (deleted ? "deleted\n" : "saved\n");
    } else if (report.as_new_set) {
        std::cout << "saved as " << printable(report.file)
                  << "; its paths begin with that title now\n";
    } else if (!deleted) {
        std::cout << "saved " << printable(report.file) << '\n';
    }
    if (report.backup.empty()) return;
    // The name of a deleted file may be another's by then.
    const std::filesystem::path place(report.path), backup(report.backup);
    const std::string target = deleted ? place.parent_path() / backup.filename() : place;
    std::cout << "to take it back: cp " << (deleted ? "-n " : "")
              << printable(path_word(report.backup)) << ' ' << printable(path_word(target)) << '\n';
}

/** So that a later version of a set that came with kigou finds its way into this copy. */
void note_origin(const Context &context, const Edit &edit, const EditReport &report) {
    const std::string &from = edit.located()->snapshot.path();
    const std::vector<std::string> shipped = shipped_files(context.directories);
    if (std::ranges::find(shipped, from) == shipped.end()) return;
    const SetFiles sets = find_sets(context.directories);
    if (const SetFile *copy = sets.find(typed_title(report.file).sjis)) {
        note_copy(copy->path, from, state_directory());
    }
}

} // namespace

void declare_dry_run(Arguments &arguments, EditOptions &options) {
    arguments.flag("--dry-run", options.dry_run, "Show what would be done and save nothing");
}

void declare_as(Arguments &arguments, EditOptions &options) {
    arguments.option(
        "--as", Value::new_title, options.as,
        "Keep the result as a new symbol file of this title; the old one stays as it is");
}

void declare_edit_options(Arguments &arguments, EditOptions &options) {
    arguments.option("--file", Value::file_title, options.file,
                     "Title of the symbol file when the path does not begin with it "
                     "(default: " +
                         std::string(standard_title) + ")");
    declare_as(arguments, options);
    declare_dry_run(arguments, options);
}

void declare_from(Arguments &arguments, std::string &encoding) {
    arguments.choice("--from", encoding, encoding_names(),
                     "Encoding of the text that is read: UTF-8 (default), EUC-JP or Shift_JIS");
}

EditHooks edit_hooks() {
    return {.waits =
                [](const std::string &folder) {
                    complain("waiting for another program that edits the sets in " + folder);
                },
            .stopped = &StopSignals::came};
}

EditReport run_edit(const Context &context, const EditOptions &options,
                    const std::function<void(Edit &)> &body, bool may_make_file) {
    const StopSignals signals;
    Edit edit(context.directories, options, edit_hooks(), may_make_file);
    body(edit);
    EditReport report = edit.finish();
    if (report.saved && report.as_new_set && edit.located()) note_origin(context, edit, report);
    return report;
}

Status tell(const Context &context, const EditReport &report, const LeftOutList *left_out) {
    if (context.json) {
        nlohmann::ordered_json json = json_of(report);
        if (left_out) add_left_out(json, *left_out);
        write(json);
    } else {
        write_sentences(report);
    }
    if (report.uncovers) {
        complain("another file titled " + report.file + " was hidden by it and shows now");
    }
    if (!left_out || left_out->count() == 0) return Status::found;
    if (!context.json) {
        const auto told = std::min(left_out->first().size(), most_left_out_told);
        for (std::size_t i = 0; i < told; ++i) {
            const LeftOut &one = left_out->first()[i];
            complain("left out: " + one.place + ": " + one.reason);
        }
        if (left_out->count() > told) {
            complain("left out: " + std::to_string(left_out->count() - told) +
                     " more; --json names the first " + std::to_string(LeftOutList::most_kept));
        }
    }
    return Status::incomplete;
}

Status tell(const Context &context, const EditReport &report,
            const std::vector<Conflict> &conflicts) {
    if (context.json) {
        nlohmann::ordered_json json = json_of(report);
        json["conflicts"] = json_of(conflicts);
        write(json);
    } else {
        write_sentences(report);
        complain_of(conflicts, report.file);
    }
    return conflicts.empty() ? Status::found : Status::findings;
}

} // namespace kigou
