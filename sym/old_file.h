// The old symbol format: Shift_JIS text of bracketed titles, each followed by keys "sel1="
// to "sel11=" with up to ten symbols a line. Only read.
#ifndef ACCSYM_SYM_OLD_FILE_H
#define ACCSYM_SYM_OLD_FILE_H

#include "accsym.h"

namespace acc {

/** Whether a bare file name may be an old file's: not empty, no space first, ".ini". */
bool FileNameChk(const unsigned char *name, const unsigned char *extension);

/**
 * Turns an old file into blocks of the text form, one for each of its titles.
 *
 * @param old_path   file to read, a regular one
 * @param text_path  file to write; what it held is lost
 * @return           0; -1 it cannot be read, or there is no memory; -2 it holds more than
 *                   32767 bytes or 99 titles, or a title or symbols that no edit would take;
 *                   -4 it holds no title; -5, -6 the text cannot be created or written
 */
int OldDataConvert(const unsigned char *old_path, const unsigned char *text_path);

/** Titles that the last conversion found. */
int old_title_count();

} // namespace acc

#endif
