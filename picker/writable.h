// writable.h - why a file cannot be written, in words that say which and what to do.
#ifndef KIGOU_PICKER_WRITABLE_H
#define KIGOU_PICKER_WRITABLE_H

#include <string>
#include <vector>

namespace kigou {

/** Whether this process may write a file that is there. */
bool is_writable(const std::string &path);

/**
 * What keeps this process from making a file in a folder or replacing one there: a full disk, a
 * folder or a file that is missing or read-only.
 * @param file  path of the file to be replaced; empty for a new one
 * @return      lines for people; none when nothing is found, for it may have passed
 */
std::vector<std::string> why_not_written(const std::string &folder, const std::string &file = {});

} // namespace kigou

#endif
