// xcompose.cpp - sequences for the Compose key, as libX11 and libxkbcommon read them.
//
// libX11 takes nine keys a sequence at most, and one that begins another never ends; a sequence of
// the locale that ours began with would be lost. So all begin with j, behind which the locales
// of libX11 have accents alone, and a reading ends in a blank or a digit.
#include <array>
#include <cstdio>
#include <map>

#include "picker/codes.h"
#include "picker/dictionary/dictionary.h"
#include "picker/search/kana.h"

namespace kigou {
namespace {

constexpr std::size_t most_letters = 6; // between <Multi_key> <j> and the end
constexpr unsigned most_of_a_reading = 9;

constexpr std::string_view head =
    "# Compose, j, a reading in letters, blank: the first symbol with that reading; 2 to 9 in\n"
    "# place of the blank: the others. Compose, j, four digits: a row and a cell of JIS X 0208.\n"
    "include \"%L\"\n";

std::string keys_of(std::string_view typed) {
    std::string keys;
    for (const char key : typed) {
        const std::string name = key == '-' ? "minus" : key == ' ' ? "space" : std::string(1, key);
        keys += "<" + name + "> ";
    }
    return keys;
}

/** "0210" for 2-10. */
std::string digits_of(const std::string &kuten) {
    unsigned row = 0, cell = 0;
    std::sscanf(kuten.c_str(), "%u-%u", &row, &cell);
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%02u%02u", row, cell);
    return digits.data();
}

} // namespace

std::string compose_sequences(const std::vector<DictionaryEntry> &entries,
                              LeftOutSymbols &left_out) {
    std::map<std::string, unsigned> taken; // how many symbols letters stand for
    std::string text(head);
    for (const DictionaryEntry &entry : entries) {
        const SymbolCodes codes = codes_of(entry.code);
        bool held = false;
        const auto add = [&](const std::string &typed) {
            text += "<Multi_key> <j> " + keys_of(typed) + ": \"" + entry.symbol + "\" U" +
                    codes.unicode.substr(2);
            if (!entry.comment.empty()) text += " # " + entry.comment;
            text += "\n";
            held = true;
        };
        for (const std::string &reading : entry.readings) {
            for (const std::string &letters : letters_to_type(reading)) {
                if (letters.size() > most_letters || taken[letters] == most_of_a_reading) continue;
                const unsigned number = ++taken[letters];
                add(letters + (number == 1 ? " " : std::to_string(number)));
            }
        }
        if (!codes.kuten.empty()) add(digits_of(codes.kuten));
        if (!held) {
            left_out["neither a short reading nor a row and cell"] += entry.symbol;
        }
    }
    return text;
}

} // namespace kigou
