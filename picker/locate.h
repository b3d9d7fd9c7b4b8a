// locate.h - from what a person types to a symbol file and a title in it.
#ifndef KIGOU_PICKER_LOCATE_H
#define KIGOU_PICKER_LOCATE_H

#include <optional>
#include <string>

#include "picker/set_files.h"
#include "picker/snapshot.h"

namespace kigou {

struct Located {
    Snapshot snapshot;
    std::size_t number = 0; /**< of the title; 0 for the file itself */

    Title title() const { return snapshot.title(number); }
};

/**
 * Finds a typed path. Without a file it may begin with any file's title, the longest that does;
 * else it is meant in the standard set. An empty path is the file itself.
 *
 * @throws Failure (nothing_found) with titles that come near, or as Snapshot does
 */
Located locate(const SetFiles &sets, const std::string &typed,
               const std::optional<std::string> &file);

/** The file of whose titles the longest begins a normalized path; null when none does. */
const SetFile *file_beginning(const SetFiles &sets, const std::string &path);

} // namespace kigou

#endif
