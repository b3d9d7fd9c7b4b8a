// keys.cpp - see keys.h.
#include "fcitx/keys.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "picker/search/kana.h"

namespace kigou {
namespace {

using fcitx::Key;
using fcitx::KeyState;

struct Binding {
    fcitx::KeySym sym;
    Act browsing;
    Act searching;
    bool shift = false;
};

constexpr Binding bindings[] = {
    {FcitxKey_Escape, Act::cancel, Act::back},
    {FcitxKey_Return, Act::enter, Act::enter},
    {FcitxKey_Return, Act::enter, Act::enter, true},
    {FcitxKey_KP_Enter, Act::enter, Act::enter},
    {FcitxKey_KP_Enter, Act::enter, Act::enter, true},
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
};

/** Keys that type the same are one: full-width forms, the keypad, Shift for what is printed. */
Key plain(const Key &key) {
    constexpr char32_t full_width = 0xFF01 - '!';
    char32_t character = Key::keySymToUnicode(key.sym());
    if (character == 0x3000) character = ' ';
    if (character > full_width && character <= full_width + '~') character -= full_width;
    if (character < ' ' || character == 0x7F) return key;
    const auto states = character == ' ' ? key.states() : key.states().unset(KeyState::Shift);
    return Key(Key::keySymFromUnicode(character), states);
}

bool is_number(std::string_view text, std::size_t most, int (*is_digit)(int)) {
    return text.size() <= most && std::ranges::all_of(text, [&](char digit) {
               return is_digit(static_cast<unsigned char>(digit)) != 0;
           });
}

/** Whether a query is a code to which a digit can be added; kuten only behind k: */
bool takes_digit(const std::string &query) {
    const std::string code = folded(query);
    const std::string_view rest =
        std::string_view(code).substr(std::min<std::size_t>(2, code.size()));
    if (code.starts_with("k:")) {
        const std::size_t hyphen = rest.find('-');
        if (hyphen == std::string_view::npos) return is_number(rest, 1, std::isdigit);
        return is_number(rest.substr(0, hyphen), 2, std::isdigit) &&
               is_number(rest.substr(hyphen + 1), 1, std::isdigit);
    }
    constexpr std::string_view kinds[] = {"u+", "j:", "s:", "e:"};
    return std::ranges::any_of(kinds, [&](auto kind) { return code.starts_with(kind); }) &&
           is_number(rest, 3, std::isxdigit);
}

} // namespace

std::optional<Command> command_of(const Key &pressed, const View &view) {
    const Key key = plain(pressed);
    const auto states = key.states();
    if (key.digitSelection(states) >= 0 && (!states || states == KeyState::Alt)) {
        const int digit = key.digitSelection(states); // 0 is behind 9
        if (states || !view.searching || !takes_digit(view.query)) {
            return Command{
                {.act = Act::take_number, .number = static_cast<std::size_t>(digit + 1)}};
        }
    }
    if (pressed.check(Key("Control+D"))) return Command{.action = {}, .favourite = true};
    const bool shift = states == KeyState::Shift;
    if (states && !shift) return std::nullopt;
    const auto binding = std::ranges::find_if(
        bindings, [&](const Binding &one) { return one.sym == key.sym() && one.shift == shift; });
    if (binding == std::end(bindings)) {
        const char32_t character = Key::keySymToUnicode(key.sym());
        if (character <= ' ' || character == 0x7F) return std::nullopt;
        return Command{{Act::type, to_utf8(character)}};
    }
    const bool with_partner = shift && binding->browsing == Act::enter;
    if (!view.searching) return Command{{binding->browsing}, with_partner};
    // Nothing to search for any more is no search any more.
    if (binding->searching == Act::erase && without_last(view.query).empty()) {
        return Command{{Act::back}};
    }
    return Command{{binding->searching}, with_partner};
}

} // namespace kigou
