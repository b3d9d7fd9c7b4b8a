// data_merge.h - one change of the data of a title, made in data that somebody else has changed.
#ifndef KIGOU_PICKER_DATA_MERGE_H
#define KIGOU_PICKER_DATA_MERGE_H

#include <optional>
#include <span>

#include "picker/text.h"

namespace kigou {

/**
 * What data become with both of two changes. Each change is one run of two-byte units that was
 * replaced; at the same place the other one's symbols stand first.
 * @param base    what both began with
 * @param mine    one change of it
 * @param theirs  the other change, which is on disk
 * @return        nothing when both changed the same symbols
 */
std::optional<Sjis> merged_data(std::span<const unsigned char> base,
                                std::span<const unsigned char> mine,
                                std::span<const unsigned char> theirs);

} // namespace kigou

#endif
