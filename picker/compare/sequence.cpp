// sequence.cpp - see sequence.h.
#include "picker/compare/sequence.h"

#include <algorithm>
#include <map>
#include <span>

namespace kigou {
namespace {

constexpr std::size_t none = MergedItem::none;

using Counts = std::map<Sjis, std::size_t>;

Counts counts_of(const Sequence &sequence) {
    Counts counts;
    for (const Sjis &item : sequence) ++counts[item];
    return counts;
}

std::size_t count_in(const Counts &counts, const Sjis &item) {
    const auto found = counts.find(item);
    return found == counts.end() ? 0 : found->second;
}

/** For each place of the one the place of the same in the other, or none. */
std::vector<std::size_t> partners(const Sequence &one, const Sequence &other) {
    std::map<Sjis, std::vector<std::size_t>> places;
    for (std::size_t i = other.size(); i-- > 0;) places[other[i]].push_back(i);
    std::vector<std::size_t> partner(one.size(), none);
    for (std::size_t i = 0; i < one.size(); ++i) {
        const auto found = places.find(one[i]);
        if (found == places.end() || found->second.empty()) continue;
        partner[i] = found->second.back();
        found->second.pop_back();
    }
    return partner;
}

/** A run of each of the three between two items that all have. */
struct Chunk {
    std::size_t base, base_end, ours, ours_end, theirs, theirs_end;
};

class Merge {
  public:
    Merge(const Sequence &base, const Sequence &ours, const Sequence &theirs)
        : base_(base), ours_(ours), theirs_(theirs) {}

    MergedSequence run() {
        std::vector<std::size_t> in_ours(base_.size(), none), in_theirs(base_.size(), none);
        for (const auto &[before, after] : kept_in(base_, ours_)) in_ours[before] = after;
        for (const auto &[before, after] : kept_in(base_, theirs_)) in_theirs[before] = after;
        Chunk chunk{};
        for (std::size_t i = 0; i < base_.size(); ++i) {
            if (in_ours[i] == none || in_theirs[i] == none) continue;
            chunk.base_end = i;
            chunk.ours_end = in_ours[i];
            chunk.theirs_end = in_theirs[i];
            add(chunk);
            merged_.items.push_back({base_[i], i, in_ours[i], in_theirs[i]});
            chunk = {i + 1, 0, in_ours[i] + 1, 0, in_theirs[i] + 1, 0};
        }
        chunk.base_end = base_.size();
        chunk.ours_end = ours_.size();
        chunk.theirs_end = theirs_.size();
        add(chunk);
        drop_doubles();
        if (merged_.conflict) give_up();
        return std::move(merged_);
    }

  private:
    using Run = std::span<const Sjis>;

    static Run run_of(const Sequence &sequence, std::size_t begin, std::size_t end) {
        return Run(sequence).subspan(begin, end - begin);
    }

    void take(std::size_t begin, std::size_t end, std::size_t MergedItem::*place,
              const Sequence &from) {
        for (std::size_t i = begin; i < end; ++i) {
            MergedItem item{from[i]};
            item.*place = i;
            merged_.items.push_back(item);
        }
    }

    void add(const Chunk &chunk) {
        const Run base = run_of(base_, chunk.base, chunk.base_end);
        const Run ours = run_of(ours_, chunk.ours, chunk.ours_end);
        const Run theirs = run_of(theirs_, chunk.theirs, chunk.theirs_end);
        if (std::ranges::equal(ours, theirs)) {
            for (std::size_t i = 0; i < ours.size(); ++i) {
                merged_.items.push_back({ours[i], none, chunk.ours + i, chunk.theirs + i});
            }
        } else if (std::ranges::equal(theirs, base)) {
            take(chunk.ours, chunk.ours_end, &MergedItem::ours, ours_);
        } else if (std::ranges::equal(ours, base)) {
            take(chunk.theirs, chunk.theirs_end, &MergedItem::theirs, theirs_);
        } else {
            add_both(chunk, base, ours, theirs);
        }
    }

    /** What one of them took out goes; what is new in either comes. */
    void add_both(const Chunk &chunk, Run base, Run ours, Run theirs) {
        const Sequence before(base.begin(), base.end());
        const Sequence left(ours.begin(), ours.end()), right(theirs.begin(), theirs.end());
        const auto ours_kept = partners(left, before), theirs_kept = partners(right, before);
        for (const auto &[side, all] : {std::pair(&ours_kept, &left), {&theirs_kept, &right}}) {
            const auto stays = kept_in(before, *all);
            const auto moved = std::ranges::count_if(*side, [](auto at) { return at != none; });
            if (static_cast<std::size_t>(moved) != stays.size()) merged_.conflict = true;
        }
        const auto fresh = [&](const std::vector<std::size_t> &side, std::size_t begin,
                               std::size_t MergedItem::*place, const Sequence &from) {
            std::vector<MergedItem> items;
            for (std::size_t i = 0; i < side.size(); ++i) {
                if (side[i] != none) continue;
                MergedItem item{from[begin + i]};
                item.*place = begin + i;
                items.push_back(item);
            }
            return items;
        };
        auto first = fresh(ours_kept, chunk.ours, &MergedItem::ours, ours_);
        auto second = fresh(theirs_kept, chunk.theirs, &MergedItem::theirs, theirs_);
        if (std::ranges::lexicographical_compare(second, first, {}, &MergedItem::item,
                                                 &MergedItem::item)) {
            std::swap(first, second);
        }
        merged_.items.insert(merged_.items.end(), first.begin(), first.end());
        merged_.items.insert(merged_.items.end(), second.begin(), second.end());
    }

    /** What both put somewhere stands once; what both moved cannot stand at both places. */
    void drop_doubles() {
        const Counts base = counts_of(base_), ours = counts_of(ours_), theirs = counts_of(theirs_);
        Counts so_far;
        std::erase_if(merged_.items, [&](const MergedItem &item) {
            const std::size_t most =
                std::max(count_in(ours, item.item), count_in(theirs, item.item));
            if (++so_far[item.item] <= most) return false;
            if (count_in(base, item.item) != 0) merged_.conflict = true;
            return true;
        });
    }

    void give_up() {
        merged_.items.clear();
        take(0, ours_.size(), &MergedItem::ours, ours_);
        const auto in_base = partners(theirs_, base_), in_ours = partners(theirs_, ours_);
        for (std::size_t i = 0; i < theirs_.size(); ++i) {
            if (in_base[i] == none && in_ours[i] == none) {
                take(i, i + 1, &MergedItem::theirs, theirs_);
            }
        }
    }

    const Sequence &base_, &ours_, &theirs_;
    MergedSequence merged_;
};

} // namespace

std::vector<std::pair<std::size_t, std::size_t>> kept_in(const Sequence &before,
                                                         const Sequence &after) {
    // The longest rising row of the partners' places.
    const std::vector<std::size_t> partner = partners(before, after);
    std::vector<std::size_t> ends, previous(before.size(), none);
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (partner[i] == none) continue;
        const auto at = std::ranges::lower_bound(ends, partner[i], {},
                                                 [&](std::size_t end) { return partner[end]; });
        if (at != ends.begin()) previous[i] = *std::prev(at);
        if (at == ends.end()) {
            ends.push_back(i);
        } else {
            *at = i;
        }
    }
    std::vector<std::pair<std::size_t, std::size_t>> kept;
    for (std::size_t i = ends.empty() ? none : ends.back(); i != none; i = previous[i]) {
        kept.emplace_back(i, partner[i]);
    }
    std::ranges::reverse(kept);
    return kept;
}

MergedSequence merged_sequence(const Sequence &base, const Sequence &ours, const Sequence &theirs) {
    return Merge(base, ours, theirs).run();
}

} // namespace kigou
