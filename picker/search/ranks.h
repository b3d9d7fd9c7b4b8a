// ranks.h - how well each symbol answers what was typed.
#ifndef KIGOU_PICKER_SEARCH_RANKS_H
#define KIGOU_PICKER_SEARCH_RANKS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "picker/search/search.h"

namespace kigou {

/** Less is better: first the way of the match, then what tells two of one way apart. */
class Rank {
  public:
    constexpr Rank() = default; // no match
    constexpr Rank(Match match, std::size_t detail)
        : value_(static_cast<std::uint32_t>(match) << detail_bits |
                 static_cast<std::uint32_t>(std::min<std::size_t>(detail, most_detail))) {}

    bool matches() const { return value_ != none; }
    Match match() const { return static_cast<Match>(value_ >> detail_bits); }
    auto operator<=>(const Rank &) const = default;

    /** For a symbol that must answer two words: as bad as the worse, and worse for both. */
    friend Rank both(Rank a, Rank b) {
        if (!a.matches() || !b.matches()) return {};
        const Rank worse = std::max(a, b), better = std::min(a, b);
        return {worse.match(),
                apart_detail + (worse.value_ & most_detail) + (better.value_ & most_detail)};
    }

  private:
    static constexpr std::size_t apart_detail = 200; /**< behind names with all of the words */
    static constexpr unsigned detail_bits = 24;
    static constexpr std::uint32_t most_detail = (1U << detail_bits) - 1, none = UINT32_MAX;
    std::uint32_t value_ = none;
};

/** The best rank of each code. */
class Ranks {
  public:
    Ranks() : ranks_(0x10000) {}

    Rank &operator[](unsigned short code) { return ranks_[code]; }
    void add(unsigned short code, Rank rank) { ranks_[code] = std::min(ranks_[code], rank); }

  private:
    std::vector<Rank> ranks_;
};

} // namespace kigou

#endif
