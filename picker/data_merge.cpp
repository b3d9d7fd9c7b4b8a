// data_merge.cpp - see data_merge.h.
#include "picker/data_merge.h"

#include <algorithm>
#include <cstddef>

namespace kigou {
namespace {

using Bytes = std::span<const unsigned char>;

/** The run of the base that a change replaced, and what stands there instead. */
struct Run {
    std::size_t begin, end;
    Bytes instead;
};

Run run_of(Bytes base, Bytes changed) {
    const std::size_t shorter = std::min(base.size(), changed.size());
    std::size_t begin = 0, behind = 0;
    while (begin + 2 <= shorter &&
           std::ranges::equal(base.subspan(begin, 2), changed.subspan(begin, 2)))
        begin += 2;
    while (begin + behind + 2 <= shorter &&
           std::ranges::equal(base.last(behind + 2).first(2), changed.last(behind + 2).first(2)))
        behind += 2;
    return {begin, base.size() - behind, changed.subspan(begin, changed.size() - behind - begin)};
}

} // namespace

std::optional<Sjis> merged_data(Bytes base, Bytes mine, Bytes theirs) {
    const Run other = run_of(base, theirs), own = run_of(base, mine);
    const bool own_first = own.end <= other.begin && own.begin < other.begin;
    if (!own_first && other.end > own.begin) return std::nullopt;
    const Run &first = own_first ? own : other, &second = own_first ? other : own;
    Sjis merged;
    for (const Bytes part :
         {base.first(first.begin), first.instead, base.subspan(first.end, second.begin - first.end),
          second.instead, base.subspan(second.end)}) {
        merged.insert(merged.end(), part.begin(), part.end());
    }
    return merged;
}

} // namespace kigou
