// run_program.h - another program, waited for.
#ifndef KIGOU_RUN_PROGRAM_H
#define KIGOU_RUN_PROGRAM_H

#include <string>
#include <vector>

namespace kigou {

struct ProgramEnd {
    int status = 127;   /**< exit status; 127 when it cannot be run or was killed */
    std::string output; /**< what it wrote to its standard output, without the last line end */
};

/** @param words  name, looked for in PATH, and arguments. What it complains of is seen. */
ProgramEnd run_program(const std::vector<std::string> &words);

} // namespace kigou

#endif
