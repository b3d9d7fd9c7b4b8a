// coverage.cpp - see coverage.h.
#include "picker/compare/coverage.h"

#include <map>

#include "picker/code_range.h"
#include "picker/symbol_data.h"

namespace kigou {

Coverage coverage_of(const std::vector<Snapshot> &sets) {
    std::map<Sjis, std::vector<std::string>> paths;
    for (const Snapshot &set : sets) {
        for (std::size_t title = 0; title < set.size(); ++title) {
            for (const Sjis &symbol : symbols_in(set.data(title))) {
                paths[symbol].push_back(set.title(title).text);
            }
        }
    }
    Coverage coverage;
    for (const Sjis &symbol : codes_in("1-1..8-94")) {
        if (repertoire_of(symbol) != Repertoire::jis_x_0208) continue;
        ++coverage.all;
        const auto found = paths.find(symbol);
        if (found == paths.end()) {
            coverage.missing.push_back(symbol);
        } else if (found->second.size() > 1) {
            coverage.repeated.push_back({symbol, found->second});
        }
    }
    return coverage;
}

} // namespace kigou
