// title_path.h - paths of titles as people type them.
#ifndef KIGOU_TITLE_PATH_H
#define KIGOU_TITLE_PATH_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/host.h"

namespace kigou {

/** What stands between the titles of a path. */
inline constexpr std::string_view separator = "／";

/** A path for comparing: "/" counts as the separator, and none stands at either end. */
std::string normalized(std::string_view path);

/** Whether path is something below parent; both normalized or both as the library has them. */
bool lies_below(std::string_view path, std::string_view parent);

/** Level of a path of a file: 1 for the file itself, 2 for a title of the first level. */
std::size_t level_of(std::string_view path, std::string_view file);

/** What follows the last separator; the whole path when there is none. */
std::string last_title(std::string_view path);

/** A title option or argument as the library would have it. @throws Failure */
Title typed_title(const std::string &typed);

/** A title of the open file, with all titles beside it. */
struct Located {
    Title path;
    Listing<Title> tree; /**< when it is cut short, the path may be missing from it */
};

/**
 * Opens the file that a typed path means and finds the path in it.
 *
 * Without a file the path may begin with any file's title; else it is meant in the
 * standard set. An empty path is the file itself.
 *
 * @throws Failure (nothing found) with titles that come near, or what the open throws
 */
Located locate(Host &host, const std::string &typed, const std::optional<std::string> &file);

} // namespace kigou

#endif
