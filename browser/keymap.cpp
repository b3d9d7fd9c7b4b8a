// keymap.cpp - see keymap.h. What the help shows is made of the tables that the keys go by.
#include "browser/keymap.h"

#include <algorithm>
#include <span>

namespace kigou {
namespace {

using Own = Command::Own;

/** A key by its name, or by the character of a text or control key. */
struct Binding {
    KeyName name;
    char character;
    Act act;
    const char *keys; /**< for the help; empty for one that is told with another */
    const char *help;
    bool alt = false;
    Own own = Own::none; /**< instead of the action */
};

constexpr std::size_t wide_enough = 80; // cells, for a key and what it does in one line

constexpr Act none = Act::finish; // of the bindings of the browser's own

constexpr Binding commands[] = {
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
    {KeyName::control, 'o', Act::all_sets, "Ctrl+O o", "to all sets, for another one"},
    {KeyName::text, 'o', Act::all_sets, "", ""},
    {KeyName::enter, 0, Act::enter, "Enter", "takes the symbol and ends; goes into a title"},
    {KeyName::text, ' ', Act::take_and_stay, "Space Insert", "takes the symbol and stays"},
    {KeyName::insert, 0, Act::take_and_stay, "", ""},
    {KeyName::backspace, 0, Act::drop_pick, "Backspace", "gives the last one back"},
    {KeyName::text, '/', Act::search, "/ F3", "finds: a reading, a name, a title, a code"},
    {KeyName::f3, 0, Act::search, "", ""},
    {KeyName::text, 'n', Act::next_found, "n .", "the next place of what was found"},
    {KeyName::text, '.', Act::next_found, "", ""},
    {KeyName::text, 'N', Act::previous_found, "N ,", "the place before"},
    {KeyName::text, ',', Act::previous_found, "", ""},
    {KeyName::f5, 0, Act::copy_to, "F5 c",
     "copies the symbol, or the picks, to a title of your own"},
    {KeyName::text, 'c', Act::copy_to, "", ""},
    {KeyName::f6, 0, Act::move_to, "F6 m", "moves the symbol or the title to another title"},
    {KeyName::text, 'm', Act::move_to, "", ""},
    {KeyName::f4, 0, Act::add_symbols, "F4 i", "adds symbols that you type, behind the cursor"},
    {KeyName::text, 'i', Act::add_symbols, "", ""},
    {KeyName::f7, 0, Act::new_title, "F7 a", "a new title here; among the sets, a new set"},
    {KeyName::text, 'a', Act::new_title, "", ""},
    {KeyName::f2, 0, Act::rename, "F2 r", "another name"},
    {KeyName::text, 'r', Act::rename, "", ""},
    {KeyName::f8, 0, Act::remove, "F8 Delete", "removes the symbol, the title or the set"},
    {KeyName::remove, 0, Act::remove, "", ""},
    {KeyName::up, 0, Act::raise, "Alt+Up <", "moves the symbol or the title up", true},
    {KeyName::text, '<', Act::raise, "", ""},
    {KeyName::down, 0, Act::lower, "Alt+Down >", "moves it down", true},
    {KeyName::text, '>', Act::lower, "", ""},
    {KeyName::control, 'z', Act::undo, "Ctrl+Z u", "takes the last edit back"},
    {KeyName::text, 'u', Act::undo, "", ""},
    {KeyName::control, 'r', Act::redo, "Ctrl+R Ctrl+Y", "makes it again"},
    {KeyName::control, 'y', Act::redo, "", ""},
    {KeyName::control, 's', Act::save, "Ctrl+S", "nothing: every edit is saved at once"},
    {KeyName::f1, 0, none, "F1 ?", "this help", false, Own::help},
    {KeyName::text, '?', none, "", "", false, Own::help},
    {KeyName::control, 'l', none, "Ctrl+L", "draws all anew", false, Own::redraw},
    {KeyName::text, 'q', Act::finish, "q F10", "ends with what was taken"},
    {KeyName::f10, 0, Act::finish, "", ""},
    {KeyName::control, 'c', Act::cancel, "Ctrl+C", "ends with nothing"},
};

/** While something is looked for, characters are text, and these keys do something else. */
constexpr Binding search_keys[] = {
    {KeyName::enter, 0, Act::show, "Enter", "goes to where the symbol stands"},
    {KeyName::text, ' ', Act::take_and_stay, "Space", "takes it and stays"},
    {KeyName::backspace, 0, Act::erase, "Backspace", "takes the last character away"},
    {KeyName::control, 'u', Act::search, "Ctrl+U", "looks for something else"},
    {KeyName::left, 0, Act::back, "", ""},
    {KeyName::escape, 0, Act::back, "Esc", "leaves the search"},
};

/** While a question is asked. */
constexpr Binding answer_keys[] = {
    {KeyName::enter, 0, Act::enter, "Enter", "does it"},
    {KeyName::down, 0, Act::next, "Down Up", "other titles to choose from"},
    {KeyName::up, 0, Act::previous, "", ""},
    {KeyName::control, 'n', Act::next, "", ""},
    {KeyName::control, 'p', Act::previous, "", ""},
    {KeyName::tab, 0, Act::complete, "Tab", "completes a title"},
    {KeyName::backspace, 0, Act::erase, "Backspace", "takes the last character away"},
    {KeyName::control, 'u', Act::search, "Ctrl+U", "takes all of it away"},
    {KeyName::escape, 0, Act::back, "Esc Ctrl+C", "does nothing"},
    {KeyName::control, 'c', Act::cancel, "", ""},
};

bool is_key(const Binding &binding, const Key &key) {
    if (binding.name != key.name || key.alt != binding.alt) return false;
    return binding.character == 0 || as_command(key.text) == std::string(1, binding.character);
}

std::optional<Command> bound(std::span<const Binding> bindings, const Key &key) {
    const auto binding =
        std::ranges::find_if(bindings, [&](const Binding &one) { return is_key(one, key); });
    if (binding == bindings.end()) return std::nullopt;
    if (binding->own != Own::none) return Command{std::nullopt, binding->own};
    return Command{Action{binding->act}, Own::none};
}

} // namespace

KeyUse use_of(bool asking, bool searching) {
    if (asking) return KeyUse::answer;
    return searching ? KeyUse::search : KeyUse::commands;
}

Command command_of(const Key &key, KeyUse use) {
    const bool is_character = key.name == KeyName::text && !key.alt;
    if (use == KeyUse::answer) {
        if (is_character) return {Action{Act::type, key.text}};
        return bound(answer_keys, key).value_or(Command{});
    }
    if (use == KeyUse::search) {
        if (const auto command = bound(search_keys, key)) return *command;
        // Words of a name are typed with the one key that is no character.
        if (key.name == KeyName::tab) return {Action{Act::type, " "}};
        if (is_character) return {Action{Act::type, key.text}};
    }
    if (const auto command = bound(commands, key)) return *command;
    const std::string typed = is_character ? as_command(key.text) : "";
    if (typed.size() == 1 && typed.front() >= '0' && typed.front() <= '9') {
        return {Action{.act = Act::digit, .number = static_cast<std::size_t>(typed.front() - '0')}};
    }
    return {};
}

std::vector<std::string> key_help(std::size_t cells) {
    std::vector<std::string> lines;
    const auto add = [&](std::string keys, const char *help) {
        if (cells < wide_enough) {
            lines.push_back(std::move(keys));
            lines.push_back(std::string("  ") + help);
            return;
        }
        keys.resize(std::max<std::size_t>(keys.size() + 1, 20), ' ');
        lines.push_back("  " + keys + help);
    };
    const auto add_all = [&](std::span<const Binding> bindings) {
        for (const Binding &binding : bindings) {
            if (*binding.keys) add(binding.keys, binding.help);
        }
    };
    add_all(commands);
    add("0 to 9", "goes to the item of that number and takes or enters it");
    lines.emplace_back("While something is looked for:");
    add_all(search_keys);
    add("Tab", "a blank, between two words");
    lines.emplace_back("While something is asked for:");
    add_all(answer_keys);
    lines.emplace_back("Full-width letters, digits and signs do the same.");
    return lines;
}

std::vector<std::string> key_hints(const View &view) {
    switch (use_of(!view.asking.empty(), view.searching)) {
        case KeyUse::answer:
            return {"Enter do it", "Esc leave it", "Up Down choose", "Tab complete"};
        case KeyUse::search:
            return {"Enter go there", "Space take", "Esc back", "Tab blank", "F5 copy", "F1 help"};
        case KeyUse::commands:
            break;
    }
    if (!view.number.empty()) return {"Enter item " + view.number, "0-9 go on", "Esc leave it"};
    if (!view.picks.empty()) {
        return {"q end with these", "Space take more", "Enter take, end", "? help",
                "Backspace give back"};
    }
    std::vector<std::string> hints{"arrows move", "Enter take", "Space take more",
                                   "/ find",      "? help",     "q quit"};
    if (view.can_undo) hints.emplace_back("u undo");
    hints.emplace_back(view.columns[view.current].read_only ? "F5 copy" : "F7 new title");
    return hints;
}

} // namespace kigou
