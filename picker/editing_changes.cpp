// editing_changes.cpp - what an edit does to the located title; see editing.h.
#include <algorithm>

#include "picker/editing.h"
#include "picker/failure.h"
#include "picker/symbol_data.h"

namespace kigou {

Title Edit::located_title() const {
    if (located_->number != 0) return located_->title();
    throw Failure(FailureKind::refused, "a symbol file holds symbols only in its titles", {},
                  {{Remedy::show_tree, title_.text}, {Remedy::add_title, title_.text}});
}

void Edit::add(const Title &title) {
    const Title parent = located_->title();
    if (located_->snapshot.level(located_->number) >= most_levels) {
        throw Failure(FailureKind::refused, "cannot add below " + parent.text +
                                                ": it stands on the tenth level, the last");
    }
    session_->add_title(parent, title);
    did({ChangeKind::added, joined(parent, title.sjis).text});
}

void Edit::rename(const Title &title) {
    const Title path = located_->title();
    std::string renamed = title.text;
    if (located_->number == 0) {
        if (as_) {
            throw Failure(FailureKind::refused,
                          path.text +
                              " is to be kept under another title already, so it cannot "
                              "be renamed too");
        }
        if (const auto reason = file_title_refusal(title)) {
            throw Failure(FailureKind::refused,
                          "'" + title.text + "' cannot be a title: " + *reason);
        }
        refuse_taken(title); // one of the two files would be hidden
    } else {
        renamed = path.text.substr(0, path.text.size() - last_title(path.text).size()) + title.text;
    }
    session_->rename_title(path, title);
    if (located_->number == 0) title_ = title; // the save goes to the same file
    did({ChangeKind::renamed, path.text, renamed});
}

void Edit::remove() {
    if (located_->number == 0) {
        throw Failure(FailureKind::refused, title_.text + " is a symbol file and no title in one",
                      {}, {{Remedy::delete_set, title_.text}});
    }
    const Snapshot &snapshot = located_->snapshot;
    const Title path = located_->title();
    session_->delete_title(path);
    std::vector<std::size_t> gone = snapshot.below(located_->number);
    gone.push_back(located_->number);
    std::sort(gone.begin(), gone.end());
    for (const std::size_t number : gone) {
        did({.kind = ChangeKind::removed,
             .path = snapshot.title(number).text,
             .symbols = symbols_in(snapshot.data(number)).size()});
    }
    takes_away_ = true;
}

void Edit::remove_moved(const std::string &to) {
    const std::string path = located_->title().text;
    remove();
    changes_.assign(1, {.kind = ChangeKind::moved, .path = path, .to = to});
}

void Edit::store(const Title &path, const Sjis &data) {
    if (data.size() > most_data) {
        throw Failure(FailureKind::refused,
                      path.text + " would hold " + std::to_string(data.size()) +
                          " bytes of at most " + std::to_string(most_data),
                      {"divide the symbols among several titles"});
    }
    session_->set_data(path, data);
}

void Edit::put(const Sjis &data, bool append) {
    const Title path = located_title();
    const auto held = located_->snapshot.data(located_->number);
    const std::size_t before = symbols_in(held).size();
    Sjis whole;
    if (append) whole.assign(held.begin(), held.end());
    append_data(whole, data);
    store(path, whole);
    did({.kind = append ? ChangeKind::appended : ChangeKind::put,
         .path = path.text,
         .symbols = symbols_in(data).size(),
         .before = before});
    takes_away_ = !append && before != 0;
}

void Edit::change(const Sjis &data, Change change) {
    const Title path = located_title();
    const auto held = located_->snapshot.data(located_->number);
    if (std::ranges::equal(held, data)) return;
    store(path, data);
    takes_away_ = takes_away_ || symbols_in(data).size() < symbols_in(held).size();
    change.path = path.text;
    change.before = symbols_in(held).size();
    did(std::move(change));
}

void Edit::copy(const std::vector<Sjis> &symbols) {
    const Title path = located_title();
    const auto held = located_->snapshot.data(located_->number);
    const std::vector<Sjis> fresh = missing_from(held, symbols);
    if (fresh.empty()) return;
    Sjis lines, whole(held.begin(), held.end());
    append_lines(lines, fresh);
    append_data(whole, lines);
    store(path, whole);
    did({.kind = ChangeKind::appended,
         .path = path.text,
         .symbols = fresh.size(),
         .before = symbols_in(held).size(),
         .there_already = symbols.size() - fresh.size()});
}

} // namespace kigou
