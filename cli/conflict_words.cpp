// conflict_words.cpp - see conflict_words.h.
#include "cli/conflict_words.h"

#include "cli/output.h"

namespace kigou {

void complain_of(const std::vector<Conflict> &conflicts, const std::string &file) {
    for (const Conflict &conflict : conflicts) {
        complain(printable(file + ": " + sentence_of(conflict)));
    }
}

nlohmann::ordered_json json_of(const std::vector<Conflict> &conflicts) {
    nlohmann::ordered_json all = nlohmann::json::array();
    for (const Conflict &conflict : conflicts) {
        all.push_back(
            {{"path", conflict.path}, {"other", conflict.other}, {"text", sentence_of(conflict)}});
    }
    return all;
}

} // namespace kigou
