// keys.cpp - see keys.h.
#include "fcitx/keys.h"

#include <algorithm>

namespace kigou {
namespace {

struct Binding {
    fcitx::KeySym sym;
    Act browsing;
    Act searching;
    bool shift = false;
};

constexpr Binding bindings[] = {
    {FcitxKey_Escape, Act::cancel, Act::back},
    {FcitxKey_Return, Act::enter, Act::enter},
    {FcitxKey_KP_Enter, Act::enter, Act::enter},
    {FcitxKey_Right, Act::enter_title, Act::show},
    {FcitxKey_Left, Act::back, Act::back},
    {FcitxKey_BackSpace, Act::back, Act::erase},
    {FcitxKey_Down, Act::next, Act::next},
    {FcitxKey_Up, Act::previous, Act::previous},
    {FcitxKey_Page_Down, Act::next_page, Act::next_page},
    {FcitxKey_Page_Up, Act::previous_page, Act::previous_page},
    {FcitxKey_Home, Act::first, Act::first},
    {FcitxKey_End, Act::last, Act::last},
    {FcitxKey_Tab, Act::next_sibling, Act::next},
    {FcitxKey_Tab, Act::previous_sibling, Act::previous, true},
    {FcitxKey_ISO_Left_Tab, Act::previous_sibling, Act::previous, true},
    {FcitxKey_space, Act::take_and_stay, Act::take_and_stay},
    {FcitxKey_KP_Space, Act::take_and_stay, Act::take_and_stay},
};

} // namespace

std::optional<Action> action_of(const fcitx::Key &key, const View &view) {
    if (key.isDigit()) {
        const int digit = key.digit();
        return Action{.act = Act::take_number,
                      .number = static_cast<std::size_t>(digit == 0 ? 10 : digit)};
    }
    const bool shift = key.states() == fcitx::KeyState::Shift;
    if (key.states() && !shift) return std::nullopt;
    const auto binding = std::ranges::find_if(
        bindings, [&](const Binding &one) { return one.sym == key.sym() && one.shift == shift; });
    if (binding == std::end(bindings)) return std::nullopt;
    return Action{view.searching ? binding->searching : binding->browsing};
}

} // namespace kigou
