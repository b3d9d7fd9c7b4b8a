// merged_symbols.h - both changes of the symbols of one title made.
#ifndef KIGOU_PICKER_COMPARE_MERGED_SYMBOLS_H
#define KIGOU_PICKER_COMPARE_MERGED_SYMBOLS_H

#include <optional>

#include "picker/text.h"

namespace kigou {

/**
 * @param base    data of a title, in whole symbols, as the others are
 * @param ours    one change of it
 * @param theirs  the other one
 * @return        nothing when both changed the same symbols, or it is more than a title holds
 */
std::optional<Sjis> merged_symbols(const Sjis &base, const Sjis &ours, const Sjis &theirs);

} // namespace kigou

#endif
