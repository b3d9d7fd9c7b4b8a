// brackets.cpp - see brackets.h.
#include "picker/brackets.h"

#include <span>

#include "picker/codes.h"

namespace kigou {

std::optional<std::pair<Sjis, Sjis>> bracket_pair(const Sjis &symbol) {
    // Each that opens has the one that closes behind it: ‘ to 】 and, of vendors, 〝〟.
    constexpr unsigned short first = 0x8165, last = 0x817A, vendor = 0x8780;
    if (symbol.size() != 2) return std::nullopt;
    const unsigned short code = code_of(std::span(symbol).first<2>());
    const bool standard = code >= first && code <= last;
    if (!standard && code != vendor && code != vendor + 1) return std::nullopt;
    const int behind = (code - (standard ? first : vendor)) % 2;
    const auto opening = static_cast<unsigned short>(code - behind);
    return std::pair{pair_of(opening), pair_of(static_cast<unsigned short>(opening + 1))};
}

} // namespace kigou
