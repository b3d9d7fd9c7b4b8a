// picking_search.cpp - searching, and going about in what was found; see picking.h.
#include <algorithm>
#include <utility>

#include "picker/picking/picking.h"
#include "picker/sentence.h"
#include "picker/word_list.h"

namespace kigou {
namespace {

constexpr std::size_t most_looked_for = 200; // characters

} // namespace

/** @return whether the action was one of the search */
bool Picking::search_action(const Action &action) {
    switch (action.act) {
        case Act::search:
            look_for(searching_ ? std::string() : query_);
            return true;
        case Act::type:
            look_for((searching_ ? query_ : "") + on_one_line(action.text));
            return true;
        case Act::erase:
            look_for(without_last(query_));
            return true;
        case Act::show:
            show_found();
            return true;
        case Act::next_found:
        case Act::previous_found:
            step_found(action.act == Act::next_found);
            return true;
        default:
            return false;
    }
}

void Picking::look_for(const std::string &query) {
    searching_ = true;
    query_ = beginning_of(query, most_looked_for);
    found_cursor_ = 0;
    found_title_ = 0;
    found_is_old_ = false;
    found_ = search(shelf_.index(), query_);
    if (found_.found.empty()) message_ = word_list(found_.no_symbols);
    if (query_.size() < query.size())
        message_ = sentence("only the beginning of that is looked for");
    if (!found_.meant.empty()) message_ = sentence("meant {1}?", word_list(found_.meant));
    const bool nothing = found_.found.empty() && found_.elsewhere.empty() && !query_.empty();
    if (message_.empty() && nothing) message_ = sentence("nothing is found");
    if (found_.elsewhere.empty()) return;
    std::string symbols;
    for (const Sjis &symbol : found_.elsewhere) symbols += to_utf8(symbol);
    const std::string elsewhere =
        sentence("{1} would answer, but in no set; type the symbol itself to take it", symbols);
    message_ = message_.empty() ? elsewhere : sentence("{1}; {2}", message_, elsewhere);
}

void Picking::show_found() {
    if (!searching_ || found_.found.empty()) return;
    const FoundSymbol &found = found_.found[found_cursor_];
    if (found.titles.empty()) {
        message_ = sentence("it stands in no set");
        return;
    }
    const Sjis symbol = found.symbol;
    searching_ = false;
    go_to(shelf_.index().path(found.titles[std::min(found_title_, found.titles.size() - 1)]));
    move_to(current().place.find(symbol));
}

/** To the next title with the symbol that was found, and behind the last to the next symbol. */
void Picking::step_found(bool forward) {
    if (found_is_old_) {
        const std::size_t cursor = found_cursor_, title = found_title_;
        look_for(query_);
        found_cursor_ = cursor < found_.found.size() ? cursor : 0;
        found_title_ = title;
    }
    searching_ = false;
    const std::size_t symbols = found_.found.size();
    for (std::size_t steps = 0; steps <= symbols; ++steps) {
        if (symbols == 0) break;
        const std::size_t titles = found_.found[found_cursor_].titles.size();
        if (steps == 0 && forward && found_title_ + 1 < titles) {
            ++found_title_;
        } else if (steps == 0 && !forward && found_title_ > 0 && titles != 0) {
            --found_title_;
        } else {
            found_cursor_ = (found_cursor_ + (forward ? 1 : symbols - 1)) % symbols;
            const std::size_t there = found_.found[found_cursor_].titles.size();
            found_title_ = forward || there == 0 ? 0 : there - 1;
            if (there == 0) continue;
        }
        searching_ = true;
        return show_found();
    }
    message_ = query_.empty() ? "nothing was looked for yet" : "no set has what was looked for";
}

} // namespace kigou
