// shipped_sets.h - the sets that come with the program beside the standard one. The library
// opens any set but that for update, which an installed file does not allow, so each person
// gets a copy of their own.
#ifndef KIGOU_PICKER_SHIPPED_SETS_H
#define KIGOU_PICKER_SHIPPED_SETS_H

#include <optional>
#include <string>
#include <vector>

#include "picker/directories.h"
#include "picker/folder_lock.h"
#include "picker/set_files.h"

namespace kigou {

/**
 * Copies the sets in "sets" of the program directory to the common one, which is made when it
 * is missing. Each is copied once: what a person deletes afterwards stays deleted, and one
 * whose title a set bears already is left alone.
 * @param state  directory that remembers what was copied
 * @return       titles of those that are new, UTF-8; none where nothing can be written
 */
std::vector<std::string> provide_shipped_sets(const Directories &directories,
                                              const std::string &state, const EditHooks &hooks);

/** Names of the files that come with the program: of the standard set and of those in "sets". */
std::vector<std::string> shipped_files(const Directories &directories);

/** That of them with a title; nothing when none has it. */
std::optional<SetFile> shipped_set_titled(const Directories &directories, const Title &title);

/** The first of those sets in the program directory that holds a symbol; nothing for no such. */
std::optional<SetFile> shipped_set_with(const Directories &directories, const Sjis &symbol);

} // namespace kigou

#endif
