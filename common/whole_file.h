/*
 * whole_file.h - reading all that an open file holds. Through the handle alone: by its name
 * it may be another file by now, or none.
 */
#ifndef ACCSYM_COMMON_WHOLE_FILE_H
#define ACCSYM_COMMON_WHOLE_FILE_H

#include "common/heap_block.h"

namespace acc {

/** What was read, or why nothing was. */
struct WholeFile {
    enum class Result { read, no_memory, failed, too_large };

    Result result;
    HeapBlock<unsigned char> bytes; // with a NUL behind them; empty unless read
    unsigned length = 0;            // without that NUL

    explicit operator bool() const { return result == Result::read; }
};

/**
 * Reads a file from where its handle stands to its end, also when that moves meanwhile.
 * @param most  bytes, at most 2 GiB - 2; a file that holds more is too large
 */
WholeFile read_to_end(int handle, unsigned most);

} // namespace acc

#endif
