// folders.h - where the module finds symbol files.
#ifndef KIGOU_FCITX_FOLDERS_H
#define KIGOU_FCITX_FOLDERS_H

#include <string>

#include "picker/directories.h"

namespace kigou {

/** A folder of share/, wherever this add-on was installed; empty when the system does not tell. */
std::string installed(const char *below_share);

/** Those that kigou has, the same environment variables considered. */
Directories module_directories();

} // namespace kigou

#endif
