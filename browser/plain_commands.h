// plain_commands.h - which typed line does what in the plain mode.
#ifndef KIGOU_BROWSER_PLAIN_COMMANDS_H
#define KIGOU_BROWSER_PLAIN_COMMANDS_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "picker/picking/picking.h"

namespace kigou {

/** What stands behind the name of a command. */
enum class Behind {
    nothing,
    item,
    item_or_picks, /**< nothing when something was taken, else an item */
    text
};

struct PlainCommand {
    enum class Own { none, help, list, tell }; /**< what the picking does not do */

    const char *name; /**< a letter or a sign; empty for one that has none */
    const char *word; /**< says the same; empty likewise */
    Behind takes;
    std::optional<Act> act; /**< at the item behind it; none for one of its own */
    const char *help;
    Own own = Own::none;
};

/** A line that was understood, or what to say to one that was not. */
struct TypedCommand {
    const PlainCommand *command = nullptr; /**< null when it was not */
    std::optional<std::size_t> item{};     /**< its number, from 1; there may be none such */
    std::string text{};                    /**< behind the command; or what to say */
};

/**
 * Full-width letters, digits and signs count as those of ASCII, and so does what an input method
 * makes of a key that is a command: ・ is / and う is u.
 * @param has_picks  something was taken
 */
TypedCommand understand(std::string_view line, bool has_picks);

/** A typed line as commands are compared: folded as understand() does, without blanks around it. */
std::string folded_line(std::string_view line);

/** A line for each command. */
std::vector<std::string> plain_help();

} // namespace kigou

#endif
