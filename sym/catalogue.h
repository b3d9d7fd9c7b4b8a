// The catalogue: which symbol files there are, by file title.
//
// It is never kept up to date: whoever needs it scans the program and the common
// directory anew. Entries stand in the order in which the files were found.
#ifndef ACCSYM_SYM_CATALOGUE_H
#define ACCSYM_SYM_CATALOGUE_H

#include <cstddef>

#include "sym/engine.h"

struct SymFileListEntry {
    unsigned char ucFileName[260]; // whole path
    unsigned char ucTitle[260];    // file title
};

static_assert(sizeof(SymFileListEntry) == 520 && offsetof(SymFileListEntry, ucTitle) == 260);

namespace acc {

extern SymFileListEntry *m_lpucSymFileList;

/** Empties the catalogue. */
void SymInitFileTable();

/**
 * Adds the files of the program directory, then of the common directory.
 * @return 0; -1 when the program directory cannot be read, then nothing is added
 */
int SymGetFileTitle();

/** Empties the catalogue and scans again; result of SymGetFileTitle. */
int rescan_catalogue();

/**
 * Looks a title up.
 * @return the first entry with that title, or null
 */
const SymFileListEntry *SymMemTableTitleSearchProc(const unsigned char *title);

} // namespace acc

#endif
