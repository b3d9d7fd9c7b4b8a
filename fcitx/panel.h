// panel.h - a view in the input panel of a text field: the path or what there is to say above,
// the codes below, the items of a page as candidates.
#ifndef KIGOU_FCITX_PANEL_H
#define KIGOU_FCITX_PANEL_H

#include <fcitx/inputcontext.h>

#include <functional>

#include "fcitx/opening.h"

namespace kigou {

struct PanelStyle {
    bool codes;             /**< the lower line has them */
    bool preedit_in_window; /**< although the field would show it: it would take the place of what
                                 is selected there */
};

/** What a click or a button of the candidate window does. */
using Clicked = std::function<void(const Action &)>;

void show_panel(fcitx::InputContext &field, const Opening &opening, PanelStyle style,
                const Clicked &clicked);
void hide_panel(fcitx::InputContext &field);

} // namespace kigou

#endif
