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

bool begins_with(std::string_view path, std::string_view beginning) {
    return path.size() >= beginning.size() &&
           std::memcmp(path.data(), beginning.data(), beginning.size()) == 0;
}

/** The records that bear one path, which is the node that a list of that path shows. */
struct Node {
    std::string_view path;
    std::span<const std::uint16_t> numbers; // of its records, by level
    unsigned level;                         // of the first record of that path
    bool has_children;
};

Node node_of(Records records, std::string_view path, std::span<const std::uint16_t> numbers) {
    const std::uint16_t first = *std::min_element(numbers.begin(), numbers.end());
    return {path, numbers, records[first].usLevel, false};
}

bool has_level(Records records, const Node &node, unsigned level) {
    const auto found = std::lower_bound(
        node.numbers.begin(), node.numbers.end(), level,
        [&](std::uint16_t number, unsigned key) { return records[number].usLevel < key; });
    return found != node.numbers.end() && records[*found].usLevel == level;
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
    const auto numbers = HeapBlock<std::uint16_t>::allocate(count);
    const auto open = HeapBlock<Node>::allocate(max_path + 1); // one for each length at most
    const auto paths = HeapBlock<std::string_view>::allocate(count);
    if (!flags || !numbers || !open || !paths) return {};
    for (unsigned i = 0; i < count; ++i) {
        numbers[i] = static_cast<std::uint16_t>(i);
        paths[i] = view(records[i].ucPath);
    }
    std::sort(numbers.get(), numbers.get() + count, [&](std::uint16_t a, std::uint16_t b) {
        const int order = paths[a].compare(paths[b]);
        return order != 0 ? order < 0 : records[a].usLevel < records[b].usLevel;
    });

    // In this order a path stands before all that begin with it, so the nodes that the current
    // one begins with are open at one time: whoever agrees with it is one of them or itself.
    std::size_t depth = 0;
    const auto close_last = [&] {
        const Node &node = open[--depth];
        for (const std::uint16_t number : node.numbers) flags[number] = node.has_children;
    };
    for (unsigned begin = 0, end; begin < count; begin = end) {
        const std::string_view path = paths[numbers[begin]];
        for (end = begin + 1; end < count && paths[numbers[end]] == path;) ++end;
        while (depth > 0 && !begins_with(path, open[depth - 1].path)) close_last();
        open[depth++] = node_of(records, path, {numbers.get() + begin, end - begin});
        Node &node = open[depth - 1];
        for (std::size_t i = 0; i < depth; ++i) {
            if (has_level(records, node, open[i].level + 1)) open[i].has_children = true;
            if (has_level(records, open[i], node.level + 1)) node.has_children = true;
        }
    }
    while (depth > 0) close_last();
    return flags;
}

} // namespace acc
