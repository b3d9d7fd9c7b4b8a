// locate.cpp - see locate.h.
#include "picker/locate.h"

#include <algorithm>

#include "picker/failure.h"
#include "picker/near_titles.h"

namespace kigou {
namespace {

constexpr std::size_t most_suggestions = 10;
constexpr std::size_t most_children_told = 20;

/** The path with what stands above the deepest title of it that exists, and what that holds. */
std::string children_on_the_way(const Snapshot &snapshot, std::string path) {
    const auto number_of_path = [&]() -> std::optional<std::size_t> {
        for (std::size_t i = 0; i < snapshot.size(); ++i) {
            if (normalized(snapshot.title(i).text) == path) return i;
        }
        return std::nullopt;
    };
    auto number = number_of_path();
    while (!number) {
        const auto end = path.rfind(separator);
        if (end == std::string::npos) return {};
        path.resize(end);
        number = number_of_path();
    }
    const std::span<const std::size_t> children = snapshot.children(*number);
    if (children.empty()) return path + " has no titles below it";
    std::string names;
    for (const std::size_t child : children.first(std::min(children.size(), most_children_told))) {
        names += (names.empty() ? "" : ", ") + last_title(snapshot.title(child).text);
    }
    if (children.size() > most_children_told) {
        names += " and " + std::to_string(children.size() - most_children_told) + " more";
    }
    return path + " holds: " + names;
}

/** @param first  the title that was typed first, when it may be meant for a file's; else empty */
[[noreturn]] void not_found(const SetFiles &sets, const Snapshot &snapshot, const std::string &path,
                            const std::string &first) {
    std::vector<std::string> titles;
    for (std::size_t i = 0; i < snapshot.size(); ++i) titles.push_back(snapshot.title(i).text);
    std::vector<std::string> near = nearest(titles, last_title(path), most_suggestions);
    std::vector<std::string> files;
    for (const SetFile &set : sets.sets) files.push_back(set.title.text);
    for (std::string &file : nearest(files, first, most_suggestions)) {
        if (near.size() < most_suggestions) near.push_back(std::move(file));
    }
    std::vector<std::string> details = did_you_mean(near);
    if (details.empty()) {
        if (std::string children = children_on_the_way(snapshot, path); !children.empty()) {
            details.push_back(std::move(children));
        }
    }
    throw Failure(FailureKind::nothing_found, "there is no title " + path, details);
}

} // namespace

const SetFile *file_beginning(const SetFiles &sets, const std::string &path) {
    const SetFile *found = nullptr;
    std::size_t longest = 0;
    for (const SetFile &set : sets.sets) {
        const std::string start = normalized(set.title.text);
        if (start.size() > longest && (path == start || lies_below(path, start))) {
            longest = start.size();
            found = &set;
        }
    }
    return found;
}

Located locate(const SetFiles &sets, const std::string &typed,
               const std::optional<std::string> &file) {
    const std::string wanted = normalized(typed_title(typed).text);
    const SetFile *set = file ? &sets.get(typed_title(*file)) : file_beginning(sets, wanted);
    const bool file_is_known = set != nullptr;
    if (!set) set = &sets.get(typed_title(std::string(standard_title)));
    Snapshot snapshot(set->path);
    const std::string root = normalized(set->title.text);
    std::string path = wanted;
    if (path.empty()) {
        path = root;
    } else if (path != root && !lies_below(path, root)) {
        path = normalized(root + std::string(separator) + path);
    }
    for (std::size_t i = 0; i < snapshot.size(); ++i) {
        if (normalized(snapshot.title(i).text) == path) return {std::move(snapshot), i};
    }
    not_found(sets, snapshot, path,
              file_is_known ? std::string() : wanted.substr(0, wanted.find(separator)));
}

} // namespace kigou
