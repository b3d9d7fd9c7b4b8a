// set_files.h - which symbol files there are. They go by the title in them, never by their
// names, and are found as the library finds them: every file whose name contains ".kig", in
// the program directory and then in the common one, in the order of the directory. Titles,
// paths and order are the library's; its list ends where its buffer does, this one does not, and
// a folder that is both directories is looked at once.
#ifndef KIGOU_PICKER_SET_FILES_H
#define KIGOU_PICKER_SET_FILES_H

#include <span>
#include <string>
#include <vector>

#include "picker/directories.h"
#include "picker/title.h"

namespace kigou {

struct SetFile {
    Title title;
    std::string path; /**< path bytes */
};

/** A file that is named like a symbol file and is none that can be used. */
struct SpoiltFile {
    std::string path;
    std::string reason;
};

struct SetFiles {
    std::vector<SetFile> sets;
    std::vector<SpoiltFile> spoilt;

    /** The first file of that title, which hides the others; null when there is none. */
    const SetFile *find(std::span<const unsigned char> title) const;

    /** Like find. @throws Failure (nothing_found), with titles that come near */
    const SetFile &get(const Title &title) const;
};

/** @throws Failure (failed) when the program directory cannot be read */
SetFiles find_sets(const Directories &directories);

} // namespace kigou

#endif
