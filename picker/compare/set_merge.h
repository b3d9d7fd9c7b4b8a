// set_merge.h - both changes of a set made: by titles and symbols, whichever line they are in.
#ifndef KIGOU_PICKER_COMPARE_SET_MERGE_H
#define KIGOU_PICKER_COMPARE_SET_MERGE_H

#include <string>
#include <vector>

#include "picker/set.h"

namespace kigou {

enum class ConflictKind {
    symbols,    /**< both changed the same symbols of a title; theirs stand under another title */
    removed,    /**< one removed a title that the other changed; it stays, changed */
    moved,      /**< both moved a title, to different places; it stands at both */
    order,      /**< both changed the order of the titles below one; it is ours */
    file_title, /**< both renamed the set; it has our title */
};

struct Conflict {
    ConflictKind kind;
    std::string path;    /**< of the title, UTF-8, with the title of the file */
    std::string other{}; /**< symbols: the title with theirs; moved: the other place */
};

struct MergedSet {
    SymbolSet set;
    std::vector<Conflict> conflicts;
};

/**
 * What a set becomes with both of two changes. Nothing of either is lost: what one of them took
 * out goes if the other left it as it was. Without a conflict it is the same when ours and theirs
 * change places.
 *
 * @param base    what both began with; one without titles when there is none
 * @param ours    one change of it
 * @param theirs  the other one
 * @throws Failure (refused) for a set that is no tree of titles, with its name
 */
MergedSet merged_sets(const SymbolSet &base, const SymbolSet &ours, const SymbolSet &theirs);

/** A sentence about a conflict. */
std::string sentence_of(const Conflict &conflict);

} // namespace kigou

#endif
