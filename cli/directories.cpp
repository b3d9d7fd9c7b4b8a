// directories.cpp - see directories.h. The build passes KIGOU_BUILD_DIR, KIGOU_BUILD_DATA
// and KIGOU_DATA_FROM_BIN.
#include "cli/directories.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#ifdef __FreeBSD__
#include <sys/sysctl.h>
#include <sys/types.h>

#include <array>
#include <climits>
#endif

namespace kigou {
namespace {

namespace fs = std::filesystem;

/** Directory of the running program; empty when the system does not tell. */
fs::path program_location() {
#ifdef __FreeBSD__
    std::array<int, 4> name{CTL_KERN, KERN_PROC, KERN_PROC_PATHNAME, -1};
    std::array<char, PATH_MAX> path{};
    std::size_t size = path.size();
    if (sysctl(name.data(), 4, path.data(), &size, nullptr, 0) != 0) return {};
    return fs::path(path.data()).parent_path();
#else
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
#endif
}

fs::path data_home() {
    const char *xdg = std::getenv("XDG_DATA_HOME");
    if (xdg && xdg[0] == '/') return xdg; // a relative one is to be ignored
    const char *home = std::getenv("HOME");
    if (!home || !*home) {
        const passwd *entry = getpwuid(getuid());
        home = entry ? entry->pw_dir : "/";
    }
    return fs::path(home) / ".local/share";
}

} // namespace

Directories default_directories() {
    const fs::path location = program_location();
    const fs::path program = location == fs::path(KIGOU_BUILD_DIR)
                                 ? fs::path(KIGOU_BUILD_DATA)
                                 : (location / KIGOU_DATA_FROM_BIN).lexically_normal();
    const std::string own = data_home() / "kigou";
    return {program, own, own};
}

bool provide_own_sets(const Directories &directories) {
    const fs::path sets = fs::path(directories.program) / "sets";
    std::error_code error;
    if (!fs::is_directory(sets, error) || fs::exists(directories.common, error)) return false;
    fs::create_directories(directories.common, error);
    for (const fs::directory_entry &set : fs::directory_iterator(sets, error)) {
        const fs::path own = fs::path(directories.common) / set.path().filename();
        if (error || !fs::copy_file(set.path(), own, error)) return false;
        fs::permissions(own, fs::perms::owner_write, fs::perm_options::add, error);
    }
    return !error;
}

} // namespace kigou
