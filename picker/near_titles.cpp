// near_titles.cpp - see near_titles.h.
#include "picker/near_titles.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "picker/text.h"
#include "picker/title.h"

namespace kigou {
namespace {

/** Insertions, deletions and replacements that make one text of the other. */
std::size_t edit_distance(const std::u32string &a, const std::u32string &b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] != b[j - 1]);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

/** How far a word is from the one typed: 0 the same, else greater; nothing when it is not near. */
std::optional<std::size_t> distance(const std::string &word, const std::string &typed,
                                    const std::u32string &wanted) {
    if (word == typed) return 0;
    if (typed.empty() || word.empty()) return std::nullopt;
    const std::u32string given = to_characters(word);
    const bool holds =
        word.find(typed) != std::string::npos || typed.find(word) != std::string::npos;
    const std::size_t longer = std::max(given.size(), wanted.size());
    const std::size_t shorter = std::min(given.size(), wanted.size());
    if (holds) return 1 + longer - shorter;
    const std::size_t slips = std::max<std::size_t>(1, wanted.size() / 3);
    if (wanted.size() < 2 || longer - shorter > slips) return std::nullopt;
    const std::size_t far = edit_distance(given, wanted);
    if (far > slips) return std::nullopt;
    return 2 * far;
}

} // namespace

std::vector<std::string> nearest(const std::vector<std::string> &paths, std::string_view typed,
                                 std::size_t most) {
    std::vector<std::pair<std::size_t, const std::string *>> found;
    const std::u32string wanted = to_characters(typed);
    for (const std::string &path : paths) {
        if (const auto far = distance(last_title(path), std::string(typed), wanted)) {
            found.emplace_back(*far, &path);
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    std::set<std::string> seen;
    std::vector<std::string> near;
    for (const auto &[far, path] : found) {
        if (near.size() < most && seen.insert(*path).second) near.push_back(*path);
    }
    return near;
}

std::vector<std::string> did_you_mean(const std::vector<std::string> &near) {
    std::vector<std::string> lines;
    lines.reserve(near.size());
    for (const std::string &word : near) lines.push_back("did you mean " + word + "?");
    return lines;
}

} // namespace kigou
