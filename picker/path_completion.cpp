// path_completion.cpp - see path_completion.h.
#include "picker/path_completion.h"

#include <algorithm>

#include "picker/failure.h"
#include "picker/locate.h"
#include "picker/snapshot.h"

namespace kigou {
namespace {

/** Where the last title that is being typed begins, and the separator in front of it. */
struct TypedEnd {
    std::size_t begin = 0;
    std::string separator = "/";

    explicit TypedEnd(const std::string &typed) {
        const auto wide = typed.rfind(kigou::separator), narrow = typed.rfind('/');
        const bool is_wide =
            wide != std::string::npos && (narrow == std::string::npos || wide > narrow);
        if (is_wide) separator = kigou::separator;
        if (is_wide || narrow != std::string::npos) {
            begin = (is_wide ? wide : narrow) + separator.size();
        }
    }
};

void add_titles(const SetFiles &sets, const std::string &typed,
                const std::optional<std::string> &file, std::vector<PathCompletion> &completions) {
    const TypedEnd end(typed);
    const std::string above = normalized(typed.substr(0, end.begin)),
                      last = typed.substr(end.begin);
    const SetFile *named = file ? sets.find(typed_title(*file).sjis) : file_beginning(sets, above);
    if (!named && !file) named = sets.find(typed_title(std::string(standard_title)).sjis);
    if (!named) return;

    const Snapshot snapshot(named->path);
    const std::string root = normalized(named->title.text);
    const std::string below = above == root             ? ""
                              : lies_below(above, root) ? normalized(above.substr(root.size()))
                                                        : above;
    const Title parent =
        below.empty() ? snapshot.file() : joined(snapshot.file(), typed_title(below).sjis);
    const auto number = snapshot.find(parent.sjis);
    if (!number) return;
    for (const std::size_t child : snapshot.children(*number)) {
        const std::string name = last_title(snapshot.title(child).text);
        if (!name.starts_with(last) || !can_be_typed(name) || name.find('/') != std::string::npos)
            continue;
        completions.push_back(
            {typed.substr(0, end.begin) + name +
                 (snapshot.children(child).empty() ? std::string() : end.separator),
             snapshot.symbol_count(child)});
    }
}

} // namespace

bool can_be_typed(std::string_view title) {
    const std::u32string characters = to_characters(title);
    return std::none_of(characters.begin(), characters.end(), [](char32_t character) {
        return character < 0x20 || (character >= 0x7F && character < 0xA0) ||
               character == replacement_character;
    });
}

std::vector<PathCompletion> path_completions(const SetFiles &sets, const std::string &typed,
                                             const std::optional<std::string> &file) {
    std::vector<PathCompletion> completions;
    if (!can_be_typed(typed)) return completions;
    for (const SetFile &set : sets.sets) {
        const std::string &title = set.title.text;
        if (file || !title.starts_with(typed) || !can_be_typed(title)) continue;
        if (sets.find(set.title.sjis) != &set) continue; // hidden
        completions.push_back({title + TypedEnd(typed).separator});
    }
    try {
        add_titles(sets, typed, file, completions);
    } catch (const Failure &) {
        // A set that cannot be read, or a character that no title has.
    }
    return completions;
}

} // namespace kigou
