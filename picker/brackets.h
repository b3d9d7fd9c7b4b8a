// brackets.h - brackets and quotation marks by twos.
#ifndef KIGOU_PICKER_BRACKETS_H
#define KIGOU_PICKER_BRACKETS_H

#include <optional>
#include <utility>

#include "picker/text.h"

namespace kigou {

/** A bracket or quotation mark and its partner, the one that opens first; nothing for others. */
std::optional<std::pair<Sjis, Sjis>> bracket_pair(const Sjis &symbol);

} // namespace kigou

#endif
