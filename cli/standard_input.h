// standard_input.h - what a person types or a pipe brings.
#ifndef KIGOU_STANDARD_INPUT_H
#define KIGOU_STANDARD_INPUT_H

#include <functional>
#include <string>
#include <string_view>

#include "picker/text.h"

namespace kigou {

/**
 * Hands over all of the standard input in pieces. A terminal is told what is awaited.
 * @throws Failure (failed) when it cannot be read
 */
void read_standard_input(const std::string &awaited,
                         const std::function<void(std::string_view)> &take);

/** All of it. @throws Failure, also for more than a set can have */
Sjis whole_standard_input(const std::string &awaited);

/** All of a file, which may be a pipe. @throws Failure, also for more than a set can have */
Sjis read_input(const std::string &path);

} // namespace kigou

#endif
