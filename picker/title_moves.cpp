// title_moves.cpp - see title_moves.h.
#include "picker/title_moves.h"

#include <algorithm>
#include <vector>

#include "picker/failure.h"

namespace kigou {
namespace {

using Bytes = std::span<const unsigned char>;

/** A title and what lies below it, in file order. */
std::vector<std::size_t> family_of(const Snapshot &set, std::size_t number) {
    std::vector<std::size_t> family = set.below(number);
    family.push_back(number);
    std::ranges::sort(family);
    return family;
}

/** The bytes of a block, with what stands between it and the block before. */
Bytes block_of(const Snapshot &set, std::size_t number) {
    const std::size_t begin = set.end(number - 1);
    return Bytes(set.text()).subspan(begin, set.end(number) - begin);
}

Sjis text_of(const Snapshot &set, const std::vector<Sjis> &blocks) {
    Sjis text(set.text().begin(), set.text().begin() + static_cast<std::ptrdiff_t>(set.end(0)));
    for (const Sjis &block : blocks) text.insert(text.end(), block.begin(), block.end());
    text.insert(text.end(),
                set.text().begin() + static_cast<std::ptrdiff_t>(set.end(set.size() - 1)),
                set.text().end());
    return text;
}

/** A path below a title that gets another path itself. */
Sjis moved_path(Bytes path, Bytes old_title, Bytes new_title) {
    Sjis moved(new_title.begin(), new_title.end());
    const Bytes rest = path.subspan(old_title.size());
    moved.insert(moved.end(), rest.begin(), rest.end());
    return moved;
}

/** Full path that a title would have below another; refused when it cannot be. */
Title path_below(const Snapshot &set, std::size_t number, const Snapshot &target,
                 std::size_t parent) {
    const Bytes path = set.path_of(number);
    const Bytes last = path.subspan(above(path, set.path_of(0).size()).size() + 2);
    Title moved = joined(target.title(parent), last);
    const auto refuse = [&](const std::string &reason) {
        throw Failure(FailureKind::refused, set.title(number).text + " cannot be moved: " + reason);
    };
    if (target.find(moved.sjis)) refuse("there is a title " + moved.text + " already");
    for (const std::size_t one : family_of(set, number)) {
        if (target.level(parent) + 1 + set.level(one) - set.level(number) > most_levels)
            refuse("it would reach below the tenth level, the last");
        if (set.path_of(one).size() - path.size() + moved.sjis.size() > most_path)
            refuse("the path of a title would be too long");
    }
    return moved;
}

} // namespace

Sjis with_title_past(const Snapshot &set, std::size_t number, std::size_t sibling) {
    const std::vector<std::size_t> family = family_of(set, number);
    std::vector<std::size_t> others = family_of(set, sibling);
    // Of two titles with one path both have what lies below it.
    std::erase_if(others, [&](std::size_t one) { return std::ranges::binary_search(family, one); });
    const bool lowered = number < sibling;
    std::vector<Sjis> blocks;
    const auto add = [&](std::size_t one) {
        const Bytes block = block_of(set, one);
        blocks.emplace_back(block.begin(), block.end());
    };
    const std::size_t mark = lowered ? others.back() : others.front();
    for (std::size_t one = 1; one < set.size(); ++one) {
        const bool moves = std::ranges::binary_search(family, one);
        if (one == mark && lowered) add(one);
        if (one == mark) std::ranges::for_each(family, add);
        if (!moves && !(one == mark && lowered)) add(one);
    }
    return text_of(set, blocks);
}

Sjis with_title_below(const Snapshot &set, std::size_t number, std::size_t parent) {
    const Bytes path = set.path_of(number);
    if (parent == number || lies_below(set.path_of(parent), path)) {
        throw Failure(FailureKind::refused,
                      set.title(number).text + " cannot be moved below itself");
    }
    const Title moved = path_below(set, number, set, parent);
    const std::size_t file_bytes = set.path_of(0).size();
    const std::vector<std::size_t> family = family_of(set, number);
    std::vector<std::size_t> others =
        parent == 0 ? std::vector<std::size_t>() : family_of(set, parent);
    std::erase_if(others, [&](std::size_t one) { return std::ranges::binary_search(family, one); });
    std::vector<Sjis> blocks;
    const auto add = [&](std::size_t one) {
        const Bytes block = block_of(set, one);
        blocks.emplace_back(block.begin(), block.end());
    };
    const auto add_family = [&] {
        for (const std::size_t one : family) {
            add(one);
            // Its title line is the last thing before the data that holds the path.
            const Bytes old_path = set.path_of(one).subspan(file_bytes + 2);
            const Sjis new_path = moved_path(set.path_of(one), path, moved.sjis);
            Sjis &block = blocks.back();
            const Bytes data = set.data(one);
            const auto head = static_cast<std::ptrdiff_t>(data.data() - block_of(set, one).data());
            const auto at = std::find_end(block.begin(), block.begin() + head, old_path.begin(),
                                          old_path.end());
            const auto behind = block.erase(at, at + static_cast<std::ptrdiff_t>(old_path.size()));
            block.insert(behind, new_path.begin() + static_cast<std::ptrdiff_t>(file_bytes + 2),
                         new_path.end());
        }
    };
    for (std::size_t one = 1; one < set.size(); ++one) {
        if (!std::ranges::binary_search(family, one)) add(one);
        if (!others.empty() && one == others.back()) add_family();
    }
    if (parent == 0) add_family();
    return text_of(set, blocks);
}

Title add_titles(const Snapshot &set, std::size_t number, const Snapshot &target,
                 std::size_t parent, SetText &text) {
    Title moved = path_below(set, number, target, parent);
    for (const std::size_t one : family_of(set, number)) {
        const Sjis path = moved_path(set.path_of(one), set.path_of(number), moved.sjis);
        const Bytes over =
            one == number ? Bytes(target.path_of(parent)) : above(path, target.path_of(0).size());
        const Bytes data = set.data(one);
        text.add(title_of(over), path, Sjis(data.begin(), data.end()));
    }
    return moved;
}

} // namespace kigou
