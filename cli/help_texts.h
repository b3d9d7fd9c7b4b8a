// help_texts.h - what the help and the manual say of kigou as a whole.
#ifndef KIGOU_HELP_TEXTS_H
#define KIGOU_HELP_TEXTS_H

#include <span>
#include <string>

#include "cli/arguments.h"

namespace kigou {

extern const char *const program_summary;

/** A command, and what comes of it. */
struct Example {
    const char *command, *meaning;
};

std::span<const Example> program_examples();

/** "0 found or done, 1 ..." */
extern const char *const exit_statuses;

/** The examples and the exit statuses, for the end of the help. */
std::string program_footer();

/** What is too long for the help of a command: a section of the manual. */
struct Topic {
    const char *heading;
    const char *text; /**< paragraphs with an empty line between them */
    Value value;      /**< the commands that take such a value have it too; none: kigou alone */
};

std::span<const Topic> topics();

/** A variable of the environment or a file. */
struct Named {
    const char *name, *text;
};

/** Variables that no option stands for. */
std::span<const Named> variables();
std::span<const Named> files();

} // namespace kigou

#endif
