// set_word.cpp - see set_word.h.
#include "cli/set_word.h"

#include "picker/set_files.h"

namespace kigou {

Snapshot set_of_word(const Context &context, const std::string &word) {
    const bool is_file = word.find('/') != std::string::npos || word.ends_with(".kig");
    return Snapshot(is_file ? word : find_sets(context.directories).get(typed_title(word)).path);
}

} // namespace kigou
