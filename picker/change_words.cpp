// change_words.cpp - see change_words.h.
#include "picker/change_words.h"

namespace kigou {

std::string sentence_of(const Change &change) {
    const std::string symbols = change.symbols ? counted(*change.symbols, "symbol") : "";
    const std::string in_brackets = change.symbols ? " (" + symbols + ")" : "";
    switch (change.kind) {
        case ChangeKind::made:
            return "made the symbol file " + change.path;
        case ChangeKind::added:
            return "added " + change.path + in_brackets +
                   (change.above_others ? ", which stands above others" : "");
        case ChangeKind::renamed:
            return "renamed " + change.path + " to " + change.to;
        case ChangeKind::moved:
            if (change.symbols && change.to.empty())
                return "moved " + symbols + " in " + change.path;
            if (change.symbols)
                return "moved " + symbols + " from " + change.path + " to " + change.to;
            return "moved " + change.path + (change.to.empty() ? "" : " to " + change.to);
        case ChangeKind::removed:
            if (change.before) return "removed " + symbols + " from " + change.path;
            return "removed " + change.path + in_brackets;
        case ChangeKind::put:
            return "put " + symbols + " into " + change.path + " in place of " +
                   std::to_string(*change.before);
        case ChangeKind::appended:
            if (!change.before) return "added to " + change.path + in_brackets;
            return "added " + symbols + " to " + change.path +
                   (change.there_already.value_or(0) != 0
                        ? "; " + std::to_string(*change.there_already) + " stood there already"
                        : "");
        case ChangeKind::deleted:
            break;
    }
    return "deleted the symbol file " + change.path;
}

std::string sentence_of(const std::vector<Change> &changes) {
    // What is removed comes with all that was below it; else the last change is why the others
    // were.
    const bool removed = changes.front().kind == ChangeKind::removed;
    std::string sentence = sentence_of(removed ? changes.front() : changes.back());
    if (removed && changes.size() > 1) {
        sentence += " and " + counted(changes.size() - 1, "title") + " below it";
    }
    return sentence;
}

} // namespace kigou
