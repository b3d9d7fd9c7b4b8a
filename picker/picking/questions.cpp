// questions.cpp - what the picking asks a person, and what it does with the answer; see picking.h.
#include <algorithm>
#include <utility>

#include "picker/failure.h"
#include "picker/favourites.h"
#include "picker/locate.h"
#include "picker/path_completion.h"
#include "picker/picking/picking.h"
#include "picker/word_list.h"

namespace kigou {
namespace {

constexpr std::size_t most_answered = 20000; // characters; more than a title has symbols
constexpr std::size_t most_choices = 2000;   // of titles to choose from
constexpr std::size_t most_told = 5;         // of what an answer may become
constexpr std::string_view rescued = "（救出）";

/** What all of the texts begin with, in whole characters. */
std::string common_start(const std::vector<std::string> &texts) {
    std::u32string start = to_characters(texts.front());
    for (const std::string &text : texts) {
        const std::u32string other = to_characters(text);
        start.erase(std::ranges::mismatch(start, other).in1, start.end());
    }
    std::string utf8;
    for (const char32_t character : start) utf8 += to_utf8(character);
    return utf8;
}

void keep_once(std::vector<std::string> &texts) {
    std::vector<std::string> once;
    for (std::string &text : texts) {
        if (std::ranges::count(once, text) == 0) once.push_back(std::move(text));
    }
    texts = std::move(once);
}

} // namespace

/** @return whether the action belonged to a question */
bool Picking::question_action(const Action &action) {
    if (!asking_) return false;
    switch (action.act) {
        case Act::type:
            asking_->answer += on_one_line(action.text);
            if (std::string kept = beginning_of(asking_->answer, most_answered);
                kept.size() < asking_->answer.size()) {
                asking_->answer = std::move(kept);
                message_ = "that is too long; the end of it is left out";
            }
            break;
        case Act::erase:
        case Act::drop_pick:
            asking_->answer = without_last(asking_->answer);
            break;
        case Act::search:
            asking_->answer.clear();
            break;
        case Act::enter:
        case Act::show:
        case Act::take:
            answer();
            break;
        case Act::back:
        case Act::cancel:
            drop();
            break;
        case Act::next:
        case Act::previous:
            choose(action.act == Act::next);
            break;
        case Act::complete:
        case Act::next_title:
            complete();
            break;
        default:
            break;
    }
    return true;
}

std::string Picking::question() const {
    const bool title = asking_->what == Asked::move_to && asking_->symbols.empty();
    switch (asking_->what) {
        case Asked::copy_to:
            return "copy to";
        case Asked::move_to:
            return title ? "move below" : "move to";
        case Asked::add_symbols:
            return "add symbols";
        case Asked::rename:
            return "new name";
        case Asked::keep_leftover:
            return "an edit of " + asking_->leftover.title + " was never saved; keep it as";
        default:
            return asking_->of.empty() ? "new set" : "new title";
    }
}

void Picking::ask(Act what) {
    if (what == Act::copy_to) return ask_to_copy();
    if (searching_) {
        message_ = "go to where it stands to change it; here it can be copied";
        return;
    }
    refuse_read_only(what != Act::new_title);
    if (what == Act::move_to) return ask_to_move();
    if (what == Act::add_symbols) return ask_for_symbols();
    ask_for_name(what == Act::new_title);
}

void Picking::ask_to_copy() {
    Question question{Asked::copy_to};
    question.symbols = picks_;
    if (const auto under = symbol(); question.symbols.empty() && under) {
        question.symbols.push_back(*under);
    }
    if (question.symbols.empty()) {
        message_ = "there is no symbol under the cursor to copy";
        return;
    }
    ask_where(std::move(question));
}

void Picking::ask_to_move() {
    const Place &place = current().place;
    Question question{Asked::move_to};
    if (!place.snapshot() || size() == 0) {
        message_ = "only titles and symbols of a set can be moved";
        return;
    }
    if (const auto under = symbol()) {
        question.symbols = {*under};
        question.title = shown();
        question.place = place_in_data();
    } else {
        question.title = title_under_cursor();
    }
    ask_where(std::move(question));
}

/** Asks for a path: the title that was used last, and with it all others of one's own. */
void Picking::ask_where(Question question) {
    question.choices.assign(targets_.begin(), targets_.end());
    if (!question.symbols.empty()) question.choices.emplace_back(favourites_title);
    for (std::string &title : own_titles(question.symbols.empty())) {
        question.choices.push_back(std::move(title));
    }
    keep_once(question.choices);
    if (question.title) std::erase(question.choices, question.title->title().text);
    if (!question.choices.empty()) question.answer = question.choices.front();
    asking_ = std::move(question);
}

/** Titles of the sets that can be changed. @param with_sets  these themselves, too */
std::vector<std::string> Picking::own_titles(bool with_sets) const {
    std::vector<std::string> titles;
    for (const SetFile &set : shelf_.sets()) {
        if (shelf_.is_read_only(set.path)) continue;
        try {
            const auto snapshot = shelf_.snapshot(set.path);
            for (std::size_t i = with_sets ? 0 : 1;
                 i < snapshot->size() && titles.size() < most_choices; ++i) {
                titles.push_back(snapshot->title(i).text);
            }
        } catch (const Failure &) {
            // What cannot be read cannot be a target either.
        }
    }
    return titles;
}

void Picking::ask_for_symbols() {
    const Place &place = current().place;
    Question question{Asked::add_symbols};
    if (!place.snapshot() || (size() == 0 && place.number() == 0)) {
        message_ = "symbols are added to a title of a set";
        return;
    }
    if (symbol() || size() == 0) {
        question.title = shown();
        const auto data = shown().set->data(shown().number);
        question.place = symbol() ? place_in_data() + 2 : data.size();
    } else {
        question.title = title_under_cursor();
        question.place = question.title->set->data(question.title->number).size();
    }
    asking_ = std::move(question);
}

void Picking::ask_for_name(bool new_one) {
    Question question{new_one ? Asked::new_title : Asked::rename};
    if (new_one) {
        if (!current().place.snapshot() && !current().place.path().empty()) {
            message_ = "recent picks have no titles";
            return;
        }
        question.of = current().place.path();
    } else {
        question.of = path_under_cursor();
        if (question.of.empty()) {
            message_ = "only titles and sets have names to change";
            return;
        }
        question.answer = current().place.item(current().cursor).label;
    }
    asking_ = std::move(question);
}

void Picking::choose(bool forward) {
    const std::size_t choices = asking_->choices.size();
    if (choices == 0) return;
    asking_->choice = (asking_->choice + (forward ? 1 : choices - 1)) % choices;
    asking_->answer = asking_->choices[asking_->choice];
}

void Picking::complete() {
    if (asking_->what != Asked::copy_to && asking_->what != Asked::move_to) return;
    std::vector<std::string> paths;
    for (PathCompletion &one : path_completions(shelf_.files(), asking_->answer, {})) {
        const SetFile *const set = file_beginning(shelf_.files(), normalized(one.path));
        if (set && !shelf_.is_read_only(set->path)) paths.push_back(std::move(one.path));
    }
    if (paths.empty()) {
        message_ = "no title of your own begins so";
        return;
    }
    asking_->answer = common_start(paths);
    if (paths.size() == 1) return;
    const std::size_t more = paths.size() - std::min(paths.size(), most_told);
    paths.resize(paths.size() - more);
    message_ = word_list(paths) + (more == 0 ? "" : " and " + std::to_string(more) + " more");
}

/** Leaves a question without an answer. */
void Picking::drop() {
    const Question dropped = *std::exchange(asking_, std::nullopt);
    if (dropped.what != Asked::keep_leftover) return;
    message_ = "it stays in " + dropped.leftover.path + ", and is asked for at the next start";
    offer_next();
}

void Picking::offer(const std::vector<Leftover> &leftovers) {
    for (const Leftover &leftover : leftovers) {
        if (leftover.kept.empty()) {
            leftovers_.push_back(leftover);
        } else {
            message_ = "an edit of " + leftover.title + " that was never saved is kept in " +
                       leftover.kept;
        }
    }
    offer_next();
}

/** Asks for the next one, under a title that is free. */
void Picking::offer_next() {
    if (leftovers_.empty()) return;
    asking_ = Question{.what = Asked::keep_leftover, .leftover = leftovers_.front()};
    leftovers_.pop_front();
    std::string &title = asking_->answer = asking_->leftover.title;
    while (shelf_.find(title)) title += rescued;
}

} // namespace kigou
