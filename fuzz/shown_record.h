// What the record shows after a command that was done, against the open file.
#ifndef FUZZ_SHOWN_RECORD_H
#define FUZZ_SHOWN_RECORD_H

#include "fuzz/walk_step.h"

void check_shown(const Accdata &record, const Sent &sent, const Seen &after);

#endif
