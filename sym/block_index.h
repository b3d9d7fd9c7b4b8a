// Looking titles up in the block index.
//
// Children. A record is a child of a node of level n with full path P when its level is
// n + 1 and its path agrees with P as far as both reach. In a file that the library wrote
// that is the same as "P, a separator and one more title", but a sibling whose name
// begins with P's last title has its children listed under P as well, and so has an odd
// record whose path is shorter than P.
#ifndef ACCSYM_SYM_BLOCK_INDEX_H
#define ACCSYM_SYM_BLOCK_INDEX_H

#include <span>

#include "common/heap_block.h"
#include "sym/temp_index.h"

namespace acc {

using Records = std::span<const TempInfo>;

/** First record whose path is this one, or -1. */
int SymGetIndex2(Records records, const unsigned char *path);

/** Whether a record is a child of the node of that level and path. */
bool is_child(const TempInfo &record, unsigned level, const unsigned char *path);

/**
 * For every record 1 when it has child titles, else 0: what counting the children of its
 * path under the first record of that path would tell, but in n log n for all of them.
 *
 * @return the flags, one byte a record; empty when the heap is exhausted
 */
HeapBlock<unsigned char> child_flags(Records records);

} // namespace acc

#endif
