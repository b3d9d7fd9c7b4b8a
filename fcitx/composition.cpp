// composition.cpp - see composition.h.
#include "fcitx/composition.h"

#include <fcitx/inputpanel.h>

#include <string_view>

namespace kigou {
namespace {

/** Without the ▽ or ▼ before what is converted, and the * before what is inflected. A word that
    is being taught to the dictionary, in 【】, stays as it is: it is more than a text. */
std::string without_marks(std::string text) {
    if (text.find("【") != std::string::npos) return text;
    for (const std::string_view mark : {"▽", "▼"}) {
        if (text.starts_with(mark)) text.erase(0, mark.size());
    }
    std::erase(text, '*');
    return text;
}

} // namespace

std::string composed_text(fcitx::InputContext &field, const std::string &engine) {
    const fcitx::InputPanel &panel = field.inputPanel();
    const std::string composed =
        (panel.clientPreedit().empty() ? panel.preedit() : panel.clientPreedit())
            .toStringForCommit();
    return engine == "skk" ? without_marks(composed) : composed;
}

} // namespace kigou
