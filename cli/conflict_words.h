// conflict_words.h - what a merge could not make both, in words and in JSON.
#ifndef KIGOU_CONFLICT_WORDS_H
#define KIGOU_CONFLICT_WORDS_H

#include <string>
#include <vector>

#include "cli/json.h"
#include "picker/compare/set_merge.h"

namespace kigou {

/** A line each on the error output. @param file  to be named before them */
void complain_of(const std::vector<Conflict> &conflicts, const std::string &file);

nlohmann::ordered_json json_of(const std::vector<Conflict> &conflicts);

} // namespace kigou

#endif
