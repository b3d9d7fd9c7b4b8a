// directories.h - where symbol files and the state of the front ends are. All are path bytes.
#ifndef KIGOU_PICKER_DIRECTORIES_H
#define KIGOU_PICKER_DIRECTORIES_H

#include <string>
#include <vector>

namespace kigou {

struct Directories {
    std::string program; /**< the sets that come with the program; searched first */
    std::string common;  /**< sets that people make; may be missing */
    std::string user;    /**< the library asks for it, but nothing is read there */
};

/**
 * The directories to use when a person names none: kigou in XDG_DATA_HOME for their own sets.
 * @param program  where the front end's sets are
 */
Directories default_directories(const std::string &program);

/** kigou in XDG_STATE_HOME: what is no symbol file and is to last. It may be missing. */
std::string state_directory();

/** Where working files lie: TMPDIR, or else the system's directory. */
std::string temporary_directory();

/**
 * Makes the common directory when it is missing.
 * @throws Failure (failed) with the system's reason
 */
void make_common_directory(const Directories &directories);

/** Makes a directory that is nobody else's when it is missing. @throws Failure (failed) */
void make_private_directory(const std::string &path);

} // namespace kigou

#endif
