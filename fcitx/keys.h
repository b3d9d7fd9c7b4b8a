// keys.h - what a key does while the symbols are open.
#ifndef KIGOU_FCITX_KEYS_H
#define KIGOU_FCITX_KEYS_H

#include <fcitx-utils/key.h>

#include <optional>

#include "picker/picking/picking.h"

namespace kigou {

struct Command {
    Action action;             /**< Act::cancel is to close */
    bool with_partner = false; /**< of a bracket that is taken, both */
    bool favourite = false;    /**< no action: into お気に入り, or out of there */
};

/** Nothing for a key that does nothing here. */
std::optional<Command> command_of(const fcitx::Key &key, const View &view);

} // namespace kigou

#endif
