// run_program.h - another program, waited for.
#ifndef KIGOU_RUN_PROGRAM_H
#define KIGOU_RUN_PROGRAM_H

#include <optional>
#include <string>
#include <vector>

namespace kigou {

struct ProgramEnd {
    int status = 127;   /**< exit status; 127 when it cannot be run or was killed */
    std::string output; /**< what it wrote to its standard output */
};

/**
 * What it complains of is seen.
 * @param words  name, looked for in PATH when no "/" is in it, and arguments
 * @param input  what it reads; nothing: what kigou itself would
 */
ProgramEnd run_program(const std::vector<std::string> &words,
                       const std::optional<std::string> &input = {});

} // namespace kigou

#endif
