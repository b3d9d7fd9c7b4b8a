// program_data.h - where the sets and the programs that come with this one are.
#ifndef KIGOU_PROGRAM_DATA_H
#define KIGOU_PROGRAM_DATA_H

#include <string>

namespace kigou {

// Path bytes: in the build tree those of it, else the installed ones.

/** The folder of the sets. */
std::string program_data();

/** The program that draws charts, which need not be there. */
std::string chart_program();

} // namespace kigou

#endif
