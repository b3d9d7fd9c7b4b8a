// edit_command.h - what all editing commands share: their options, the edit itself, and what
// is said of it.
#ifndef KIGOU_EDIT_COMMAND_H
#define KIGOU_EDIT_COMMAND_H

#include <functional>

#include "cli/command.h"
#include "picker/compare/set_merge.h"
#include "picker/editing.h"
#include "picker/symbol_reading.h"

namespace kigou {

/** --file, --as and --dry-run; each alone. */
void declare_edit_options(Arguments &arguments, EditOptions &options);
void declare_as(Arguments &arguments, EditOptions &options);
void declare_dry_run(Arguments &arguments, EditOptions &options);

/** Waits with a message, and ends when a signal comes. */
EditHooks edit_hooks();

/** --from, for a command that reads text. @param encoding  UTF-8 is the default */
void declare_from(Arguments &arguments, std::string &encoding);

/** Runs an edit and saves it. @param may_make_file  as for Edit */
EditReport run_edit(const Context &context, const EditOptions &options,
                    const std::function<void(Edit &)> &body, bool may_make_file = false);

/** Writes what was done. @param left_out  of an import; null for other edits */
Status tell(const Context &context, const EditReport &report,
            const LeftOutList *left_out = nullptr);

/** The same of a merge, with what it could not make both. */
Status tell(const Context &context, const EditReport &report,
            const std::vector<Conflict> &conflicts);

} // namespace kigou

#endif
