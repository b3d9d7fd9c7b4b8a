// directories.h - where symbol files are looked for.
#ifndef KIGOU_DIRECTORIES_H
#define KIGOU_DIRECTORIES_H

#include <string>

namespace kigou {

/** The three directories that the library asks a host for, as path bytes. */
struct Directories {
    std::string program; /**< the sets that come with the program; searched first */
    std::string common;  /**< sets that people make; may be missing */
    std::string user;    /**< asked for, but nothing is read there */
};

/**
 * The directories to use when none are named: data/ of the sources for a program in the
 * build tree, else the installed sets beside the program; and kigou in XDG_DATA_HOME.
 */
Directories default_directories();

/**
 * Makes the common directory, when there is none yet, with copies of the installed sets
 * that a person may change ("sets" in the program directory): the library opens any set
 * but the standard one for update, which an installed file does not allow.
 * @return true when it was made; without such sets, or where it cannot be made, nothing
 *         happens
 */
bool provide_own_sets(const Directories &directories);

} // namespace kigou

#endif
