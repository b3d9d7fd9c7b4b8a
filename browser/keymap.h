// keymap.h - which key does what.
#ifndef KIGOU_BROWSER_KEYMAP_H
#define KIGOU_BROWSER_KEYMAP_H

#include <optional>
#include <string>
#include <vector>

#include "browser/keys.h"
#include "picker/picking/picking.h"

namespace kigou {

/** What a key asks for: an action of the picking, or of the browser itself. */
struct Command {
    enum class Own { none, help, redraw };
    std::optional<Action> action;
    Own own = Own::none;
};

/** @param searching  characters are what is looked for, and no commands */
Command command_of(const Key &key, bool searching);

/** Lines that tell all keys. */
std::vector<std::string> key_help();

/** The most needed ones in a line. */
std::string key_hints(bool searching);

} // namespace kigou

#endif
