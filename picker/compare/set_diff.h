// set_diff.h - what is in one version of a set and not in another, by titles and symbols.
#ifndef KIGOU_PICKER_COMPARE_SET_DIFF_H
#define KIGOU_PICKER_COMPARE_SET_DIFF_H

#include <string>
#include <vector>

#include "picker/compare/sequence.h"
#include "picker/set.h"

namespace kigou {

enum class DifferenceKind {
    renamed, /**< the set has another title */
    added,   /**< a title with its symbols */
    removed,
    moved,   /**< a title with all below it, unchanged */
    order,   /**< the titles below it stand in another order */
    symbols, /**< of a title that both have */
};

struct Difference {
    DifferenceKind kind;
    std::string path;   /**< full path, UTF-8; of what is gone the old one */
    std::string to{};   /**< renamed, moved */
    Sequence added{};   /**< symbols that came, in their order; of a title that came all */
    Sequence removed{}; /**< symbols that went */
    Sequence moved{};   /**< symbols that stand behind or before others than they did */
    bool lines = false; /**< the symbols are in other lines */
};

/**
 * In the order of the later version, and what it lacks first. Titles are the same when their paths
 * are; one that was moved is known by its symbols and the titles below it.
 * @throws Failure (refused) for a set that is no tree of titles, which is called by its name
 */
std::vector<Difference> differences_of(const SymbolSet &before, const SymbolSet &after,
                                       const std::string &before_name = "the first set",
                                       const std::string &after_name = "the second set");

} // namespace kigou

#endif
