// symbol_places.cpp - see symbol_places.h.
#include "picker/symbol_places.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "picker/failure.h"
#include "picker/snapshot.h"

namespace kigou {
namespace {

unsigned code_of(unsigned char lead, unsigned char trail) {
    return static_cast<unsigned>(lead) << 8 | trail;
}

/** Numbers of the symbols that were asked for, by their codes. */
using Asked = std::unordered_map<unsigned, std::vector<std::size_t>>;

/** Notes where a title holds them. @param found  whether a symbol was found in this title */
void search_title(const Snapshot &snapshot, std::size_t number, const Asked &asked,
                  std::vector<bool> &found) {
    const auto data = snapshot.data(number);
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        const auto symbol = asked.find(code_of(data[i], data[i + 1]));
        if (symbol == asked.end()) continue;
        for (const std::size_t one : symbol->second) found[one] = true;
    }
}

} // namespace

SymbolPlaces places_of(const std::vector<Sjis> &symbols, const std::vector<SetFile> &sets) {
    SymbolPlaces places;
    places.paths.resize(symbols.size());
    Asked asked;
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        // Two bytes that are a line end are none of the symbols.
        if (symbols[i] != Sjis{'\r', '\n'})
            asked[code_of(symbols[i][0], symbols[i][1])].push_back(i);
    }
    std::set<Sjis> seen;
    for (const SetFile &set : sets) {
        if (!seen.insert(set.title.sjis).second) continue;
        try {
            const Snapshot snapshot(set.path);
            for (std::size_t number = 1; number < snapshot.size(); ++number) {
                std::vector<bool> found(symbols.size());
                search_title(snapshot, number, asked, found);
                if (std::find(found.begin(), found.end(), true) == found.end()) continue;
                const std::string path = snapshot.title(number).text;
                for (std::size_t i = 0; i < found.size(); ++i) {
                    if (found[i]) places.paths[i].push_back(path);
                }
            }
        } catch (const Failure &failure) {
            places.not_searched.push_back({set.path, failure.what()});
        }
    }
    return places;
}

} // namespace kigou
