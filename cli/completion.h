// completion.h - what a shell asks while somebody types a command line of kigou.
#ifndef KIGOU_COMPLETION_H
#define KIGOU_COMPLETION_H

#include <span>
#include <string>
#include <vector>

namespace kigou {

/** The hidden command that a shell calls. */
inline constexpr const char *completion_verb = "complete";

struct Candidate {
    std::string word; /**< begins with what was typed; after / and ／ it goes on */
    std::string description;
};

/** What the last word may be. */
struct Completion {
    std::vector<Candidate> candidates;
    bool files = false, folders = false; /**< the names on disk, which the shell knows better */
};

/**
 * @param words  those behind the name of the program, without the shell's quotation marks; the
 *               last, which may be empty, is being typed
 * @throws Failure, when there can be no candidates
 */
Completion complete(std::span<const std::string> words);

/**
 * Writes the candidates of the last word to the standard output, "WORD<TAB>DESCRIPTION" each, or
 * "<TAB>file" and "<TAB>directory" for the names on disk. A failure is not told: nobody asked.
 */
void write_completion(std::span<const std::string> words);

} // namespace kigou

#endif
