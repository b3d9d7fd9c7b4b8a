// browse_start.h - where a person comes in, in columns or in the plain mode.
#ifndef KIGOU_BROWSER_BROWSE_START_H
#define KIGOU_BROWSER_BROWSE_START_H

#include <string>
#include <vector>

#include "picker/recovery.h"

namespace kigou {

struct BrowseStart {
    std::string path{}; /**< full path of a title to begin at; empty: the standard set */
    std::vector<Leftover> leftovers{}; /**< of killed processes, which the person is asked for */
};

} // namespace kigou

#endif
