// snapshot.cpp - see snapshot.h.
#include "picker/snapshot.h"

#include <algorithm>

#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/sentence.h"
#include "sym/format.h"

namespace kigou {
namespace {

std::string key_of(std::span<const unsigned char> path) {
    return {reinterpret_cast<const char *>(path.data()), path.size()};
}

[[noreturn]] void refuse(const std::string &path, const std::string &reason) {
    throw Failure(FailureKind::failed, sentence("{1} is not a symbol file: {2}", path, reason), {},
                  {{Remedy::check_file, path}});
}

} // namespace

Snapshot::Snapshot(const std::string &path) : path_(path) {
    const FileBytes file = read_file(path);
    identity_ = file.identity;
    text_ = text_form(file.bytes);
    parse();
}

Snapshot Snapshot::of_text(Sjis text, const std::string &name) {
    Snapshot snapshot;
    snapshot.path_ = name;
    snapshot.text_ = std::move(text);
    snapshot.parse();
    return snapshot;
}

void Snapshot::parse() {
    acc::Range title;
    if (!acc::has_symbol_header(text_)) refuse(path_, sentence("the first line is not 〈記号〉"));
    if (!acc::find_file_title(text_, static_cast<std::uint32_t>(text_.size() + 6), title)) {
        refuse(path_, sentence("no line begins with 名称="));
    }
    const auto at = [&](std::size_t offset) {
        return text_.begin() + static_cast<std::ptrdiff_t>(offset);
    };
    entries_.push_back(
        {Sjis(at(title.offset), at(title.offset + title.length)), 1, 0, 0, 0, 0, {}});
    acc::BlockWalk walk(text_, title);
    acc::Block block{}, last{};
    while (walk.next(block)) {
        last = block;
        Sjis full = entries_.front().path;
        full.insert(full.end(), {0x81, 0x5E});
        full.insert(full.end(), at(block.path.offset), at(block.path.offset + block.path.length));
        entries_.push_back({std::move(full),
                            block.level,
                            block.data,
                            2 * std::size_t{block.data_units},
                            block.symbols,
                            block.end,
                            {}});
    }
    const bool has_blocks = entries_.size() > 1;
    const acc::Closing closing = acc::closing_of(text_, title, has_blocks ? &last : nullptr);
    text_.insert(text_.end(), closing.bytes.begin(), closing.bytes.begin() + closing.length);
    const auto line_end = std::search(at(title.offset + title.length), text_.end(),
                                      acc::m_ucSymReturn.data(), acc::m_ucSymReturn.data() + 2);
    entries_.front().end = static_cast<std::size_t>(line_end - text_.begin()) + 2;
    entries_.front().data = entries_.front().end;
    if (has_blocks) {
        if (closing.length != 0) entries_.back().end = text_.size();
        entries_.back().data += closing.data_shift;
        entries_.back().data_bytes += 2 * std::size_t{closing.units};
        entries_.back().symbols += closing.symbols;
    }
    for (std::size_t i = 0; i < entries_.size(); ++i) first_.emplace(key_of(entries_[i].path), i);
    for (std::size_t i = 1; i < entries_.size(); ++i) {
        // A title line may hold more than the path, and a path may end in a separator.
        const auto parent = parent_in_file(entries_[i].path);
        const auto owner = parent ? find(*parent) : std::nullopt;
        if (owner && level(i) == level(*owner) + 1) entries_[*owner].children.push_back(i);
    }
}

/** Full path of what stands above a title; nothing for a title without a name. */
std::optional<std::span<const unsigned char>> Snapshot::parent_in_file(
    std::span<const unsigned char> path) const {
    const std::size_t file_bytes = entries_.front().path.size();
    const auto parent = above(path, file_bytes);
    // What stands behind the parent and its separator is the name.
    if (path.size() <= parent.size() + 2) return std::nullopt;
    return parent;
}

std::span<const unsigned char> Snapshot::path_of(std::size_t number) const {
    return entries_[number].path;
}

std::optional<std::size_t> Snapshot::find(std::span<const unsigned char> full_path) const {
    const auto found = first_.find(key_of(full_path));
    if (found == first_.end()) return std::nullopt;
    return found->second;
}

std::vector<std::size_t> Snapshot::below(std::size_t number) const {
    std::vector<std::size_t> numbers;
    for (std::size_t i = 1; i < entries_.size(); ++i) {
        if (lies_below(std::span(entries_[i].path), path_of(number))) numbers.push_back(i);
    }
    return numbers;
}

std::span<const unsigned char> Snapshot::data(std::size_t number) const {
    const Entry &entry = entries_[number];
    return std::span(text_).subspan(entry.data, entry.data_bytes);
}

} // namespace kigou
