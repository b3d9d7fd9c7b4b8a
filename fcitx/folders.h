// folders.h - where the module finds symbol files.
#ifndef KIGOU_FCITX_FOLDERS_H
#define KIGOU_FCITX_FOLDERS_H

#include "picker/directories.h"

namespace kigou {

/** Those that kigou has, the same environment variables considered. */
Directories module_directories();

} // namespace kigou

#endif
