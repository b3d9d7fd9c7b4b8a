// merged_symbols.cpp - see merged_symbols.h. Symbols are merged without their lines; each keeps
// the line ends before it, of which both may have changed the number too.
#include "picker/compare/merged_symbols.h"

#include <algorithm>
#include <vector>

#include "picker/compare/sequence.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

constexpr std::size_t none = MergedItem::none;

struct Symbols {
    Sequence symbols;
    std::vector<std::size_t> line_ends; /**< before each, and behind the last */
};

Symbols symbols_of(const Sjis &data) {
    Symbols all;
    all.line_ends.push_back(0);
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        if (data[i] == '\r' && data[i + 1] == '\n') {
            ++all.line_ends.back();
        } else {
            all.symbols.push_back({data[i], data[i + 1]});
            all.line_ends.push_back(0);
        }
    }
    return all;
}

std::size_t merged_count(std::size_t base, std::size_t ours, std::size_t theirs) {
    if (ours == base) return theirs;
    return theirs == base ? ours : std::max(ours, theirs);
}

std::size_t line_ends_before(const MergedItem &item, const Symbols &base, const Symbols &ours,
                             const Symbols &theirs) {
    if (item.ours != none && item.theirs != none) {
        const std::size_t before = item.base == none ? 0 : base.line_ends[item.base];
        return merged_count(before, ours.line_ends[item.ours], theirs.line_ends[item.theirs]);
    }
    return item.ours != none ? ours.line_ends[item.ours] : theirs.line_ends[item.theirs];
}

void end_lines(Sjis &data, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) data.insert(data.end(), {'\r', '\n'});
}

} // namespace

std::optional<Sjis> merged_symbols(const Sjis &base, const Sjis &ours, const Sjis &theirs) {
    const Symbols before = symbols_of(base), left = symbols_of(ours), right = symbols_of(theirs);
    const MergedSequence merged = merged_sequence(before.symbols, left.symbols, right.symbols);
    if (merged.conflict) return std::nullopt;
    Sjis data;
    for (const MergedItem &item : merged.items) {
        end_lines(data, line_ends_before(item, before, left, right));
        data.insert(data.end(), item.item.begin(), item.item.end());
    }
    end_lines(data,
              merged_count(before.line_ends.back(), left.line_ends.back(), right.line_ends.back()));
    if (data.size() > most_data) return std::nullopt;
    return data;
}

} // namespace kigou
