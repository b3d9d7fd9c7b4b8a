// storable.h - what a symbol file can hold, so that a refusal can name its reason.
#ifndef KIGOU_STORABLE_H
#define KIGOU_STORABLE_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "cli/host.h"

namespace kigou {

/** Bytes that the library takes as the data of one title, line ends counted. */
inline constexpr std::size_t most_data = 32767;

/** Titles in a path, the file's own included: one for each list box. */
inline constexpr std::size_t most_levels = ACC_LISTBOX_MAX;

/** Whether Shift_JIS is the same after a save and an open, that is through EUC-JP and back. */
bool survives_saving(std::span<const unsigned char> sjis);

/** Why a text cannot be a title; nothing when it can. */
std::optional<std::string> title_refusal(const Title &title);

/** The same for a file title, which may be a byte shorter. */
std::optional<std::string> file_title_refusal(const Title &title);

/** A file title or title as typed. @throws Failure with the reason when it cannot be one */
Title new_file_title(const std::string &typed);
Title new_title(const std::string &typed);

} // namespace kigou

#endif
