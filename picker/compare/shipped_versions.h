// shipped_versions.h - the versions that the sets which come with the program have had, and which
// of them a person's own sets are copies of. All of that is in the folder "shipped" of the state.
#ifndef KIGOU_PICKER_COMPARE_SHIPPED_VERSIONS_H
#define KIGOU_PICKER_COMPARE_SHIPPED_VERSIONS_H

#include <optional>
#include <string>
#include <vector>

#include "picker/directories.h"
#include "picker/set_files.h"

namespace kigou {

/**
 * Keeps a copy of each set that comes with the program, once for each version that this person
 * has had. Where nothing can be written none is kept.
 * @return  UTF-8 titles of the sets of which there was another version before
 */
std::vector<std::string> keep_shipped_versions(const Directories &directories,
                                               const std::string &state);

/** Paths of the versions that are kept of a set. @param shipped  its path */
std::vector<std::string> kept_versions(const std::string &shipped, const std::string &state);

/**
 * Notes which version a person's set is a copy of: the one that ships now.
 * @param copy  path of their set
 */
void note_copy(const std::string &copy, const std::string &shipped, const std::string &state);

/** Path of the kept version that a set was noted to be a copy of; it may be gone. */
std::optional<std::string> noted_version(const std::string &copy, const std::string &state);

/** Whether a kept version is one of a set. @param shipped  path of that set */
bool is_version_of(const std::string &kept, const std::string &shipped);

/** The set that comes with the program of which one of theirs was noted to be a copy. */
std::optional<SetFile> noted_origin(const std::string &copy, const Directories &directories,
                                    const std::string &state);

} // namespace kigou

#endif
