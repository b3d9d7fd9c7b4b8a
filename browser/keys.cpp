// keys.cpp - see keys.h. Sequences are those of ECMA-48 as xterm, the Linux console, tmux and
// screen send them.
#include "browser/keys.h"

#include <map>
#include <vector>

#include "picker/text.h"

namespace kigou {
namespace {

constexpr char escape = 0x1B;
constexpr std::string_view paste_begin = "\033[200~", paste_end = "\033[201~";

const std::map<char, KeyName> by_letter{
    {'A', KeyName::up},   {'B', KeyName::down}, {'C', KeyName::right},    {'D', KeyName::left},
    {'H', KeyName::home}, {'F', KeyName::end},  {'Z', KeyName::back_tab}, {'P', KeyName::f1},
    {'Q', KeyName::f2},   {'R', KeyName::f3},   {'S', KeyName::f4},       {'M', KeyName::enter}};

const std::map<unsigned, KeyName> by_number{
    {1, KeyName::home},    {2, KeyName::insert},    {3, KeyName::remove}, {4, KeyName::end},
    {5, KeyName::page_up}, {6, KeyName::page_down}, {7, KeyName::home},   {8, KeyName::end},
    {11, KeyName::f1},     {12, KeyName::f2},       {13, KeyName::f3},    {14, KeyName::f4},
    {15, KeyName::f5},     {17, KeyName::f6},       {18, KeyName::f7},    {19, KeyName::f8},
    {20, KeyName::f9},     {21, KeyName::f10},      {23, KeyName::f11},   {24, KeyName::f12}};

/** Numbers of a sequence, "1;3". */
std::vector<unsigned> numbers_of(std::string_view text) {
    std::vector<unsigned> numbers(1);
    for (const char character : text) {
        if (character == ';') numbers.push_back(0);
        if (character < '0' || character > '9' || numbers.back() > 10000) continue;
        numbers.back() = numbers.back() * 10 + static_cast<unsigned>(character - '0');
    }
    return numbers;
}

template <typename From>
KeyName name_of(const std::map<From, KeyName> &names, From from) {
    const auto found = names.find(from);
    return found == names.end() ? KeyName::other : found->second;
}

/** A report of the mouse: button, column and row. */
Key mouse(const std::vector<unsigned> &numbers, bool pressed) {
    if (numbers.size() != 3 || !pressed || numbers[1] == 0 || numbers[2] == 0) return {};
    constexpr unsigned wheel = 64;
    const KeyName name = numbers[0] == 0           ? KeyName::click
                         : numbers[0] == wheel     ? KeyName::wheel_up
                         : numbers[0] == wheel + 1 ? KeyName::wheel_down
                                                   : KeyName::other;
    return {.name = name, .row = numbers[2] - 1, .column = numbers[1] - 1};
}

} // namespace

/** A sequence that begins behind its escape; nothing when it is not whole. */
std::optional<Key> KeyReader::sequence(std::size_t begin, std::size_t &end) const {
    std::size_t at = begin + 1;
    if (bytes_[begin] == '[' && at < bytes_.size() && bytes_[at] == '[') ++at; // the Linux console
    const std::size_t from = at;
    while (at < bytes_.size() && (bytes_[at] < 0x40 || bytes_[at] > 0x7E)) {
        if (bytes_[at] < 0x20) {
            end = at; // broken off
            return Key{};
        }
        ++at;
    }
    if (at >= bytes_.size()) return std::nullopt;
    const char last = bytes_[at];
    const std::string_view inside = std::string_view(bytes_).substr(from, at - from);
    const std::vector<unsigned> numbers = numbers_of(inside);
    end = at + 1;
    if (inside.starts_with('<')) return mouse(numbers, last == 'M');
    if (from == begin + 2) { // "[[A" is F1
        const bool known = last >= 'A' && last <= 'E';
        return Key{known ? static_cast<KeyName>(static_cast<int>(KeyName::f1) + last - 'A')
                         : KeyName::other};
    }
    if (last == '~' && numbers.front() == 200) {
        const auto behind = bytes_.find(paste_end, end);
        if (behind == std::string::npos) return std::nullopt;
        Key pasted{KeyName::text, bytes_.substr(end, behind - end)};
        end = behind + paste_end.size();
        return pasted;
    }
    Key key{last == '~' ? name_of(by_number, numbers.front()) : name_of(by_letter, last)};
    key.alt = numbers.size() > 1 && numbers[1] > 0 && ((numbers[1] - 1) & 2U) != 0;
    return key;
}

std::optional<Key> KeyReader::key_at(std::size_t begin, std::size_t &end, bool waited) const {
    const char first = bytes_[begin];
    end = begin + 1;
    if (first == escape) {
        if (end == bytes_.size())
            return waited ? std::optional(Key{KeyName::escape}) : std::nullopt;
        const char next = bytes_[end];
        if (next == '[' || next == 'O') {
            if (auto key = sequence(end, end)) return key;
            end = begin + 1;
            return waited ? std::optional(Key{KeyName::escape}) : std::nullopt;
        }
        if (next == escape) return Key{KeyName::escape};
        auto key = key_at(end, end, waited);
        if (key) key->alt = true;
        return key;
    }
    if (first == '\r' || first == '\n') return Key{KeyName::enter};
    if (first == '\t') return Key{KeyName::tab};
    if (first == 0x7F || first == 0x08) return Key{KeyName::backspace};
    if (first >= 0 && first < 0x20) {
        return Key{KeyName::control,
                   std::string(1, static_cast<char>(first == 0 ? ' ' : first + 0x60))};
    }
    const auto byte = static_cast<unsigned char>(first);
    const std::size_t length = byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    if (begin + length > bytes_.size() && !waited) return std::nullopt;
    end = std::min(begin + length, bytes_.size());
    std::string character = bytes_.substr(begin, end - begin);
    if (to_characters(character) == std::u32string(1, replacement_character)) return Key{};
    return Key{KeyName::text, std::move(character)};
}

KeyReader::Rest KeyReader::rest() const {
    if (bytes_.empty()) return Rest::nothing;
    if (bytes_.starts_with(paste_begin)) return Rest::paste;
    return bytes_.size() == 1 && bytes_.front() == escape ? Rest::escape : Rest::sequence;
}

std::optional<Key> KeyReader::next(bool waited) {
    if (bytes_.empty()) return std::nullopt;
    std::size_t end = 0;
    auto key = key_at(0, end, waited);
    if (key) bytes_.erase(0, end);
    return key;
}

std::string as_command(const std::string &text) {
    const std::u32string characters = to_characters(text);
    if (characters.size() != 1) return text;
    const char32_t character = characters.front();
    constexpr char32_t first = 0xFF01, last = 0xFF5E, above_ascii = 0xFEE0;
    if (character == 0x3000) return " ";
    return character >= first && character <= last ? to_utf8(character - above_ascii) : text;
}

} // namespace kigou
