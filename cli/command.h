// command.h - what main.cpp knows of a command.
#ifndef KIGOU_COMMAND_H
#define KIGOU_COMMAND_H

#include <functional>

#include "cli/arguments.h"
#include "cli/status.h"
#include "picker/directories.h"
#include "picker/encoding.h"

namespace kigou {

/** What the options shared by all commands say. */
struct Context {
    Directories directories;
    bool json = false;
    std::string encoding = name_of(Encoding::utf_8); /**< of the standard output */

    Encoding output() const { return encoding_named(encoding); }
};

using Body = std::function<Status(const Context &)>;

struct Command {
    const char *name;
    const char *summary;
    const char *examples; /**< whole lines, each a command behind two blanks */

    /** Adds the command's own arguments; the body reads what they were given. */
    Body (*declare)(Arguments &arguments);

    const char *notes = nullptr;       /**< what else is to be known, in sentences */
    const char *exit_status = nullptr; /**< "0 clean, ..."; null when it is as that of all */
    const char *alias = nullptr;       /**< a second name */
    bool by_options = false; /**< an option that no other command has stands for the name too */
};

extern const Command browse_command;
extern const Command files_command;
extern const Command tree_command;
extern const Command list_command;
extern const Command find_command;
extern const Command show_command;
extern const Command print_command;
extern const Command chart_command;
extern const Command new_command;
extern const Command add_command;
extern const Command rename_command;
extern const Command rm_command;
extern const Command put_command;
extern const Command copy_command;
extern const Command delete_command;
extern const Command export_command;
extern const Command import_command;
extern const Command check_command;
extern const Command recover_command;
extern const Command diff_command;
extern const Command merge_command;
extern const Command update_command;
extern const Command coverage_command;
extern const Command git_setup_command;

} // namespace kigou

#endif
