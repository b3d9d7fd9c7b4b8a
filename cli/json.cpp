// json.cpp - see json.h.
#include "cli/json.h"

#include <iostream>

template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace kigou {

void write(const nlohmann::ordered_json &json) {
    std::cout << text_of(json);
}

std::string text_of(const nlohmann::ordered_json &json) {
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

nlohmann::ordered_json json_of(const SymbolCodes &codes) {
    const auto text_or_null = [](const std::string &text) -> nlohmann::ordered_json {
        if (text.empty()) return nullptr;
        return text;
    };
    return {{"symbol", codes.symbol},
            {"sjis", codes.sjis},
            {"jis", text_or_null(codes.jis)},
            {"kuten", text_or_null(codes.kuten)},
            {"unicode", text_or_null(codes.unicode)},
            {"vendor", codes.repertoire == Repertoire::vendor}};
}

} // namespace kigou
