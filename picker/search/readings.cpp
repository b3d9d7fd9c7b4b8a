// readings.cpp - see readings.h. The rows are made by scripts/compile_names.
#include "picker/search/readings.h"

#include <algorithm>
#include <array>

#include "picker/codes.h"

namespace kigou {
namespace {

constexpr SymbolNames names[] = {
#include "readings.inc"
};

/** Groups of symbols, a 0 behind each. */
constexpr unsigned short lookalikes[] = {
#include "lookalikes.inc"
};

constexpr std::string_view group_words[] = {
#include "group_words.inc"
};

} // namespace

std::span<const SymbolNames> all_names() {
    return names;
}

const SymbolNames *names_of(std::span<const unsigned char> symbol) {
    if (symbol.size() != 2) return nullptr;
    const unsigned short code = code_of(symbol.first<2>());
    const auto *found = std::ranges::lower_bound(names, code, {}, &SymbolNames::code);
    return found != std::end(names) && found->code == code ? found : nullptr;
}

std::vector<std::string_view> listed(std::string_view text) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const auto end = std::min(text.find(','), text.size());
        parts.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

std::vector<std::string> readings_of(std::span<const unsigned char> symbol) {
    const SymbolNames *const found = names_of(symbol);
    const auto parts = listed(found ? found->readings : std::string_view());
    return {parts.begin(), parts.end()};
}

bool is_group_word(std::string_view reading) {
    return std::ranges::find(group_words, reading) != std::end(group_words);
}

std::vector<Sjis> lookalikes_of(std::span<const unsigned char> symbol) {
    std::vector<Sjis> found;
    if (symbol.size() != 2) return found;
    const unsigned short code = code_of(symbol.first<2>());
    for (auto group = std::begin(lookalikes); group != std::end(lookalikes);) {
        const auto end = std::find(group, std::end(lookalikes), 0);
        const bool holds = std::find(group, end, code) != end;
        for (; group != end; ++group) {
            Sjis other = pair_of(*group);
            if (holds && *group != code && std::ranges::find(found, other) == found.end()) {
                found.push_back(std::move(other));
            }
        }
        ++group;
    }
    return found;
}

} // namespace kigou
