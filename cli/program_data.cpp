// program_data.cpp - see program_data.h. The build passes KIGOU_BUILD_DIR, KIGOU_BUILD_DATA,
// KIGOU_BUILD_CHART, and KIGOU_DATA_FROM_BIN and KIGOU_PROGRAMS_FROM_BIN.
#include "cli/program_data.h"

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

} // namespace

std::string program_data() {
    const fs::path location = program_location();
    if (location == fs::path(KIGOU_BUILD_DIR)) return KIGOU_BUILD_DATA;
    return (location / KIGOU_DATA_FROM_BIN).lexically_normal();
}

std::string chart_program() {
    const fs::path location = program_location();
    if (location == fs::path(KIGOU_BUILD_DIR)) return KIGOU_BUILD_CHART;
    return (location / KIGOU_PROGRAMS_FROM_BIN / "kigou-chart").lexically_normal();
}

} // namespace kigou
