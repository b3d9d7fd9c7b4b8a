// title.cpp - see title.h.
#include "picker/title.h"

#include <algorithm>
#include <array>
#include <utility>

#include "common/sjis_text.h"
#include "picker/disk_form.h"
#include "picker/failure.h"

namespace kigou {
namespace {

constexpr std::size_t most_file_title = 255;
constexpr std::array<unsigned char, 2> separator_bytes{0x81, 0x5E};

std::optional<std::string> refusal(const Title &title, std::size_t most_bytes) {
    if (title.sjis.empty()) return "it is empty";
    if (title.sjis.size() > most_bytes) {
        return "it has " + std::to_string(title.sjis.size()) + " bytes of at most " +
               std::to_string(most_bytes);
    }
    for (const char *sign : {"／", "［", "］"}) {
        if (title.text.find(sign) != std::string::npos) {
            return "it holds '" + std::string(sign) + "', which separates or encloses titles";
        }
    }
    for (const unsigned char byte : title.sjis) {
        if (byte < 0x20 || byte == 0x7F) return "it holds a control character";
    }
    if (!survives_saving(title.sjis)) return "it holds a character that a file cannot keep";
    return std::nullopt;
}

Title accepted(const std::string &typed, std::optional<std::string> (*rule)(const Title &)) {
    Title title = typed_title(typed);
    auto reason = rule(title);
    // The library takes it, but nobody could type a path with it.
    if (!reason && typed.find('/') != std::string::npos) {
        reason = "it holds '/', which separates titles";
    }
    if (reason) {
        throw Failure(FailureKind::refused, "'" + typed + "' cannot be a title: " + *reason);
    }
    return title;
}

} // namespace

Title title_of(std::span<const unsigned char> sjis) {
    return {Sjis(sjis.begin(), sjis.end()), to_utf8(sjis)};
}

Title typed_title(const std::string &typed) {
    return title_of(to_sjis(typed));
}

Title joined(const Title &parent, std::span<const unsigned char> title) {
    Sjis sjis = parent.sjis;
    sjis.insert(sjis.end(), separator_bytes.begin(), separator_bytes.end());
    sjis.insert(sjis.end(), title.begin(), title.end());
    return title_of(sjis);
}

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

bool lies_below(std::span<const unsigned char> path, std::span<const unsigned char> parent) {
    return path.size() > parent.size() + 2 &&
           std::equal(parent.begin(), parent.end(), path.begin()) &&
           std::ranges::equal(path.subspan(parent.size(), 2), separator_bytes);
}

std::span<const unsigned char> parent_of(std::span<const unsigned char> path) {
    std::size_t cut = 0;
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        if (!acc::is_lead(path[i])) continue;
        if (path[i] == separator_bytes[0] && path[i + 1] == separator_bytes[1]) cut = i;
        ++i;
    }
    return path.first(cut);
}

std::span<const unsigned char> above(std::span<const unsigned char> path, std::size_t file_bytes) {
    const std::size_t titles_at = std::min(file_bytes + separator_bytes.size(), path.size());
    const auto titles = parent_of(path.subspan(titles_at));
    return path.first(titles.empty() ? file_bytes : titles_at + titles.size());
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

std::optional<std::string> title_refusal(const Title &title) {
    return refusal(title, most_title);
}

std::optional<std::string> file_title_refusal(const Title &title) {
    return refusal(title, most_file_title);
}

Title new_file_title(const std::string &typed) {
    return accepted(typed, file_title_refusal);
}

Title new_title(const std::string &typed) {
    return accepted(typed, title_refusal);
}

} // namespace kigou
