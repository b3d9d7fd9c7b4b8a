// The catalogue: which symbol files there are, by file title.
//
// It is never kept up to date: whoever needs it scans the program and the common
// directory anew. Entries stand in the order in which the files were found.
#ifndef ACCSYM_SYM_CATALOGUE_H
#define ACCSYM_SYM_CATALOGUE_H

#include <cstddef>
#include <optional>

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

/**
 * Whether what a search found (null: nothing) is what it would have found if the last scan
 * had missed nothing. A scan misses what the system keeps from it: a folder that is gone or
 * cannot be read to its end, a file that cannot be looked at, also for want of permission, a
 * heap that is exhausted. It does not miss a common directory that was never made, nor what
 * is no symbol file. Who writes must ask, lest a second file of a title is made, or the wrong
 * one of two is replaced.
 */
bool search_is_certain(const SymFileListEntry *found);

/** Appends one entry. @return 0; -1 when the table cannot grow, which then stays as it is */
int SymMemTableMakeProc(const unsigned char *path, Text title);

/** Takes an entry out. */
void SymMemTableDelProc(const SymFileListEntry *entry);

/**
 * A number that no listed file named "@" and digits carries. A file of that number may exist
 * all the same: a caller that makes one goes on to next_free_number then.
 * @return the number, or -1 when the heap is exhausted
 */
int SymGetFreeFileNoProc();

/** The lowest number above that one that no listed file carries. */
int next_free_number(int number);

/**
 * Whether a scan would list a file of these bytes under that title: it reads the first 1023
 * bytes alone, and a name line may stand anywhere.
 * @param disk  the disk form, NUL-ended
 * @return      nothing without memory
 */
std::optional<bool> is_listed_as(const unsigned char *disk, const unsigned char *title);

/** A new file's whole path in the common directory, as a field of the catalogue holds it. */
using NewPath = unsigned char[sizeof(SymFileListEntry::ucFileName)];

/** Path of the new file of that number. @return false: no common directory, or it does not fit */
bool new_file_path(int number, NewPath &path);

} // namespace acc

#endif
