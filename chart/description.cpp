// description.cpp - see description.h.
#include "chart/description.h"

#include <nlohmann/json.hpp>

namespace chart {
namespace {

using Json = nlohmann::json;

Cell cell_of(const Json &json) {
    return {json.at(0).get<std::string>(),
            {json.at(1).get<std::string>(), json.at(2).get<std::string>()},
            json.at(3).get<std::string>()};
}

Title title_of(const Json &json) {
    Title title{json.at("level").get<int>(),
                json.at("above").get<std::string>(),
                json.at("name").get<std::string>(),
                {}};
    for (const Json &row : json.at("rows")) {
        title.rows.emplace_back();
        for (const Json &cell : row) title.rows.back().push_back(cell_of(cell));
    }
    return title;
}

} // namespace

Description read_description(std::string_view text) {
    const Json json = Json::parse(text);
    Description description{
        json.at("heading").get<std::string>(), json.at("note").get<std::string>(), {}};
    for (const Json &title : json.at("titles")) description.titles.push_back(title_of(title));
    return description;
}

} // namespace chart
