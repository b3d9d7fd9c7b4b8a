// Reading a symbol file into memory.
#ifndef ACCSYM_SYM_SYMBOL_FILE_H
#define ACCSYM_SYM_SYMBOL_FILE_H

#include "accsym.h"
#include "common/whole_file.h"
#include "sym/format.h"

namespace acc {

/**
 * Opens a symbol file, its names into g_tAccFile[0].
 *
 * "default.kig" is opened to be read, any other file to be read and written: one that
 * cannot be written does not open.
 *
 * @param path  whole path, with a "/", fits ucFullName and its parts their fields
 * @return      the handle; -1 when it cannot be opened or is no regular file
 */
int SymFileOpen(const unsigned char *path);

/** A file's text form. */
struct SymbolText {
    HeapBlock<unsigned char> bytes; // NUL-ended
    std::uint32_t length = 0;
    Range title;      // the file title within it
    bool cut = false; // the file holds more, behind a NUL byte
    Text text() const { return {bytes.get(), length}; }
};

/**
 * Converts a symbol file to the text form and checks its head.
 *
 * @param disk    all bytes of the file
 * @return        false when it cannot be converted or is no symbol file
 */
bool SymFileRead(WholeFile disk, SymbolText &result);

} // namespace acc

#endif
