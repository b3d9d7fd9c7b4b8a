// failure_words.h - what kigou says and returns when something failed.
#ifndef KIGOU_FAILURE_WORDS_H
#define KIGOU_FAILURE_WORDS_H

#include <string>
#include <vector>

#include "cli/status.h"
#include "picker/failure.h"

namespace kigou {

Status status_of(FailureKind kind);

/** What to do, as lines for a person at a command line: the facts, and then the advice. */
std::vector<std::string> hints_of(const Failure &failure);

/** A failure as the JSON object that a command writes in place of its own. */
std::string json_of(const Failure &failure);

} // namespace kigou

#endif
