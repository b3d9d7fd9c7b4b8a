// The title that a command works on: the one that the current list shows.
#ifndef ACCSYM_SYM_CURRENT_TITLE_H
#define ACCSYM_SYM_CURRENT_TITLE_H

#include <cstring>

#include "record/cursor.h"
#include "sym/block_index.h"
#include "sym/engine.h"

namespace acc {

/** Record of the title that a list shows, or -1; a path without an end is none. */
inline int title_shown(const ListBox &list) {
    const auto *path = reinterpret_cast<const char *>(list.lpchLBLevel);
    if (strnlen(path, max_path + 1) > max_path) return -1;
    return SymGetIndex2(open_records(), list.lpchLBLevel);
}

/** Shows a title's path as the one of that list. */
inline void show_path(ListBox &list, const unsigned char *path) {
    std::memmove(list.lpchLBLevel, path, std::strlen(reinterpret_cast<const char *>(path)) + 1);
}

} // namespace acc

#endif
