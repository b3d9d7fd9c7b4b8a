// What an edit is to make of the titles and symbols of a file, said without offsets.
#ifndef FUZZ_EDIT_MODEL_H
#define FUZZ_EDIT_MODEL_H

#include <string>
#include <vector>

#include "fuzz/temp_file.h"

/** A block as a person knows it. */
struct Titled {
    std::string path; // below the file title
    std::string data;
    int level;
    bool operator==(const Titled &) const = default;
};

/** The blocks of a file, in order. */
std::vector<Titled> blocks_of(const TempFile &file);

/**
 * The blocks after an edit.
 *
 * @param shown    full path of the title that it works on
 * @param operand  the new title, or the symbols
 */
std::vector<Titled> after_edit(const TempFile &file, int command, const std::string &shown,
                               const std::string &operand);

/**
 * Whether a line holds an opening bracket but is no block's title line: perhaps a title that
 * misses something, and gone when the text is written anew.
 */
bool has_stray_title(const TempFile &file);

/** Holds blocks against what they should be, and prints the first that is not. */
void hold_same(const std::vector<Titled> &blocks, const std::vector<Titled> &meant);

#endif
