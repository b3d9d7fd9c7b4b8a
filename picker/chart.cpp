// chart.cpp - see chart.h.
#include "picker/chart.h"

#include <utility>

#include "picker/codes.h"
#include "picker/search/readings.h"
#include "picker/set_formats.h"
#include "picker/symbol_data.h"

namespace kigou {
namespace {

ChartCell cell_of(const Sjis &symbol, bool with_name) {
    SymbolCodes codes = codes_of(symbol);
    if (codes.repertoire == Repertoire::none) {
        return {{}, {std::move(codes.kuten), written_symbols(symbol)}, {}};
    }
    const SymbolNames *const names = with_name ? names_of(symbol) : nullptr;
    return {std::move(codes.symbol),
            {std::move(codes.kuten), std::move(codes.unicode)},
            names ? std::string(names->name) : std::string()};
}

ChartTitle title_of(const Snapshot &snapshot, std::size_t number, bool names) {
    // The title of the file may hold a separator itself.
    const auto behind_file = snapshot.path_of(0).size() + 2;
    std::string path = printable(to_utf8(snapshot.path_of(number).subspan(behind_file)));
    ChartTitle title{snapshot.level(number), {}, last_title(path), {}};
    path.resize(path.size() - title.name.size());
    title.above = std::move(path);
    for (const Sjis &line : lines_of_data(snapshot.data(number))) {
        ChartRow row;
        for (const Sjis &symbol : symbols_in(line)) row.push_back(cell_of(symbol, names));
        if (!row.empty()) title.rows.push_back(std::move(row));
    }
    return title;
}

} // namespace

std::size_t Chart::symbol_count() const {
    std::size_t count = 0;
    for (const ChartTitle &title : titles) {
        for (const ChartRow &row : title.rows) count += row.size();
    }
    return count;
}

Chart chart_of(const Snapshot &snapshot, std::size_t number, bool names) {
    Chart chart{printable(snapshot.file().text), {}};
    if (number != 0) chart.titles.push_back(title_of(snapshot, number, names));
    for (const std::size_t below : snapshot.below(number)) {
        chart.titles.push_back(title_of(snapshot, below, names));
    }
    return chart;
}

} // namespace kigou
