// history.cpp - see history.h.
#include "picker/history.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <span>
#include <string_view>
#include <utility>

#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/snapshot.h"

namespace kigou {
namespace {

constexpr int most_saves = 8; // until an odd text is saved as it was read; two do as a rule
constexpr std::size_t stand_in_bytes = 2; // of the title that a text has on its way in

/** Why bytes on disk will not be the same after their text was saved. */
std::vector<std::string> differences_of(const Sjis &bytes, const Sjis &text, const Sjis &completed,
                                        const std::string &path) {
    std::vector<std::string> lines;
    if (bytes == disk_form(text)) return lines;
    const auto holds = [&](unsigned char byte) {
        return std::find(bytes.begin(), bytes.end(), byte) != bytes.end();
    };
    if (holds(0)) lines.push_back("what stands behind the first NUL of " + path + " is left out");
    if (holds('\r')) lines.push_back("CR in " + path + " are left out");
    if (text_form(bytes) != completed) {
        lines.push_back("the last title of " + path + " gets the end that it lacks");
    }
    if (lines.empty()) lines.push_back("bytes that are no EUC-JP in " + path + " change or go");
    return lines;
}

/**
 * Why the library will not open or save a text; empty when it will.
 * @param file  title that the text had on disk
 */
std::string refusal_of(const Snapshot &saved, const Title &file) {
    if (saved.file().sjis != file.sjis) {
        return "the title of " + saved.path() + " would be another after a save";
    }
    if (const auto reason = file_title_refusal(file)) {
        return "a set cannot be given the title '" + file.text + "': " + *reason;
    }
    if (saved.size() - 1 > most_titles) return saved.path() + " has more titles than a set can";
    const std::size_t file_bytes = file.sjis.size();
    for (std::size_t i = 1; i < saved.size(); ++i) {
        const auto path = saved.path_of(i);
        const std::size_t longer = file_bytes < stand_in_bytes ? stand_in_bytes - file_bytes : 0;
        const std::size_t title_at = above(path, file_bytes).size() + 2;
        if (path.size() + longer > most_path || path.size() > title_at + most_title) {
            return "the path of " + shortened(saved.title(i).text) + " is too long";
        }
        if (saved.level(i) > most_levels) {
            return shortened(saved.title(i).text) + " stands below the tenth level, the last";
        }
    }
    return {};
}

} // namespace

std::size_t History::Step::size() const {
    std::size_t bytes = sizeof(Step) + removed.size() + inserted.size();
    for (const Change &change : changes) {
        bytes += sizeof(Change) + change.path.size() + change.to.size();
    }
    return bytes;
}

History::Print History::print_of(const Sjis &bytes) {
    const std::string_view view(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    return {bytes.size(), std::hash<std::string_view>{}(view)};
}

History::Seen History::seen(const std::string &path) {
    const Sjis bytes = read_file(path).bytes;
    const Snapshot as_read = Snapshot::of_text(text_form(bytes), path);
    Snapshot saved = as_read;
    for (int saves = 0; saves < most_saves; ++saves) {
        Snapshot again = Snapshot::of_text(text_form(disk_form(saved.text())), path);
        const bool same = again.text() == saved.text();
        saved = std::move(again);
        if (same) break;
    }
    return {{as_read.file(), path, print_of(bytes), print_of(saved.text()),
             differences_of(bytes, saved.text(), as_read.text(), path),
             refusal_of(saved, as_read.file())},
            saved.text()};
}

/** @param before  nothing when it could not be read */
void History::note(std::vector<Change> changes, const std::optional<Seen> &before,
                   const Seen &after, bool joined) {
    if (!before) return clear();
    std::string refusal;
    const auto &had = before->state.file, &has = after.state.file;
    const bool gave_up_title = had && !(has && has->sjis == had->sjis);
    if (gave_up_title && find_sets(directories_).find(had->sjis)) {
        refusal = "another symbol file of the title " + had->text + " shows now";
    }
    const Sjis &was = before->text, &is = after.text;
    const auto [old_end, new_end] = std::ranges::mismatch(was, is);
    const auto [old_rest, new_rest] =
        std::mismatch(was.rbegin(), std::make_reverse_iterator(old_end), is.rbegin(),
                      std::make_reverse_iterator(new_end));
    redo_.clear();
    undo_.push_back({std::move(changes), before->state, after.state,
                     static_cast<std::size_t>(old_end - was.begin()),
                     Sjis(old_end, old_rest.base()), Sjis(new_end, new_rest.base()), refusal,
                     joined && !undo_.empty()});
    std::size_t bytes = 0;
    for (const Step &step : undo_) bytes += step.size();
    while (!undo_.empty() && (undo_.size() > most_steps_ || bytes > most_bytes_)) {
        bytes -= undo_.front().size();
        undo_.pop_front();
    }
}

EditReport History::finish(Edit &edit, bool joined) {
    std::optional<Seen> before;
    try {
        if (edit.located()) before = seen(edit.located()->snapshot.path());
    } catch (const Failure &) {
        // The edit says what is wrong with the file, unless it is kept as another one.
    }
    return edit.finish([&](const EditReport &report) {
        try {
            const bool made = report.as_new_set || !edit.located();
            const Title file = report.as_new_set ? typed_title(report.file) : edit.file();
            const std::string path = made ? find_sets(directories_).get(file).path : report.path;
            note(report.changes, made ? Seen{} : before, seen(path), joined);
        } catch (const std::exception &) {
            clear();
        }
    });
}

EditReport History::delete_set(const Title &title, const EditOptions &options,
                               const EditHooks &hooks,
                               const std::function<void(const std::string &)> &look) {
    std::optional<Seen> before;
    const auto look_and_keep = [&](const std::string &path) {
        if (look) look(path);
        try {
            before = seen(path);
        } catch (const Failure &) {
            // It goes all the same.
        }
    };
    EditReport report = kigou::delete_set(directories_, title, options, hooks, look_and_keep);
    if (!report.saved) return report;
    try {
        note(report.changes, before, Seen{}, false);
    } catch (const std::exception &) {
        clear();
    }
    return report;
}

HistoryStep History::step_to(const Step &step, const State &from, const State &to) {
    HistoryStep told{step.changes, to.differences, !to.differences.empty(), to.refusal,
                     step.joined};
    if (!to.file) return told;
    if (!from.file) {
        told.differences.push_back(to.path +
                                   " is made anew among one's own sets, under a free name");
    } else if (told.refusal.empty()) {
        told.refusal = from.refusal;
    }
    return told;
}

std::optional<HistoryStep> History::to_undo() const {
    if (undo_.empty()) return std::nullopt;
    const Step &step = undo_.back();
    HistoryStep told = step_to(step, step.after, step.before);
    if (told.refusal.empty()) told.refusal = step.refusal;
    return told;
}

std::optional<HistoryStep> History::to_redo() const {
    if (redo_.empty()) return std::nullopt;
    return step_to(redo_.back(), redo_.back().before, redo_.back().after);
}

/** Brings the file of a step from one state to the other. @param now  what it is then */
EditReport History::change(const Step &step, const State &from, const State &to, const Sjis &out,
                           const Sjis &in, State &now, const EditHooks &hooks) const {
    Sjis text;
    const auto look = [&](const std::string &path) {
        Seen is = seen(path);
        if (is.state.disk != from.disk) {
            throw Failure(FailureKind::changed,
                          path + " was changed by another program or another edit since",
                          {"nothing is done, so that this change is not lost"},
                          {{Remedy::show_tree, from.file->text}});
        }
        text = std::move(is.text);
    };
    const std::string refusal = step_to(step, from, to).refusal;
    if (!refusal.empty()) throw Failure(FailureKind::refused, refusal);
    EditReport report;
    if (!to.file) {
        report = kigou::delete_set(directories_, *from.file, {}, hooks, look);
    } else {
        Edit edit(directories_, {}, hooks, !from.file);
        if (from.file) {
            look(edit.open(*from.file).snapshot.path());
        } else {
            edit.create(*to.file);
        }
        const auto begin = text.begin() + static_cast<std::ptrdiff_t>(step.begin);
        const auto behind = text.erase(begin, begin + static_cast<std::ptrdiff_t>(out.size()));
        text.insert(behind, in.begin(), in.end());
        edit.replace_text(text, step.changes, !out.empty());
        if (from.file && from.file->sjis != to.file->sjis) edit.rename(*to.file);
        report = edit.finish([&](const EditReport &saved) {
            try {
                now = seen(edit.located() ? saved.path : find_sets(directories_).get(*to.file).path)
                          .state;
            } catch (const std::exception &) {
                // It is another file by now, which the next step will find.
            }
        });
    }
    report.changes = step.changes;
    return report;
}

/** What a save wrote may be other bytes of the same text, which other steps know as well. */
void History::replace(const State &old, const State &now) {
    for (std::deque<Step> *steps : {&undo_, &redo_}) {
        for (Step &step : *steps) {
            for (State *state : {&step.before, &step.after}) {
                const bool same = state->disk == old.disk && state->text == now.text;
                if (state->file && same) *state = now;
            }
        }
    }
}

EditReport History::undo(const EditHooks &hooks) {
    if (undo_.empty()) throw Failure(FailureKind::refused, "there is nothing to undo");
    Step &step = undo_.back();
    const State old = step.before;
    State now;
    EditReport report = change(step, step.after, old, step.inserted, step.removed, now, hooks);
    redo_.push_back(std::move(step));
    undo_.pop_back();
    replace(old, now);
    return report;
}

EditReport History::redo(const EditHooks &hooks) {
    if (redo_.empty()) throw Failure(FailureKind::refused, "there is nothing to redo");
    Step &step = redo_.back();
    const State old = step.after;
    State now;
    EditReport report = change(step, step.before, old, step.removed, step.inserted, now, hooks);
    undo_.push_back(std::move(step));
    redo_.pop_back();
    replace(old, now);
    return report;
}

void History::pass_over(bool redo) {
    std::deque<Step> &steps = redo ? redo_ : undo_;
    for (bool more = !steps.empty(); more;) {
        const bool joined = steps.back().joined;
        steps.pop_back();
        more = !steps.empty() && (redo ? steps.back().joined : joined);
    }
}

void History::clear() {
    undo_.clear();
    redo_.clear();
}

} // namespace kigou
