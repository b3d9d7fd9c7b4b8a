// title.h - titles and paths of titles: what they are, how they are compared, and which can
// be stored.
#ifndef KIGOU_PICKER_TITLE_H
#define KIGOU_PICKER_TITLE_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "picker/text.h"

namespace kigou {

/** A file title or the full path of a title, as the library has it and decoded. */
struct Title {
    Sjis sjis{};        /**< names the title to the library, also when it cannot be decoded */
    std::string text{}; /**< UTF-8 */
};

/** File title of the set that comes with the program. */
inline constexpr std::string_view standard_title = "標準の記号";

/** What stands between the titles of a path. */
inline constexpr std::string_view separator = "／";

/** Titles in a path, the file's own included: one for each list box. */
inline constexpr std::size_t most_levels = 10;

/** Titles of a file that the library opens. */
inline constexpr std::size_t most_titles = 32766;

/** Bytes of one title. */
inline constexpr std::size_t most_title = 256;

/** Bytes of a full path, the file title included. */
inline constexpr std::size_t most_path = 514;

Title title_of(std::span<const unsigned char> sjis);

/** A title as typed. @throws Failure (refused) for a character that Shift_JIS lacks */
Title typed_title(const std::string &typed);

/** A title below a path. */
Title joined(const Title &parent, std::span<const unsigned char> title);

/** A path for comparing: "/" counts as the separator, and none stands at either end. */
std::string normalized(std::string_view path);

/** Whether path is something below parent; both normalized or both as the library has them. */
bool lies_below(std::string_view path, std::string_view parent);
bool lies_below(std::span<const unsigned char> path, std::span<const unsigned char> parent);

/** The path above; empty for a path without a separator. Shift_JIS aware. */
std::span<const unsigned char> parent_of(std::span<const unsigned char> path);

/**
 * Full path of what stands above a title of a file. The file title is stepped over: it may hold
 * a separator, or end in half a character that would eat the next one.
 * @param path        full path of a title
 * @param file_bytes  length of the file title
 */
std::span<const unsigned char> above(std::span<const unsigned char> path, std::size_t file_bytes);

/** Level of a path of a file: 1 for the file itself, 2 for a title of the first level. */
std::size_t level_of(std::string_view path, std::string_view file);

/** What follows the last separator; the whole path when there is none. */
std::string last_title(std::string_view path);

/** Why a text cannot be a title; nothing when it can. */
std::optional<std::string> title_refusal(const Title &title);

/** The same for a file title, which may be a byte shorter. */
std::optional<std::string> file_title_refusal(const Title &title);

/** A title or file title as typed. @throws Failure (refused) with the reason when it cannot be one
 */
Title new_title(const std::string &typed);
Title new_file_title(const std::string &typed);

} // namespace kigou

#endif
