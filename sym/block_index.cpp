#include "sym/block_index.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "common/acccom.h"

namespace acc {
namespace {

/** Compares as bytes: std::char_traits<char> orders them as unsigned. */
std::string_view view(const unsigned char *path) {
    return std::string_view(reinterpret_cast<const char *>(path));
}

std::size_t common_length(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    return static_cast<std::size_t>(
        std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(shorter), b.begin())
            .first -
        a.begin());
}

/** Record numbers in an order of their own. */
using Order = std::span<std::uint16_t>;

/** Whether one of the paths, in ascending order, agrees with path as far as both reach. */
bool any_agrees(Records records, Order ordered, std::string_view path) {
    const auto path_of = [&](std::uint16_t number) { return view(records[number].ucPath); };
    const auto at_least = std::lower_bound(
        ordered.begin(), ordered.end(), path,
        [&](std::uint16_t number, std::string_view key) { return path_of(number) < key; });
    if (at_least != ordered.end() && common_length(path_of(*at_least), path) == path.size()) {
        return true;
    }

    // Is one of them a proper beginning of path? The greatest one that is not above the
    // key bounds how long such a beginning can be, and so gives the next, shorter key.
    std::string_view key = path;
    for (;;) {
        const auto above = std::upper_bound(
            ordered.begin(), ordered.end(), key,
            [&](std::string_view k, std::uint16_t number) { return k < path_of(number); });
        if (above == ordered.begin()) return false;
        const std::string_view candidate = path_of(*(above - 1));
        const std::size_t common = common_length(candidate, key);
        if (common == candidate.size()) return true;
        key = std::string_view(key.data(), common);
    }
}

} // namespace

int SymGetIndex2(Records records, const unsigned char *path) {
    const std::size_t bytes = view(path).size() + 1; // the NUL too
    if (bytes > sizeof(TempInfo::ucPath)) return -1;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (std::memcmp(records[i].ucPath, path, bytes) == 0) return static_cast<int>(i);
    }
    return -1;
}

bool is_child(const TempInfo &record, unsigned level, const unsigned char *path) {
    if (record.usLevel != level + 1) return false;
    const std::string_view node = view(path);
    const std::string_view own = view(record.ucPath);
    return std::memcmp(node.data(), own.data(), std::min(node.size(), own.size())) == 0;
}

HeapBlock<unsigned char> child_flags(Records records) {
    const auto count = static_cast<unsigned>(records.size());
    auto flags = HeapBlock<unsigned char>::allocate(count);
    auto numbers = HeapBlock<std::uint16_t>::allocate(2 * count);
    if (!flags || !numbers) return {};
    const Order by_level(numbers.get(), count);          // level, then path
    const Order by_path(by_level.data() + count, count); // path, then number
    for (unsigned i = 0; i < count; ++i) {
        by_level[i] = by_path[i] = static_cast<std::uint16_t>(i);
    }
    std::sort(by_level.begin(), by_level.end(), [&](std::uint16_t a, std::uint16_t b) {
        if (records[a].usLevel != records[b].usLevel)
            return records[a].usLevel < records[b].usLevel;
        return view(records[a].ucPath) < view(records[b].ucPath);
    });
    std::sort(by_path.begin(), by_path.end(), [&](std::uint16_t a, std::uint16_t b) {
        const int order = view(records[a].ucPath).compare(view(records[b].ucPath));
        return order != 0 ? order < 0 : a < b;
    });

    unsigned level = 0;
    unsigned char flag = 0;
    std::string_view path;
    for (std::uint16_t number : by_path) {
        const TempInfo &record = records[number];
        if (number == by_path[0] || view(record.ucPath) != path) { // first record of its path
            path = view(record.ucPath);
            level = record.usLevel + 1u;
            const auto below = [&](std::uint16_t other, unsigned key) {
                return records[other].usLevel < key;
            };
            const auto begin = std::lower_bound(by_level.begin(), by_level.end(), level, below);
            const auto end = std::lower_bound(begin, by_level.end(), level + 1, below);
            flag = any_agrees(records, Order(begin, end), path) ? 1 : 0;
        }
        flags[number] = flag;
    }
    return flags;
}

HeapBlock<TempInfo> SymTempIndexRead(int handle, const TempIndex &header) {
    auto records = HeapBlock<TempInfo>::allocate(header.usCount);
    const int bytes = static_cast<int>(header.usCount * sizeof(TempInfo));
    if (!records || CM_seek(handle, sizeof(TempIndex), 0) != 0 ||
        CM_read(handle, bytes, records.get()) != bytes) {
        return {};
    }
    return records;
}

} // namespace acc
