// Holding a text against an index: is what an open would find in it what was meant?
#ifndef ACCSYM_SYM_READ_BACK_H
#define ACCSYM_SYM_READ_BACK_H

#include "sym/block_index.h"

namespace acc {

/** The longest text that an open takes, in bytes. */
inline constexpr unsigned most_text = INT32_MAX - 1;

/**
 * Whether a text, read as an open would, gives exactly the blocks of an index: the same file
 * title, and the same titles on the same levels, each with the same data, in the same order.
 *
 * @param records    the index
 * @param described  the text that its offsets belong to
 */
bool reads_as(Text text, Records records, Text described);

} // namespace acc

#endif
