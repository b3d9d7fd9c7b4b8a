// coverage.h - which non-kanji of JIS X 0208 a set has: those of rows 1 to 8.
#ifndef KIGOU_PICKER_COMPARE_COVERAGE_H
#define KIGOU_PICKER_COMPARE_COVERAGE_H

#include <cstddef>
#include <string>
#include <vector>

#include "picker/snapshot.h"

namespace kigou {

struct RepeatedSymbol {
    Sjis symbol;
    std::vector<std::string> paths; /**< of its titles, one for each time it stands there */
};

struct Coverage {
    std::size_t all = 0;         /**< non-kanji that there are */
    std::vector<Sjis> missing{}; /**< in the order of their codes */
    std::vector<RepeatedSymbol> repeated{};
};

/** Of several sets together. */
Coverage coverage_of(const std::vector<Snapshot> &sets);

} // namespace kigou

#endif
