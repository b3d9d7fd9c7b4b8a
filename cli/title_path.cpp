// title_path.cpp - see title_path.h.
#include "cli/title_path.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kigou {
namespace {

constexpr std::size_t suggestions_shown = 5;

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

/** How far a title is from the one typed: 0 the same, 1 one holds the other, 2 a slip. */
std::optional<int> distance(const std::string &title, const std::string &typed) {
    if (title == typed) return 0;
    if (typed.empty() || title.empty()) return std::nullopt;
    if (title.find(typed) != std::string::npos || typed.find(title) != std::string::npos) return 1;
    const std::u32string wanted = to_characters(typed);
    const std::size_t slips = std::max<std::size_t>(1, wanted.size() / 3);
    if (wanted.size() > 1 && edit_distance(to_characters(title), wanted) <= slips) return 2;
    return std::nullopt;
}

std::vector<std::string> near_titles(const std::vector<Title> &titles, const std::string &typed) {
    std::vector<std::pair<int, std::string>> found;
    for (const Title &title : titles) {
        if (const auto far = distance(last_title(title.text), typed)) {
            found.emplace_back(*far, title.text);
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<std::string> paths;
    for (const auto &[far, path] : found) {
        if (paths.size() < suggestions_shown) paths.push_back(path);
    }
    return paths;
}

/** Titles directly below the deepest existing title on the way to a path. */
std::string children_on_the_way(const std::vector<Title> &titles, std::string path) {
    const auto exists = [&](const Title &title) { return normalized(title.text) == path; };
    while (std::none_of(titles.begin(), titles.end(), exists)) {
        const auto end = path.rfind(separator);
        if (end == std::string::npos) return {};
        path.resize(end);
    }
    std::string names;
    for (const Title &title : titles) {
        const std::string full = normalized(title.text);
        if (!lies_below(full, path)) continue;
        const std::string name = full.substr(path.size() + separator.size());
        if (name.find(separator) == std::string::npos) names += (names.empty() ? "" : ", ") + name;
    }
    return names.empty() ? path + " has no titles below it" : path + " holds: " + names;
}

[[noreturn]] void not_found(const std::vector<Title> &titles, const std::string &path) {
    std::vector<std::string> hints;
    for (const std::string &near : near_titles(titles, last_title(path))) {
        hints.push_back("did you mean " + near + "?");
    }
    if (hints.empty()) {
        if (std::string children = children_on_the_way(titles, path); !children.empty()) {
            hints.push_back(std::move(children));
        }
    }
    throw Failure(Status::nothing_found, "there is no title " + path, hints);
}

/** The file whose title begins the path, the longest when several do; else the standard set. */
Title file_of(Host &host, const std::string &path) {
    Title file = typed_title(std::string(standard_title));
    std::size_t longest = 0;
    for (const Title &title : host.file_titles().items) {
        const std::string start = normalized(title.text);
        if (start.size() > longest && (path == start || lies_below(path, start))) {
            longest = start.size();
            file = title;
        }
    }
    return file;
}

} // namespace

std::string normalized(std::string_view path) {
    std::string text;
    for (const char byte : path) {
        if (byte == '/') {
            text += separator;
        } else {
            text += byte;
        }
    }
    while (text.starts_with(separator)) text.erase(0, separator.size());
    while (text.ends_with(separator)) text.resize(text.size() - separator.size());
    return text;
}

bool lies_below(std::string_view path, std::string_view parent) {
    return path.size() > parent.size() + separator.size() && path.starts_with(parent) &&
           path.substr(parent.size()).starts_with(separator);
}

std::size_t level_of(std::string_view path, std::string_view file) {
    std::size_t level = 1;
    for (auto at = path.find(separator, file.size()); at != std::string_view::npos;
         at = path.find(separator, at + separator.size())) {
        ++level;
    }
    return level;
}

std::string last_title(std::string_view path) {
    const auto end = path.rfind(separator);
    return std::string(end == std::string_view::npos ? path : path.substr(end + separator.size()));
}

Title typed_title(const std::string &typed) {
    Sjis sjis = to_sjis(typed);
    std::string text = to_utf8(sjis);
    return {std::move(sjis), std::move(text)};
}

Located locate(Host &host, const std::string &typed, const std::optional<std::string> &file) {
    std::string path = normalized(typed_title(typed).text);
    const Title owner = file ? typed_title(*file) : file_of(host, path);
    const std::string root = normalized(owner.text);
    if (path.empty()) {
        path = root;
    } else if (path != root && !lies_below(path, root)) {
        path = normalized(root + std::string(separator) + path);
    }
    host.open(owner);
    Listing<Title> tree = host.tree();
    const auto found = std::find_if(tree.items.begin(), tree.items.end(), [&](const Title &title) {
        return normalized(title.text) == path;
    });
    if (found == tree.items.end() && !tree.cut_short) not_found(tree.items, path);
    Title title = found == tree.items.end() ? typed_title(path) : *found;
    return {std::move(title), std::move(tree)};
}

} // namespace kigou
