// set_update.h - a new version of a set that comes with the program, into an edited copy of it.
#ifndef KIGOU_PICKER_COMPARE_SET_UPDATE_H
#define KIGOU_PICKER_COMPARE_SET_UPDATE_H

#include <string>
#include <vector>

#include "picker/compare/set_merge.h"
#include "picker/editing.h"

namespace kigou {

/**
 * Makes in the set that the edit has opened what has changed in a set that comes with the program
 * since that set was copied. Of a copy that was not noted that is the kept version which is
 * nearest to it.
 * @param state  where versions are kept; see shipped_versions.h
 * @return       what could not be both made
 * @throws Failure: refused when no other version of it is kept, or the set is no copy of it; else
 *         as merged_sets, whole_set_of, refuse_damage and replace_text
 */
std::vector<Conflict> update_set(Edit &edit, const SetFile &shipped, const std::string &state);

} // namespace kigou

#endif
