// Reading a symbol file into memory.
#ifndef ACCSYM_SYM_SYMBOL_FILE_H
#define ACCSYM_SYM_SYMBOL_FILE_H

#include "accsym.h"
#include "common/heap_block.h"
#include "sym/format.h"

namespace acc {

/**
 * Opens a symbol file, its names into g_tAccFile[0].
 *
 * "default.kig" is opened to be read, any other file to be read and written: one that
 * cannot be written does not open.
 *
 * @param path  whole path, with a "/", fits ucFullName and its parts their fields
 * @return      the handle, or -1
 */
int SymFileOpen(const unsigned char *path);

/** A file's text form. */
struct SymbolText {
    HeapBlock<unsigned char> bytes; // NUL-ended
    std::uint32_t length = 0;
    Range title; // the file title within it
    Text text() const { return {bytes.get(), length}; }
};

/**
 * Reads a symbol file, converts it to the text form and checks its head.
 *
 * @param raw   zero-filled block of size + 1 bytes for the file's bytes
 * @param size  of the file, bytes
 * @return      false when the file ends early, cannot be converted or is no symbol file
 */
bool SymFileRead(int handle, HeapBlock<unsigned char> raw, int size, SymbolText &result);

} // namespace acc

#endif
