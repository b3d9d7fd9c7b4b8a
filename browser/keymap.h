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

/** What characters are: commands, what is looked for, or the answer to a question. */
enum class KeyUse { commands, search, answer };

KeyUse use_of(bool asking, bool searching);

Command command_of(const Key &key, KeyUse use);

/** Lines that tell all keys. @param cells  of a line; where it is narrow each key takes two */
std::vector<std::string> key_help(std::size_t cells);

/** The keys that are needed most for what is shown, the most needed first; each with its use. */
std::vector<std::string> key_hints(const View &view);

} // namespace kigou

#endif
