// folders.cpp - see folders.h. The build passes KIGOU_SHARE_FROM_ADDON.
#include "fcitx/folders.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

namespace kigou {
namespace {

namespace fs = std::filesystem;

void replace(std::string &folder, const char *variable) {
    const char *const value = std::getenv(variable);
    if (value && *value) folder = value;
}

} // namespace

std::string installed(const char *below_share) {
    static const char here = 0;
    Dl_info library{};
    if (dladdr(&here, &library) == 0 || !library.dli_fname) return {};
    const fs::path folder = fs::path(library.dli_fname).parent_path();
    return (folder / KIGOU_SHARE_FROM_ADDON / below_share).lexically_normal();
}

Directories module_directories() {
    Directories directories = default_directories(installed("kigou"));
    replace(directories.program, "KIGOU_PROGRAM_DIR");
    replace(directories.common, "KIGOU_COMMON_DIR");
    replace(directories.user, "KIGOU_USER_DIR");
    return directories;
}

} // namespace kigou
