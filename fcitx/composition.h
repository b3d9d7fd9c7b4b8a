// composition.h - the text of what an engine composes.
#ifndef KIGOU_FCITX_COMPOSITION_H
#define KIGOU_FCITX_COMPOSITION_H

#include <fcitx/inputcontext.h>

#include <string>

namespace kigou {

/**
 * What is composed in a field, as it is to be committed; UTF-8, often empty.
 * @param engine  add-on that composes it: SKK shows marks that are no text
 */
std::string composed_text(fcitx::InputContext &field, const std::string &engine);

} // namespace kigou

#endif
