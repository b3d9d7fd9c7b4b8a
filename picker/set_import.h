// set_import.h - adding a whole set, or an old-format file, to a symbol file.
#ifndef KIGOU_PICKER_SET_IMPORT_H
#define KIGOU_PICKER_SET_IMPORT_H

#include <string>

#include "picker/editing.h"
#include "picker/old_format.h"
#include "picker/set.h"
#include "picker/symbol_reading.h"

namespace kigou {

/**
 * Adds the titles of a set to the file that the edit has opened or made. A title that is there
 * already gets the symbols that it lacks, an empty one all of them. What cannot be a title or
 * symbols of one is left out by name, and the rest comes in.
 */
void import_set(Edit &edit, const SymbolSet &set, LeftOutList &left_out);

/**
 * Appends the titles of an old-format file behind all others, also those that are there already.
 * @throws Failure (refused) with the lines for which such a file is not converted
 */
void import_old_file(Edit &edit, const OldFile &old, LeftOutList &left_out);

} // namespace kigou

#endif
