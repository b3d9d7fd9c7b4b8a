// Changing the file title, which a save under a new title does too.
#ifndef ACCSYM_SYM_TITLE_RENAME_H
#define ACCSYM_SYM_TITLE_RENAME_H

#include "accsym.h"

namespace acc {

/**
 * Changes the open file's title to lpchString1: the name line, every path, and lpchLBLevel
 * of list 1.
 *
 * @return 1 changed, or the same as before (message 12 in the record); 0 with message 1, 8,
 *         10 (no file open), 11 or 13
 */
int SymMainTitleChg(Accdata *record);

} // namespace acc

#endif
