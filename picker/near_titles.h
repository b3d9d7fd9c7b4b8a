// near_titles.h - what may have been meant by a word that names nothing.
#ifndef KIGOU_PICKER_NEAR_TITLES_H
#define KIGOU_PICKER_NEAR_TITLES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kigou {

/**
 * Those of the words that come near the one that was typed, the nearest first and each once: the
 * same word elsewhere, one that holds the other, or a slip of the hand.
 * @param paths  words, or paths whose last title counts
 */
std::vector<std::string> nearest(const std::vector<std::string> &paths, std::string_view typed,
                                 std::size_t most = 5);

/** A line for each: "did you mean X?". */
std::vector<std::string> did_you_mean(const std::vector<std::string> &near);

} // namespace kigou

#endif
