// library_messages.h - the library's error messages, for people who do not read Japanese.
#ifndef KIGOU_PICKER_LIBRARY_MESSAGES_H
#define KIGOU_PICKER_LIBRARY_MESSAGES_H

#include <array>
#include <optional>
#include <string_view>

#include "picker/failure.h"

namespace kigou {

struct LibraryMessage {
    std::string_view japanese; /**< as the library writes it, in UTF-8 */
    std::string_view english;
    std::string_view hint; /**< what it is about or what to look at; empty when that is plain */
    std::optional<Remedy> remedy{};
};

/** By message number. */
extern const std::array<LibraryMessage, 20> library_messages;

/** Number of a message by its decoded text; nothing for any other text. */
std::optional<int> message_number(std::string_view japanese);

/** Messages that decide what a command does. */
enum {
    message_no_such_file = 0,
    message_not_opened = 1,
    message_not_read = 7,
    message_not_written = 8,
    message_list_too_long = 9,
    message_input_error = 13,
    message_not_converted = 16
};

} // namespace kigou

#endif
