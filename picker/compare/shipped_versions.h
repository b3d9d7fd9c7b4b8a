// shipped_versions.h - what the sets that come with the program were in its earlier versions, and
// how a new version reaches a copy that a person has edited.
#ifndef KIGOU_PICKER_COMPARE_SHIPPED_VERSIONS_H
#define KIGOU_PICKER_COMPARE_SHIPPED_VERSIONS_H

#include <optional>
#include <string>
#include <vector>

#include "picker/compare/set_merge.h"
#include "picker/directories.h"
#include "picker/editing.h"

namespace kigou {

/**
 * Keeps a copy of each set that comes with the program, once for each version that this person
 * has had. Where nothing can be written none is kept.
 * @param state  directory of the copies, in its folder "shipped"
 * @return       UTF-8 titles of the sets of which there was another version before
 */
std::vector<std::string> keep_shipped_versions(const Directories &directories,
                                               const std::string &state);

/**
 * Notes which version a person's set is a copy of: the one that ships now.
 * @param copy     path of their set
 * @param shipped  path of the set that comes with the program
 */
void note_copy(const std::string &copy, const std::string &shipped, const std::string &state);

/** Path of the set that comes with the program of which one of theirs was noted to be a copy. */
std::optional<std::string> noted_origin(const std::string &copy, const Directories &directories,
                                        const std::string &state);

/**
 * Makes in the set that the edit has opened what has changed in a set that comes with the program
 * since that set was copied. Of a copy that was not noted that is the kept version which is
 * nearest to it.
 * @param shipped  path of that set
 * @return         what could not be both made
 * @throws Failure: refused when no other version of it is kept, or the set is no copy of it; else
 *         as merged_sets, whole_set_of, refuse_damage and replace_text
 */
std::vector<Conflict> update_set(Edit &edit, const std::string &shipped, const std::string &state);

} // namespace kigou

#endif
