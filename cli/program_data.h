// program_data.h - where the sets that come with this program are.
#ifndef KIGOU_PROGRAM_DATA_H
#define KIGOU_PROGRAM_DATA_H

#include <string>

namespace kigou {

/** The folder, as path bytes: in the build tree beside the program, else the installed one. */
std::string program_data();

} // namespace kigou

#endif
