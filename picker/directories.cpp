// directories.cpp - see directories.h.
#include "picker/directories.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "picker/failure.h"
#include "picker/sentence.h"

namespace kigou {
namespace {

namespace fs = std::filesystem;

fs::path home() {
    const char *home = std::getenv("HOME");
    if (home && *home) return home;
    const passwd *entry = getpwuid(getuid());
    return entry ? entry->pw_dir : "/";
}

/** An XDG base directory; a relative one is to be ignored. */
fs::path base_directory(const char *variable, const char *below_home) {
    const char *named = std::getenv(variable);
    return named && named[0] == '/' ? fs::path(named) : home() / below_home;
}

} // namespace

Directories default_directories(const std::string &program) {
    const std::string own = base_directory("XDG_DATA_HOME", ".local/share") / "kigou";
    return {program, own, own};
}

std::string state_directory() {
    return base_directory("XDG_STATE_HOME", ".local/state") / "kigou";
}

std::string temporary_directory() {
    const char *named = std::getenv("TMPDIR");
    return named && *named ? named : P_tmpdir;
}

void make_common_directory(const Directories &directories) {
    std::error_code error;
    fs::create_directories(directories.common, error);
    if (!error || fs::is_directory(directories.common)) return;
    throw Failure(
        FailureKind::failed,
        sentence("cannot make the directory {1}: {2}", directories.common, error.message()), {},
        {{Remedy::name_own_folder}});
}

void make_private_directory(const std::string &path) {
    const fs::path directory(path);
    std::error_code error;
    if (directory.has_parent_path()) fs::create_directories(directory.parent_path(), error);
    if (mkdir(path.c_str(), 0700) == 0 || errno == EEXIST) return;
    throw Failure(FailureKind::failed,
                  sentence("cannot make the directory {1}: {2}", path, std::strerror(errno)));
}

} // namespace kigou
