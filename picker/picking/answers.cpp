// answers.cpp - what the picking does with the answer to a question; see picking.h.
#include <algorithm>
#include <utility>

#include "picker/failure.h"
#include "picker/near_titles.h"
#include "picker/picking/picking.h"
#include "picker/symbol_data.h"
#include "picker/symbol_reading.h"

namespace kigou {
namespace {

constexpr std::size_t most_targets = 20; // that are remembered

} // namespace

/** Does what was asked for. What cannot be done leaves the question, so that nothing typed is lost.
 */
void Picking::answer() {
    if (asking_->answer.empty()) return drop();
    const Question asked = *std::exchange(asking_, std::nullopt);
    try {
        do_asked(asked);
    } catch (const Failure &failure) {
        asking_ = asked;
        const bool path = asked.what == Asked::copy_to || asked.what == Asked::move_to;
        if (failure.kind() != FailureKind::nothing_found || !path) throw;
        const std::string typed = normalized(asked.answer);
        message_ = "there is no title " + typed;
        const bool is_set = typed.find(separator) == std::string::npos;
        if (is_set && !asked.symbols.empty()) {
            message_ =
                "symbols stand in the titles of a set: " + typed + std::string(separator) + "TITLE";
            return;
        }
        for (const std::string &near :
             did_you_mean(nearest(own_titles(false), last_title(typed), 1))) {
            message_ += "; " + near;
        }
        asking_->missing = asked.answer;
        message_ += "; once more to make it";
    }
}

void Picking::do_asked(const Question &asked) {
    switch (asked.what) {
        case Asked::copy_to:
        case Asked::move_to:
            return put_elsewhere(asked);
        case Asked::add_symbols:
            return add_typed(asked);
        case Asked::rename:
            return tell(edits_.rename(asked.of, asked.answer));
        case Asked::keep_leftover:
            return keep_leftover(asked.leftover, asked.answer);
        case Asked::new_title:
            break;
    }
    if (asked.of.empty()) {
        tell(edits_.make_set(asked.answer));
        return go_to(asked.answer);
    }
    tell(edits_.add_title(asked.of, asked.answer));
    move_to(current().place.find_path(asked.of + std::string(separator) + asked.answer));
}

void Picking::put_elsewhere(const Question &asked) {
    const std::string &path = asked.answer;
    const auto missing =
        asked.missing == path ? SetEdits::Missing::make : SetEdits::Missing::refuse;
    const std::size_t at = cursor();
    if (asked.what == Asked::copy_to) {
        tell(edits_.copy(asked.symbols, path, missing));
    } else if (asked.symbols.empty()) {
        tell(edits_.move_title(*asked.title, path, missing));
        move_to(at);
    } else {
        const Sjis rest = without_pair(*asked.title, asked.place);
        tell(edits_.move(asked.symbols, *asked.title, rest, path, missing));
        move_to(at);
    }
    std::erase(targets_, path);
    targets_.push_front(path);
    if (targets_.size() > most_targets) targets_.pop_back();
}

void Picking::add_typed(const Question &asked) {
    TypedSymbols typed(Reading::plain);
    std::size_t number = 0;
    std::string word;
    for (const char32_t character : to_characters(asked.answer + " ")) {
        if (character != U' ') {
            word += to_utf8(character);
        } else if (!word.empty()) {
            typed.add_word(std::exchange(word, {}), "word " + std::to_string(++number));
        }
    }
    const std::vector<Sjis> symbols = symbols_in(typed.finish());
    const auto held = asked.title->set->data(asked.title->number);
    Sjis data(held.begin(), held.end());
    if (asked.place == data.size()) {
        Sjis lines;
        append_lines(lines, symbols);
        append_data(data, lines);
    } else {
        Sjis pairs;
        for (const Sjis &symbol : symbols) pairs.insert(pairs.end(), symbol.begin(), symbol.end());
        data.insert(data.begin() + static_cast<std::ptrdiff_t>(asked.place), pairs.begin(),
                    pairs.end());
    }
    const bool here = asked.title->title().text == current().place.path();
    const std::size_t at = current().cursor;
    tell(edits_.change(*asked.title, data,
                       {.kind = ChangeKind::appended, .path = {}, .symbols = symbols.size()}));
    if (here) move_to(at + symbols.size());
}

/** How many titles, and beside those of the set: an edit that was killed may be there in part. */
std::string Picking::told_beside(const Sjis &text, const std::string &title) const {
    const auto titles = [](const Snapshot &all) { return counted(all.size() - 1, "title"); };
    const SetFile *const set = shelf_.find(title);
    return " with " + titles(Snapshot::of_text(text, title)) +
           (set ? "; " + title + " has " + titles(*shelf_.snapshot(set->path)) : "");
}

void Picking::keep_leftover(const Leftover &leftover, const std::string &name) {
    Recovered recovered = recover(leftover.path);
    const Sjis as_left = recovered.text;
    recovered.rename(new_file_title(name));
    keep_recovered(shelf_.directories(), recovered, SetEdits::hooks());
    remove_leftover(leftover.path);
    // One that was killed in its save has left the same in two files.
    std::erase_if(leftovers_, [&](const Leftover &other) {
        try {
            if (recover(other.path).text != as_left) return false;
        } catch (const Failure &) {
            return false; // it says so when it is asked for
        }
        remove_leftover(other.path);
        return true;
    });
    tell("kept as " + name + told_beside(recovered.text, leftover.title));
    go_to(name);
    offer_next();
}

} // namespace kigou
