// One step of a walk: the command that was sent, and what could be seen before and after.
#ifndef FUZZ_WALK_STEP_H
#define FUZZ_WALK_STEP_H

#include <memory>
#include <string>

#include "fuzz/canary_host.h"
#include "fuzz/odd_folders.h"
#include "fuzz/temp_file.h"

/** One command as it was sent. */
struct Sent {
    int command;
    CanaryHost::Strings strings;
};

/** All that commands can change. */
struct Seen {
    std::shared_ptr<const Entries> files; // below the directories
    std::string working;                  // bytes of the working temp file
    std::shared_ptr<const TempFile> open; // the same; null: no file is open
    bool cut;                             // more stood behind a NUL byte than was opened
    bool edited;                          // there are unsaved edits
    int list;                             // the current list
    std::string shown;                    // its lpchLBLevel
};

inline bool is_edit(int command) {
    return command == ACC_VKEY_DATA_REGISTER || command == ACC_VKEY_TITLE_ADD ||
           command == ACC_VKEY_TITLE_CHANGE || command == ACC_VKEY_TITLE_DELETE;
}

/** Number of the message in a record, or -1. */
inline int message_number(const Accdata &record) {
    unsigned char message[ACC_SIZE_MESSAGE];
    for (int number = 0; number < 20 && record.cchMessage != 0; ++number) {
        ACC_Sym_SetErrMsgProc(number, message);
        if (text(message) == text(record.lpchMessage)) return number;
    }
    return -1;
}

#endif
