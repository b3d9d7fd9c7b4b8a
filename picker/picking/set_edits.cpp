// set_edits.cpp - see set_edits.h.
#include "picker/picking/set_edits.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "picker/change_words.h"
#include "picker/data_merge.h"
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

Change taken_out(std::size_t symbols) {
    return {.kind = ChangeKind::removed, .path = {}, .symbols = symbols};
}

std::string told(const std::optional<Change> &change) {
    return change ? sentence_of(*change) : "it is there already";
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

/** Makes one edit and remembers it. @return the change; none when there was nothing to do */
std::optional<Change> SetEdits::make(const Work &work, bool may_make_file, bool joined) {
    for (int tries = 1;; ++tries) {
        try {
            Edit edit(directories_, {}, hooks(), may_make_file);
            work(edit);
            const EditReport report = history_.finish(edit, joined);
            if (report.changes.empty()) return std::nullopt;
            return report.changes.front();
        } catch (const Failure &failure) {
            if (failure.kind() != FailureKind::changed || tries == most_tries) throw;
        }
    }
}

std::optional<Change> SetEdits::add_symbols(const std::vector<Sjis> &symbols,
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

std::string SetEdits::copy(const std::vector<Sjis> &symbols, const std::string &path,
                           Missing missing) {
    const bool made = missing == Missing::make && make_titles(path);
    return told(add_symbols(symbols, path, made));
}

std::string SetEdits::move(const std::vector<Sjis> &symbols, const ShownTitle &from,
                           const Sjis &rest, const std::string &path, Missing missing) {
    if (normalized(path) == normalized(from.title().text)) return told({});
    const bool made = missing == Missing::make && make_titles(path);
    const auto copied = add_symbols(symbols, path, made);
    make([&](Edit &edit) { put_merged(edit, from, rest, taken_out(symbols.size())); }, false,
         made || copied);
    return copied ? "moved: " + told(copied) : "it stood there already, and is removed here";
}

/** @return whether another program had changed the title too */
bool SetEdits::put_merged(Edit &edit, const ShownTitle &shown, const Sjis &data, Change change) {
    const Located &located = edit.locate(shown.title().text);
    const auto base = shown.set->data(shown.number);
    const auto now = located.snapshot.data(located.number);
    const auto merged = merged_data(base, data, now);
    if (!merged) refuse_changed(shown.title());
    edit.change(*merged, std::move(change));
    return !std::ranges::equal(base, now);
}

std::string SetEdits::move_title(const ShownTitle &shown, const std::string &path,
                                 Missing missing) {
    const bool made = missing == Missing::make && make_titles(path);
    const Located target = locate(find_sets(directories_), path, {});
    std::string moved;
    if (target.snapshot.path() == shown.set->path()) {
        return told(make(
            [&](Edit &edit) {
                const Snapshot &now = edit.open(shown.set->file()).snapshot;
                const std::size_t number = number_in(now, shown);
                const auto parent = now.find(target.title().sjis);
                if (!parent) refuse_changed(target.title());
                const Sjis text = with_title_below(now, number, *parent);
                const Title old = now.title(number);
                edit.replace_text(text, {{.kind = ChangeKind::moved,
                                          .path = old.text,
                                          .to = target.title().text + std::string(separator) +
                                                last_title(old.text)}});
            },
            false, made));
    }
    make(
        [&](Edit &edit) {
            const Located &located = edit.locate(path);
            SetText text(located.snapshot);
            const Title copy =
                add_titles(*shown.set, shown.number, located.snapshot, located.number, text);
            moved = copy.text;
            edit.replace_text(text.text(), {{.kind = ChangeKind::added, .path = copy.text}});
        },
        false, made);
    make(
        [&](Edit &edit) {
            const Located &now = edit.locate(shown.title().text);
            if (!same_titles(now.snapshot, now.number, shown)) refuse_changed(shown.title());
            edit.remove();
        },
        false, true);
    return sentence_of({.kind = ChangeKind::moved, .path = shown.title().text, .to = moved});
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

std::string SetEdits::remove_title(const std::string &path) {
    return told(make([&](Edit &edit) {
        edit.locate(path);
        edit.remove();
    }));
}

std::string SetEdits::delete_set(const std::string &title) {
    return sentence_of(history_.delete_set(typed_title(title), {}, hooks()).changes.front());
}

std::string SetEdits::take_back(bool again) {
    const auto next = [&] { return again ? history_.to_redo() : history_.to_undo(); };
    auto step = next();
    if (!step) return again ? "there is nothing to do again" : "there is nothing to undo";
    if (!step->refusal.empty()) return step->refusal;
    if (!step->differences.empty() && !std::exchange(warned_, true)) {
        return step->differences.front() + "; once more to do it all the same";
    }
    warned_ = false;
    std::string done;
    for (bool more = true; more;) {
        const bool joined = step->joined;
        const EditReport report = again ? history_.redo(hooks()) : history_.undo(hooks());
        done = sentence_of(report.changes.front());
        step = next();
        more = step && (again ? step->joined : joined);
    }
    return (again ? "again: " : "undone: ") + done;
}

} // namespace kigou
