// sequence.h - what two versions of a sequence have in common, and both changes of one made.
#ifndef KIGOU_PICKER_COMPARE_SEQUENCE_H
#define KIGOU_PICKER_COMPARE_SEQUENCE_H

#include <cstddef>
#include <utility>
#include <vector>

#include "picker/text.h"

namespace kigou {

/** Symbols of a title, or the titles below one. */
using Sequence = std::vector<Sjis>;

/**
 * Places of one sequence and of another that stay, in their order. Of what stands several times
 * the first goes with the first, so there may be a longer row.
 */
std::vector<std::pair<std::size_t, std::size_t>> kept_in(const Sequence &before,
                                                         const Sequence &after);

struct MergedItem {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    Sjis item;
    std::size_t base = none, ours = none, theirs = none; /**< where it stands in each */
};

struct MergedSequence {
    std::vector<MergedItem> items;
    bool conflict = false; /**< both moved the same, or one moved what the other took out; then
                                the items are ours, and behind them what is new in theirs */
};

/**
 * What a sequence becomes with both of two changes. What both put at the same place stands there
 * once; what differs there is in the order of its bytes, so that it is the same whoever merges.
 */
MergedSequence merged_sequence(const Sequence &base, const Sequence &ours, const Sequence &theirs);

} // namespace kigou

#endif
