// The check that guards the file commands.
#ifndef ACCSYM_ACC_PATH_CHECK_H
#define ACCSYM_ACC_PATH_CHECK_H

#include "accsym.h"

namespace acc {

/**
 * @return 1 when lpchString2 can be used; 0 with message 4 when it is null, with message 2
 *         when it is empty (or longer than 32767 bytes: its length counts as 16-bit signed)
 */
int PathChkProc(Accdata *record);

} // namespace acc

#endif
