// whole_set.h - a set that is titles and symbols and nothing else, so that it can be made anew.
#ifndef KIGOU_PICKER_COMPARE_WHOLE_SET_H
#define KIGOU_PICKER_COMPARE_WHOLE_SET_H

#include "picker/set.h"

namespace kigou {

/** The text form of a set. */
Sjis text_of(const SymbolSet &set);

/**
 * The set of a file that has nothing else.
 * @throws Failure: failed for one with lines that are in no title, which would be lost; refused as
 *         tree_of
 */
SymbolSet whole_set_of(const Snapshot &snapshot);

/** @throws Failure (failed) for a file that is cut or damaged, with its lines */
void refuse_damage(const std::string &file, const Sjis &bytes);

/** The lines in no title are named by the file. */
[[noreturn]] void refuse_loose_lines(const std::string &file);

} // namespace kigou

#endif
