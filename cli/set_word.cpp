// set_word.cpp - see set_word.h.
#include "cli/set_word.h"

#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/set_files.h"

namespace kigou {

Snapshot set_of_word(const Context &context, const std::string &word) {
    const bool is_file = word.find('/') != std::string::npos || word.ends_with(".kig");
    if (is_file) return Snapshot(word);
    const SetFiles sets = find_sets(context.directories);
    if (const SetFile *set = sets.find(typed_title(word).sjis)) return Snapshot(set->path);
    if (identity_of(word)) {
        throw Failure(FailureKind::nothing_found, "there is no symbol file titled " + word,
                      {"./" + word + " names the file"});
    }
    return Snapshot(sets.get(typed_title(word)).path); // which says what may have been meant
}

} // namespace kigou
