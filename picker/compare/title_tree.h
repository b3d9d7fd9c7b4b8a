// title_tree.h - the titles of a set as a tree, for comparing whole families of titles.
#ifndef KIGOU_PICKER_COMPARE_TITLE_TREE_H
#define KIGOU_PICKER_COMPARE_TITLE_TREE_H

#include <functional>
#include <string>
#include <vector>

#include "picker/compare/sequence.h"
#include "picker/set.h"

namespace kigou {

struct TitleNode {
    Sjis name; /**< last title of its path; of the root the file title */
    Sjis data;
    std::vector<TitleNode> below;

    bool operator==(const TitleNode &) const = default;

    /** The title of that name directly below; null when there is none. */
    const TitleNode *find(const Sjis &title) const;
    TitleNode *find(const Sjis &title);

    /** Names of the titles directly below. */
    Sequence names() const;
};

/**
 * @param name  what to call the set in the failure
 * @throws Failure (refused) for a set that no tree is the same as: a title that stands twice,
 *         lies apart from its family or has no parent; half a symbol at the end of a title
 */
TitleNode tree_of(const SymbolSet &set, const std::string &name);

SymbolSet set_of(const TitleNode &tree);

/** A path in a file: titles joined by "／". */
Sjis path_below(const Sjis &parent, const Sjis &title);

/** A family that stands elsewhere than before: paths in the file. */
struct MovedTitle {
    Sjis from, to;
};

/**
 * Titles of a tree that another one has under another path, with the same symbols and the same
 * titles below. One that has neither symbols nor titles is not known again.
 */
std::vector<MovedTitle> moved_titles(const TitleNode &before, const TitleNode &after);

/** Moves a family, behind the others where its parent changes. What cannot be stays. */
void move_title(TitleNode &tree, const MovedTitle &move);

/** The title of a path in the file; null when there is none. */
const TitleNode *title_at(const TitleNode &tree, const Sjis &path);

} // namespace kigou

#endif
