// title_moves.h - titles that come to stand elsewhere in their file, as texts of the whole file.
// A title moves with all that lies below it; the symbols of all titles stay byte for byte.
#ifndef KIGOU_PICKER_TITLE_MOVES_H
#define KIGOU_PICKER_TITLE_MOVES_H

#include <cstddef>

#include "picker/set_text.h"
#include "picker/snapshot.h"

namespace kigou {

/**
 * The text in which a title and one of its siblings have changed places.
 * @param number, sibling  titles of the set with the same parent, not the file itself
 */
Sjis with_title_past(const Snapshot &set, std::size_t number, std::size_t sibling);

/**
 * The text in which a title is the last one below another.
 * @param parent  a title of the set, or 0 for the file
 * @throws Failure (refused) when it is there already, would be below itself, or does not fit there
 */
Sjis with_title_below(const Snapshot &set, std::size_t number, std::size_t parent);

/**
 * Adds a copy of a title to another file, as the last one below a title of that.
 * @param text    made from the snapshot target
 * @param parent  a title of target, or 0
 * @return        full path of the copy
 * @throws Failure (refused) when it does not fit there
 */
Title add_titles(const Snapshot &set, std::size_t number, const Snapshot &target,
                 std::size_t parent, SetText &text);

} // namespace kigou

#endif
