// set_edits.cpp - see set_edits.h.
#include "picker/picking/set_edits.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "picker/change_words.h"
#include "picker/compare/merged_symbols.h"
#include "picker/failure.h"
#include "picker/favourites.h"
#include "picker/locate.h"
#include "picker/title_moves.h"

namespace kigou {
namespace {

constexpr std::chrono::milliseconds patience{2000}; // for another program that edits
constexpr int most_tries = 3;                       // when one that takes no lock saves meanwhile

[[noreturn]] void refuse_changed(const Title &title) {
    throw Failure(FailureKind::changed, title.text +
                                            " was changed by another program just now; it is "
                                            "shown as it is, and nothing was done to it");
}

/** The same title in the file as it is now. */
std::size_t number_in(const Snapshot &now, const ShownTitle &shown) {
    const Title title = shown.title();
    if (now.text() == shown.set->text()) return shown.number;
    const auto number = now.find(title.sjis);
    if (!number) refuse_changed(title);
    return *number;
}

std::string told(const std::optional<std::string> &done) {
    return done.value_or("it is there already");
}

/** Whether two titles, with what lies below them, have the same titles and symbols. */
bool same_titles(const Snapshot &now, std::size_t number, const ShownTitle &shown) {
    const auto all = [](const Snapshot &set, std::size_t title) {
        std::vector<std::pair<Sjis, Sjis>> titles;
        const auto add = [&](std::size_t one) {
            const auto path = set.path_of(one), data = set.data(one);
            titles.emplace_back(Sjis(path.begin(), path.end()), Sjis(data.begin(), data.end()));
        };
        add(title);
        for (const std::size_t one : set.below(title)) add(one);
        return titles;
    };
    return all(now, number) == all(*shown.set, shown.number);
}

} // namespace

EditHooks SetEdits::hooks() {
    EditHooks hooks;
    hooks.patience = patience;
    return hooks;
}

/** Makes one edit and remembers it. @return what was done; none when there was nothing to do */
std::optional<std::string> SetEdits::make(const Work &work, bool may_make_file, bool joined) {
    for (int tries = 1;; ++tries) {
        try {
            Edit edit(directories_, {}, hooks(), may_make_file);
            work(edit);
            const EditReport report = history_.finish(edit, joined);
            if (report.changes.empty()) return std::nullopt;
            ++made_;
            return sentence_of(report.changes);
        } catch (const Failure &failure) {
            if (failure.kind() != FailureKind::changed || tries == most_tries) throw;
        }
    }
}

std::optional<std::string> SetEdits::add_symbols(const std::vector<Sjis> &symbols,
                                                 const std::string &path, bool joined) {
    const bool favourites = normalized(path) == favourites_title;
    return make(
        [&](Edit &edit) {
            if (favourites) return Favourites(directories_).add(symbols, edit);
            edit.locate(path);
            edit.copy(symbols);
        },
        favourites, joined);
}

/** Makes the titles of a path that are missing, each one edit. @return whether any was */
bool SetEdits::make_titles(const std::string &path) {
    const std::string whole = normalized(path);
    const SetFiles sets = find_sets(directories_);
    const SetFile *const set = file_beginning(sets, whole);
    const std::string file =
        set ? normalized(set->title.text) : whole.substr(0, whole.find(separator));
    std::vector<Title> titles; // all of them are looked at before the first one is made
    for (std::size_t end = file.size(); end < whole.size();) {
        const std::size_t begin = end + separator.size();
        end = std::min(whole.find(separator, begin), whole.size());
        titles.push_back(new_title(whole.substr(begin, end - begin)));
    }
    bool made = false;
    if (!set) {
        make([&](Edit &edit) { edit.create(new_file_title(file)); }, true);
        made = true;
    }
    Title so_far = typed_title(file);
    for (const Title &title : titles) {
        const Title parent = std::exchange(so_far, joined(so_far, title.sjis));
        const Snapshot now(find_sets(directories_).get(typed_title(file)).path);
        if (now.find(so_far.sjis)) continue;
        make(
            [&](Edit &edit) {
                edit.locate(parent.text);
                edit.add(title);
            },
            false, made);
        made = true;
    }
    return made;
}

/** Does something behind titles that it needs; when it fails, these go again. */
std::string SetEdits::with_titles(const std::string &path, Missing missing,
                                  const std::function<std::string(bool)> &work) {
    const std::size_t before = made_;
    try {
        return work(missing == Missing::make && make_titles(path));
    } catch (const Failure &) {
        for (; made_ > before && history_.to_undo(); --made_) {
            history_.undo(hooks());
            history_.pass_over(true);
        }
        throw;
    }
}

std::string SetEdits::copy(const std::vector<Sjis> &symbols, const std::string &path,
                           Missing missing) {
    return with_titles(path, missing,
                       [&](bool made) { return told(add_symbols(symbols, path, made)); });
}

std::string SetEdits::move(const std::vector<Sjis> &symbols, const ShownTitle &from,
                           const Sjis &rest, const std::string &path, Missing missing) {
    if (normalized(path) == normalized(from.title().text)) return told({});
    return with_titles(path, missing, [&](bool made) {
        const bool copied = add_symbols(symbols, path, made).has_value();
        const Change change{.kind = ChangeKind::moved,
                            .path = {},
                            .to = normalized(path),
                            .symbols = symbols.size()};
        return told(
            make([&](Edit &edit) { put_merged(edit, from, rest, change); }, false, made || copied));
    });
}

/** @return whether another program had changed the title too */
bool SetEdits::put_merged(Edit &edit, const ShownTitle &shown, const Sjis &data, Change change) {
    const Located &located = edit.locate(shown.title().text);
    const auto base = shown.set->data(shown.number);
    const auto now = located.snapshot.data(located.number);
    if (std::ranges::equal(base, now)) {
        edit.change(data, std::move(change));
        return false;
    }
    const bool whole = base.size() % 2 == 0 && data.size() % 2 == 0 && now.size() % 2 == 0;
    const auto merged =
        whole ? merged_symbols({base.begin(), base.end()}, data, {now.begin(), now.end()})
              : std::nullopt;
    const bool is_done = merged && std::ranges::equal(*merged, now); // by the other program too
    if (!merged || is_done) refuse_changed(shown.title());
    edit.change(*merged, std::move(change));
    return true;
}

std::string SetEdits::move_title(const ShownTitle &shown, const std::string &path,
                                 Missing missing) {
    if (lies_below(normalized(path), normalized(shown.title().text))) {
        throw Failure(FailureKind::refused, shown.title().text + " cannot be moved below itself");
    }
    return with_titles(path, missing, [&](bool made) {
        const Located target = locate(find_sets(directories_), path, {});
        const bool here = target.snapshot.path() == shown.set->path();
        return here ? move_within(shown, target.title(), made)
                    : move_across(shown, target.title(), made);
    });
}

std::string SetEdits::move_within(const ShownTitle &shown, const Title &target, bool joined) {
    return told(make(
        [&](Edit &edit) {
            const Snapshot &now = edit.open(shown.set->file()).snapshot;
            const std::size_t number = number_in(now, shown);
            const auto parent = now.find(target.sjis);
            if (!parent) refuse_changed(target);
            const Sjis text = with_title_below(now, number, *parent);
            const std::string old = now.title(number).text;
            edit.replace_text(text,
                              {{.kind = ChangeKind::moved,
                                .path = old,
                                .to = target.text + std::string(separator) + last_title(old)}});
        },
        false, joined));
}

std::string SetEdits::move_across(const ShownTitle &shown, const Title &target, bool joined) {
    std::string moved;
    make(
        [&](Edit &edit) {
            const Located &located = edit.locate(target.text);
            SetText text(located.snapshot);
            moved =
                add_titles(*shown.set, shown.number, located.snapshot, located.number, text).text;
            edit.replace_text(text.text(), {{.kind = ChangeKind::added, .path = moved}});
        },
        false, joined);
    return told(make(
        [&](Edit &edit) {
            const Located &now = edit.locate(shown.title().text);
            if (!same_titles(now.snapshot, now.number, shown)) refuse_changed(shown.title());
            edit.remove_moved(moved);
        },
        false, true));
}

std::string SetEdits::move_past(const ShownTitle &shown, std::size_t sibling) {
    return told(make([&](Edit &edit) {
        const Snapshot &now = edit.open(shown.set->file()).snapshot;
        const std::size_t number = number_in(now, shown);
        const std::size_t other = number_in(now, {shown.set, sibling});
        const std::string path = shown.title().text;
        edit.replace_text(with_title_past(now, number, other),
                          {{.kind = ChangeKind::moved, .path = path}});
    }));
}

std::string SetEdits::change(const ShownTitle &shown, const Sjis &data, Change change) {
    bool merged = false;
    const std::string done =
        told(make([&](Edit &edit) { merged = put_merged(edit, shown, data, change); }));
    return merged ? done + "; what another program changed there is kept" : done;
}

std::string SetEdits::make_set(const std::string &name) {
    return told(make([&](Edit &edit) { edit.create(new_file_title(name)); }, true));
}

std::string SetEdits::add_title(const std::string &parent, const std::string &name) {
    return told(make([&](Edit &edit) {
        edit.locate(parent);
        edit.add(new_title(name));
    }));
}

std::string SetEdits::rename(const std::string &path, const std::string &name) {
    return told(make([&](Edit &edit) {
        edit.locate(path);
        edit.rename(new_title(name));
    }));
}

std::string SetEdits::remove_title(const ShownTitle &shown) {
    return told(make([&](Edit &edit) {
        const Located &now = edit.locate(shown.title().text);
        if (!same_titles(now.snapshot, now.number, shown)) refuse_changed(shown.title());
        edit.remove();
    }));
}

std::string SetEdits::delete_set(const ShownTitle &set) {
    const auto look = [&](const std::string &path) {
        if (Snapshot(path).text() != set.set->text()) refuse_changed(set.title());
    };
    return sentence_of(history_.delete_set(set.title(), {}, hooks(), look).changes);
}

std::string SetEdits::take_back(bool again) {
    const auto next = [&] { return again ? history_.to_redo() : history_.to_undo(); };
    if (std::exchange(pass_over_, false)) history_.pass_over(again);
    auto step = next();
    if (!step) return again ? "there is nothing to do again" : "there is nothing to undo";
    if (step->refusal.empty() && step->loses && !std::exchange(warned_, true)) {
        return step->differences.front() + "; once more to do it all the same";
    }
    warned_ = false;
    // Of edits that are one for people the last one is what they were made for.
    std::vector<Change> done = step->changes;
    std::size_t steps = 0;
    try {
        for (bool more = true; more; ++steps) {
            const bool joined = step->joined;
            if (again) done = step->changes;
            again ? history_.redo(hooks()) : history_.undo(hooks());
            step = next();
            more = step && (again ? step->joined : joined);
        }
    } catch (const Failure &failure) {
        // What a full disk or another program's lock keeps from being done may be tried again.
        pass_over_ = failure.kind() != FailureKind::failed && failure.kind() != FailureKind::busy;
        throw Failure(failure.kind(),
                      (steps == 0 ? std::string() : "done only in part: ") + failure.what() +
                          (pass_over_ ? "; once more to leave it and go on with the next" : ""),
                      pass_over_ ? std::vector<std::string>() : failure.details());
    }
    touched_ = done.front().path;
    return (again ? "again: " : "undone: ") + sentence_of(done);
}

} // namespace kigou
