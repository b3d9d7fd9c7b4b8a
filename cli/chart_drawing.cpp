// chart_drawing.cpp - see chart_drawing.h.
#include "cli/chart_drawing.h"

#include <unistd.h>

#include <algorithm>

#include "cli/json.h"
#include "cli/program_data.h"
#include "cli/run_program.h"
#include "picker/editing.h"
#include "picker/failure.h"

namespace kigou {
namespace {

using Json = nlohmann::ordered_json;

Json json_of(const ChartTitle &title) {
    Json json = {{"level", title.level},
                 {"above", title.above},
                 {"name", title.name},
                 {"rows", Json::array()}};
    for (const ChartRow &row : title.rows) {
        Json cells = Json::array();
        for (const ChartCell &cell : row) {
            cells.push_back(Json::array({cell.symbol, cell.codes[0], cell.codes[1], cell.name}));
        }
        json["rows"].push_back(std::move(cells));
    }
    return json;
}

/** What the program reads; chart/description.h tells of it. */
std::string description_of(const Chart &chart) {
    Json json = {{"heading", chart.file},
                 {"note", counted(chart.titles.size(), "title") + ", " +
                              counted(chart.symbol_count(), "symbol")},
                 {"titles", Json::array()}};
    for (const ChartTitle &title : chart.titles) json["titles"].push_back(json_of(title));
    return json.dump();
}

} // namespace

DrawnChart draw_chart(const Chart &chart, const std::string &format) {
    const std::string program = chart_program();
    if (access(program.c_str(), X_OK) != 0) {
        throw Failure(FailureKind::failed, "the program that draws charts is not installed",
                      {"it is the package kigou-chart: apt-get install kigou-chart"});
    }
    ProgramEnd end = run_program({program, format}, description_of(chart));
    const auto line = std::min(end.output.find('\n'), end.output.size());
    const Json report = Json::parse(end.output.substr(0, line), nullptr, false);
    if (end.status != 0 || !report.is_object()) {
        const bool says_why = report.is_object() && report.contains("error");
        throw Failure(FailureKind::failed,
                      "the chart cannot be drawn: " +
                          (says_why ? report["error"].get<std::string>() : program + " broke off"));
    }
    DrawnChart drawn;
    drawn.no_glyph = report.at("no_glyph").get<std::vector<std::string>>();
    drawn.picture = std::move(end.output.erase(0, line + 1));
    return drawn;
}

} // namespace kigou
