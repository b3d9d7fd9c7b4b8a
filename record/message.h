// The fixed messages, and how a failing procedure leaves one in the record.
#ifndef ACCSYM_RECORD_MESSAGE_H
#define ACCSYM_RECORD_MESSAGE_H

#include "accsym.h"

namespace acc {

/** The error messages by what they say; the values are their numbers. */
enum class Message : int {
    file_does_not_exist = 0,
    opening_failed = 1,
    argument_error = 2,
    no_detailed_information = 3,
    memory_not_allocated = 4, // also: a string that the command reads is null
    file_already_open = 5,
    not_a_symbol_file = 6,
    reading_failed = 7,
    writing_failed = 8,
    list_box_memory = 9,
    no_file_open = 10,
    out_of_memory = 11,
    title_exists = 12,
    no_such_title = 12, // the list shows no title of the file; the text is the same
    input_error = 13,
    parent_cannot_be_deleted = 14,
    parent_takes_no_symbols = 15,
    conversion_failed = 16,
    cannot_save_standard = 17,
    symbol_file_exists = 18,
    cannot_delete_standard = 19,
};

/** Puts a message into the record; the command goes on. */
inline void put_message(Accdata *record, Message message) {
    record->cchMessage = ACC_Sym_SetErrMsgProc(static_cast<int>(message), record->lpchMessage);
}

/** Puts a message into the record and gives the result of a failed procedure. */
[[nodiscard]] inline int fail(Accdata *record, Message message) {
    put_message(record, message);
    return ACC_RET_ERROR;
}

} // namespace acc

#endif
