// set_word.h - a set as it is typed: by its title, or by the name of its file.
#ifndef KIGOU_SET_WORD_H
#define KIGOU_SET_WORD_H

#include <string>

#include "cli/command.h"
#include "picker/snapshot.h"

namespace kigou {

/** A word with "/" in it, or that ends in ".kig", is the name of a file. @throws Failure */
Snapshot set_of_word(const Context &context, const std::string &word);

} // namespace kigou

#endif
