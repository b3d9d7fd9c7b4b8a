// folders.cpp - see folders.h. The build passes KIGOU_DATA_FROM_ADDON.
#include "fcitx/folders.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

namespace kigou {
namespace {

namespace fs = std::filesystem;

/** The sets that were installed with this library, wherever that was. */
std::string installed_data() {
    static const char here = 0;
    Dl_info library{};
    if (dladdr(&here, &library) == 0 || !library.dli_fname) return {};
    return (fs::path(library.dli_fname).parent_path() / KIGOU_DATA_FROM_ADDON).lexically_normal();
}

void replace(std::string &folder, const char *variable) {
    const char *const value = std::getenv(variable);
    if (value && *value) folder = value;
}

} // namespace

Directories module_directories() {
    Directories directories = default_directories(installed_data());
    replace(directories.program, "KIGOU_PROGRAM_DIR");
    replace(directories.common, "KIGOU_COMMON_DIR");
    replace(directories.user, "KIGOU_USER_DIR");
    return directories;
}

} // namespace kigou
