// path_completion.h - how a path that somebody is typing may go on.
#ifndef KIGOU_PICKER_PATH_COMPLETION_H
#define KIGOU_PICKER_PATH_COMPLETION_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "picker/set_files.h"

namespace kigou {

struct PathCompletion {
    std::string path;        /**< begins with what was typed, to the letter */
    std::size_t symbols = 0; /**< in the title; 0 for a file */
};

/**
 * The titles that a path may mean when its last title is finished, in file order. Those with
 * titles below end in a separator, the one that was typed last. Files whose title begins so come
 * first, unless a file is named.
 *
 * Titles that nobody can type are left out: with control characters, undecodable ones. So is what
 * cannot be read: nothing is thrown.
 *
 * @param file  title of the file that the path is meant in, as for locate
 */
std::vector<PathCompletion> path_completions(const SetFiles &sets, const std::string &typed,
                                             const std::optional<std::string> &file);

/** Whether a person can type it and a terminal show it. */
bool can_be_typed(std::string_view title);

} // namespace kigou

#endif
