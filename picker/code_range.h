// code_range.h - runs of codes, as charts and lists of them show them.
#ifndef KIGOU_PICKER_CODE_RANGE_H
#define KIGOU_PICKER_CODE_RANGE_H

#include <string>
#include <vector>

#include "picker/text.h"

namespace kigou {

/**
 * The double-byte codes of a range: 1-1..1-37, or any other code with its kind at both ends (see
 * meanings_of), U+2190..U+2199 too; 1-37 alone is one code, and 13 alone a row. In the order of
 * the codes, also those that are no character; of Unicode those that Shift_JIS has.
 *
 * @throws Failure (refused) for what is no range, or one that ends before it begins
 */
std::vector<Sjis> codes_in(const std::string &range);

} // namespace kigou

#endif
