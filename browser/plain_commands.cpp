// plain_commands.cpp - see plain_commands.h. The help is made of the table that lines go by.
#include "browser/plain_commands.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "browser/keys.h"
#include "picker/text.h"

namespace kigou {
namespace {

using Own = PlainCommand::Own;

constexpr PlainCommand commands[] = {
    {"", "", Behind::item, Act::enter, "goes into that title; takes that symbol and ends"},
    {"+", "take", Behind::item, Act::take_and_stay, "takes that symbol and goes on"},
    {"", "next", Behind::nothing, Act::next_page, "more items"},
    {"/", "find", Behind::text, Act::search, "finds: a reading, a name, a title, a code"},
    {"b", "back", Behind::nothing, Act::back, "back to the title before, or out of the search"},
    {"q", "quit", Behind::nothing, Act::finish, "ends with what was taken"},
    {"i", "tell", Behind::item, std::nullopt, "tells codes and readings", Own::tell},
    {"l", "list", Behind::nothing, std::nullopt, "says again where you are", Own::list},
    {"-", "drop", Behind::nothing, Act::drop_pick, "gives the last one back"},
    {"s", "show", Behind::item, Act::show, "goes where that symbol stands, in a search"},
    {"g", "go", Behind::nothing, Act::next_found, "to the next place of what was found"},
    {"gb", "return", Behind::nothing, Act::previous_found, "to the place before"},
    {"o", "sets", Behind::nothing, Act::all_sets, "to all sets"},
    {"t", "title", Behind::nothing, Act::next_title, "the next title, whatever its level"},
    {"tb", "before", Behind::nothing, Act::previous_title, "the title before"},
    {"p", "previous", Behind::nothing, Act::previous_page, "the items before these"},
    {"f", "first", Behind::nothing, Act::first, "the first items"},
    {"e", "end", Behind::nothing, Act::last, "the last items"},
    {"", "cancel", Behind::nothing, Act::cancel, "ends with nothing, as Ctrl+C and Ctrl+D"},
    {"?", "help", Behind::nothing, std::nullopt, "tells the commands", Own::help},
    {"c", "copy", Behind::item_or_picks, Act::copy_to,
     "copies what was taken, or else that symbol, to a title of your own"},
    {"m", "move", Behind::item, Act::move_to, "moves that symbol or title to another title"},
    {"a", "add", Behind::item, Act::add_symbols,
     "asks for symbols to add to that title, or behind that symbol"},
    {"a", "add", Behind::nothing, Act::add_symbols, "the same where nothing stands yet"},
    {"n", "new", Behind::nothing, Act::new_title, "a new title here; among the sets, a new set"},
    {"r", "rename", Behind::item, Act::rename, "another name for that title or set"},
    {"d", "delete", Behind::item, Act::remove, "removes that symbol, title or set"},
    {"<", "up", Behind::item, Act::raise, "moves that symbol or title before the one before it"},
    {">", "down", Behind::item, Act::lower, "moves it behind the one behind it"},
    {"u", "undo", Behind::nothing, Act::undo, "takes the last edit back"},
    {"y", "redo", Behind::nothing, Act::redo, "makes it again"},
};

constexpr std::string_view what_can_be_typed =
    "not understood; a number enters or takes, /text finds, b goes back, ? tells all commands";

/** "+ NUMBER or take NUMBER: takes that symbol and goes on". */
std::string help_of(const PlainCommand &command) {
    const std::string name = command.name, word = command.word;
    const std::string behind = command.takes == Behind::nothing ? ""
                               : command.takes == Behind::text  ? "TEXT"
                                                                : "NUMBER";
    const auto with = [&](const std::string &typed) {
        return typed + (typed.empty() || behind.empty() ? "" : " ") + behind;
    };
    std::string text = name.empty() ? "" : with(name);
    if (!word.empty()) text += (text.empty() ? "" : " or ") + with(word);
    if (text.empty()) text = behind;
    if (command.act == Act::next_page) text = "an empty line or " + text;
    return text + ": " + command.help;
}

char32_t folded(char32_t character) {
    static const std::map<char32_t, char32_t> by_input_method{
        {U'・', U'/'}, {U'。', U'.'}, {U'ー', U'-'}, {U'−', U'-'}, {U'い', U'i'}, {U'う', U'u'}};
    const auto found = by_input_method.find(character);
    if (found != by_input_method.end()) return found->second;
    const char32_t narrow = to_characters(as_command(to_utf8(character))).front();
    if (narrow == U'\t' || narrow == U'\r') return U' ';
    return narrow >= U'A' && narrow <= U'Z' ? narrow + (U'a' - U'A') : narrow;
}

std::u32string without_blanks_around(std::u32string text) {
    const auto is_blank = [](char32_t character) { return folded(character) == U' '; };
    while (!text.empty() && is_blank(text.back())) text.pop_back();
    text.erase(text.begin(), std::ranges::find_if_not(text, is_blank));
    return text;
}

std::string folded(const std::u32string &text) {
    std::string typed;
    for (const char32_t character : text) typed += to_utf8(folded(character));
    return typed;
}

bool is_digit(char32_t character) {
    return character >= U'0' && character <= U'9';
}

/** A sign is a name by itself; letters go on to the next digit or blank. */
std::size_t length_of_name(const std::u32string &line) {
    std::size_t length = 0;
    for (; length < line.size(); ++length) {
        const char32_t character = folded(line[length]);
        if (character == U' ' || is_digit(character)) break;
        if (character < 0x80 && (character < U'a' || character > U'z'))
            return std::max<std::size_t>(length, 1);
    }
    return length;
}

/** Digits as a number; 0, which no item has, when they are too many. */
std::size_t number_of(std::string_view digits) {
    std::size_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

} // namespace

TypedCommand understand(std::string_view line, bool has_picks) {
    const std::u32string typed = without_blanks_around(to_characters(line));
    const std::size_t length = length_of_name(typed);
    const std::string name = folded(typed.substr(0, length));
    const std::u32string behind = without_blanks_around(typed.substr(length));
    const std::string number = folded(behind);
    const bool is_number = !number.empty() && std::ranges::all_of(number, is_digit);
    std::string usage;
    for (const PlainCommand &command : commands) {
        if (name != command.name && (name.empty() || name != command.word)) continue;
        if (command.takes == Behind::text && !behind.empty()) {
            std::string text;
            for (const char32_t character : behind) text += to_utf8(character);
            return {&command, std::nullopt, text};
        }
        const bool picks_do = command.takes == Behind::item_or_picks;
        const bool may_be_alone = command.takes == Behind::nothing || (picks_do && has_picks);
        const bool may_have_number = command.takes == Behind::item || picks_do;
        if (behind.empty() && may_be_alone) return {&command};
        if (is_number && may_have_number) return {&command, number_of(number)};
        if (!name.empty()) usage = help_of(command);
    }
    return {nullptr, std::nullopt, usage.empty() ? std::string(what_can_be_typed) : usage};
}

std::string folded_line(std::string_view line) {
    return folded(without_blanks_around(to_characters(line)));
}

std::vector<std::string> plain_help() {
    std::vector<std::string> lines;
    for (const PlainCommand &command : commands) lines.push_back(help_of(command));
    lines.emplace_back("Full-width letters and digits do the same.");
    return lines;
}

} // namespace kigou
