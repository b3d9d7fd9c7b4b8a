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
 * Whether the last scan missed nothing that could have been read: no call of the heap or of
 * files failed on the way. Who takes a title for new must ask, lest a file of that title
 * is hidden or overwritten later.
 */
bool catalogue_is_complete();

/**
 * Looks a title up.
 * @return the first entry with that title, or null
 */
const SymFileListEntry *SymMemTableTitleSearchProc(const unsigned char *title);

/** Appends one entry. @return 0; -1 when the table cannot grow, which then stays as it is */
int SymMemTableMakeProc(const unsigned char *path, Text title);

/** Takes an entry out. */
void SymMemTableDelProc(const SymFileListEntry *entry);

/**
 * The lowest number that no listed file named "@" and digits carries. A file of that
 * number may exist all the same: a caller that makes one goes on to the next then.
 * @return the number, or -1 when the heap is exhausted
 */
int SymGetFreeFileNoProc();

/** A new file's whole path in the common directory, as a field of the catalogue holds it. */
using NewPath = unsigned char[sizeof(SymFileListEntry::ucFileName)];

/** Path of the new file of that number. @return false when it does not fit */
bool new_file_path(int number, NewPath &path);

} // namespace acc

#endif
