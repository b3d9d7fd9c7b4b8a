// file_merge.h - three versions of a symbol file on disk become one.
#ifndef KIGOU_PICKER_COMPARE_FILE_MERGE_H
#define KIGOU_PICKER_COMPARE_FILE_MERGE_H

#include <string>
#include <vector>

#include "picker/compare/set_merge.h"
#include "picker/folder_lock.h"

namespace kigou {

/**
 * Merges what two changes made of a symbol file, and replaces one of them by the result in one
 * step. A version that is as the old one leaves the other to the byte.
 *
 * @param base    name of the file that both began with; an empty one when there was none
 * @param ours    that of one change
 * @param theirs  that of the other one
 * @param to      file to be written; of a link that to which it leads
 * @param hooks   for the lock, where there is one for edits of the sets in that folder
 * @return        what could not be both made
 * @throws Failure: as FolderLock; changed when ours was written to meanwhile; failed, also when a
 * version has lines that are in no title, which would be lost; refused as merged_sets. Nothing is
 *         written then
 */
std::vector<Conflict> merge_files(const std::string &base, const std::string &ours,
                                  const std::string &theirs, const std::string &to,
                                  const EditHooks &hooks);

} // namespace kigou

#endif
