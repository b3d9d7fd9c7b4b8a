// keys.h - what a key does while the symbols are open.
#ifndef KIGOU_FCITX_KEYS_H
#define KIGOU_FCITX_KEYS_H

#include <fcitx-utils/key.h>

#include <optional>

#include "picker/picking/picking.h"

namespace kigou {

/** Nothing for a key that does nothing here. Act::cancel is to close. */
std::optional<Action> action_of(const fcitx::Key &key, const View &view);

} // namespace kigou

#endif
