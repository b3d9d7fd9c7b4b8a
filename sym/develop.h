// Turning a text into a working state: its index and a temp file.
#ifndef ACCSYM_SYM_DEVELOP_H
#define ACCSYM_SYM_DEVELOP_H

#include "record/message.h"
#include "sym/working_state.h"

namespace acc {

/** How a development ended. */
enum class Develop {
    done,
    cannot_create, // the temp file
    write_failed,
    no_memory,
    too_deep,     // a block lies below level 10; the state is whole all the same
    does_not_fit, // a title, a path or the number of blocks is larger than the index holds, or
                  // the temp file would reach 2 GiB
};

/**
 * Develops a text.
 *
 * A text that stops within its last block is closed first, so that the text written may be a
 * little longer than the one given.
 *
 * @param title  place of the file title in the text
 * @param state  a new one; ready to be installed when done
 */
Develop SymTempDevelop(Text text, Range title, WorkingState &state);

} // namespace acc

#endif
