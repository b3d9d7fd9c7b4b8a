// keymap.cpp - see keymap.h. What the help shows is made of the table that the keys go by.
#include "browser/keymap.h"

#include <iterator>

namespace kigou {
namespace {

/** A key by its name, or by the character of a text or control key. */
struct Binding {
    KeyName name;
    char character;
    Act act;
    const char *keys; /**< for the help; empty for one that is told with another */
    const char *help;
};

constexpr Binding bindings[] = {
    {KeyName::down, 0, Act::next, "Down j Ctrl+N", "the next item"},
    {KeyName::text, 'j', Act::next, "", ""},
    {KeyName::control, 'n', Act::next, "", ""},
    {KeyName::wheel_down, 0, Act::next, "", ""},
    {KeyName::up, 0, Act::previous, "Up k Ctrl+P", "the item before"},
    {KeyName::text, 'k', Act::previous, "", ""},
    {KeyName::control, 'p', Act::previous, "", ""},
    {KeyName::wheel_up, 0, Act::previous, "", ""},
    {KeyName::right, 0, Act::enter_title, "Right l Ctrl+F", "into the title"},
    {KeyName::text, 'l', Act::enter_title, "", ""},
    {KeyName::control, 'f', Act::enter_title, "", ""},
    {KeyName::left, 0, Act::back, "Left h Ctrl+B Esc", "back to the column before"},
    {KeyName::text, 'h', Act::back, "", ""},
    {KeyName::control, 'b', Act::back, "", ""},
    {KeyName::escape, 0, Act::back, "", ""},
    {KeyName::page_down, 0, Act::next_page, "PgDn", "the next page"},
    {KeyName::page_up, 0, Act::previous_page, "PgUp", "the page before"},
    {KeyName::home, 0, Act::first, "Home g", "the first item"},
    {KeyName::text, 'g', Act::first, "", ""},
    {KeyName::end, 0, Act::last, "End G", "the last item"},
    {KeyName::text, 'G', Act::last, "", ""},
    {KeyName::tab, 0, Act::next_title, "Tab", "the next title, whatever its level"},
    {KeyName::back_tab, 0, Act::previous_title, "Shift+Tab", "the title before"},
    {KeyName::enter, 0, Act::enter, "Enter", "takes the symbol and ends; goes into a title"},
    {KeyName::text, ' ', Act::take_and_stay, "Space Insert", "takes the symbol and stays"},
    {KeyName::insert, 0, Act::take_and_stay, "", ""},
    {KeyName::backspace, 0, Act::drop_pick, "Backspace", "gives the last one back"},
    {KeyName::text, '/', Act::search, "/ F3 Ctrl+S", "finds: a reading, a name, a title, a code"},
    {KeyName::f3, 0, Act::search, "", ""},
    {KeyName::control, 's', Act::search, "", ""},
    {KeyName::f5, 0, Act::copy_to, "F5 c",
     "copies the symbol, or the picks, to a title of your own"},
    {KeyName::text, 'c', Act::copy_to, "", ""},
    {KeyName::f7, 0, Act::new_title, "F7", "a new title here; among the sets, a new set"},
    {KeyName::f2, 0, Act::rename, "F2", "another name"},
    {KeyName::f8, 0, Act::remove, "F8 Delete", "removes the symbol, the title or the set"},
    {KeyName::remove, 0, Act::remove, "", ""},
    {KeyName::text, 'u', Act::undo, "u Ctrl+Z", "takes the last edit back"},
    {KeyName::control, 'z', Act::undo, "", ""},
    {KeyName::control, 'r', Act::redo, "Ctrl+R Ctrl+Y", "makes it again"},
    {KeyName::control, 'y', Act::redo, "", ""},
    {KeyName::text, 'q', Act::finish, "q F10", "ends with what was taken"},
    {KeyName::f10, 0, Act::finish, "", ""},
    {KeyName::control, 'c', Act::cancel, "Ctrl+C", "ends with nothing"},
};

/** While something is looked for, characters are text, and these keys do something else. */
constexpr Binding search_bindings[] = {
    {KeyName::enter, 0, Act::show, "Enter", "goes to where the symbol stands"},
    {KeyName::text, ' ', Act::take_and_stay, "Space", "takes it and stays"},
    {KeyName::backspace, 0, Act::erase, "Backspace", "takes the last character away"},
    {KeyName::control, 'u', Act::search, "Ctrl+U", "looks for something else"},
    {KeyName::left, 0, Act::back, "", ""},
    {KeyName::escape, 0, Act::back, "Esc", "leaves the search"},
};

bool is_key(const Binding &binding, const Key &key) {
    if (binding.name != key.name || key.alt) return false;
    return binding.character == 0 || as_command(key.text) == std::string(1, binding.character);
}

} // namespace

Command command_of(const Key &key, bool searching) {
    if (key.name == KeyName::f1) return {std::nullopt, Command::Own::help};
    if (key.name == KeyName::control && key.text == "l")
        return {std::nullopt, Command::Own::redraw};
    if (key.alt && (key.name == KeyName::up || key.name == KeyName::down)) {
        return {Action{key.name == KeyName::up ? Act::raise : Act::lower}};
    }
    if (searching) {
        for (const Binding &binding : search_bindings) {
            if (is_key(binding, key)) return {Action{binding.act}};
        }
        if (key.name == KeyName::text) return {Action{Act::type, key.text}};
    }
    for (const Binding &binding : bindings) {
        if (is_key(binding, key)) return {Action{binding.act}};
    }
    if (key.name != KeyName::text) return {};
    const std::string typed = as_command(key.text);
    if (typed == "?") return {std::nullopt, Command::Own::help};
    if (typed.size() == 1 && typed.front() >= '1' && typed.front() <= '9') {
        return {Action{.act = Act::take_number,
                       .number = static_cast<std::size_t>(typed.front() - '0')}};
    }
    return {};
}

std::vector<std::string> key_help() {
    std::vector<std::string> lines;
    const auto add = [&](std::string keys, const char *help) {
        keys.resize(std::max<std::size_t>(keys.size() + 1, 20), ' ');
        lines.push_back("  " + keys + help);
    };
    for (const Binding &binding : bindings) {
        if (*binding.keys) add(binding.keys, binding.help);
    }
    add("Alt+Up Alt+Down", "moves the symbol among its neighbours");
    add("1 to 9", "goes to the item of that number and enters it");
    add("F1 ?", "this help");
    add("Ctrl+L", "draws all anew");
    lines.emplace_back("While something is looked for:");
    for (const Binding &binding : search_bindings) {
        if (*binding.keys) add(binding.keys, binding.help);
    }
    lines.emplace_back("Full-width letters and digits do the same.");
    return lines;
}

std::string key_hints(bool searching) {
    return searching ? "type to find  Enter go there  Space take  Esc back"
                     : "arrows move  Enter take  Space take more  / find  ? help  q quit";
}

} // namespace kigou
