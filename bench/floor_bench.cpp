// What the library does with files, measured against the least that has to be done: the bare calls
// of the system.
//
//   floor_bench [--quick]
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstring>

#include "bench/host.h"
#include "bench/ratios.h"

namespace {

constexpr int files = 10000;
constexpr std::size_t head_bytes = 1023;

/** Opens each file, reads its head and closes it. */
void read_heads(const std::string &path) {
    unsigned char bytes[head_bytes];
    DIR *const directory = opendir(path.c_str());
    while (const dirent *entry = readdir(directory)) {
        if (!std::strstr(entry->d_name, ".kig")) continue;
        const int file = openat(dirfd(directory), entry->d_name, O_RDONLY | O_CLOEXEC);
        if (read(file, bytes, sizeof bytes) < 0) std::abort();
        close(file);
    }
    closedir(directory);
}

void catalogue(Ratios &ratios) {
    const Directory directory;
    const std::string blocks = block("a") + block("b");
    for (int i = 0; i < files; ++i) {
        directory.put(std::to_string(i) + ".kig", head + std::to_string(i) + "\n" + blocks);
    }
    Host host;
    host.run(ACC_VKEY_FILE_OPEN, "0", directory.path());
    // All directories are that one, and the library looks into two.
    ratios.measure(
        "catalogue of 2 x 10,000 files", [&] { host.run(ACC_VKEY_FILE_TITLES); },
        [&] {
            read_heads(directory.path());
            read_heads(directory.path());
        },
        1 / 1.2);
    host.run(ACC_VKEY_FILE_CLOSE);
}

/** Reads a file and writes so many bytes into a new one. */
void read_and_write(const std::string &from, const std::string &to, std::vector<char> &bytes,
                    std::size_t written) {
    const int in = open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (read(in, bytes.data(), bytes.size()) < 0) std::abort();
    close(in);
    const int out = open(to.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (write(out, bytes.data(), written) != static_cast<ssize_t>(written)) std::abort();
    close(out);
    unlink(to.c_str());
}

void opening(Ratios &ratios) {
    for (const int titles : {660, 10500}) {
        const Directory directory;
        const std::string file = file_of(titles);
        directory.put("f.kig", file);
        Host host;
        // The working file: a header, a record for each title and the file, the text with its CRs.
        const auto lines = static_cast<std::size_t>(std::ranges::count(file, '\n'));
        const std::size_t working =
            8 + 792 * (static_cast<std::size_t>(titles) + 1) + file.size() + lines;
        std::vector<char> bytes(working);
        ratios.measure(
            "open and close " + std::to_string(file.size() / 1024) + " KB",
            [&] {
                host.run(ACC_VKEY_FILE_OPEN, "F", directory.path());
                host.run(ACC_VKEY_FILE_CLOSE);
            },
            [&] {
                read_and_write(directory.path() + "/f.kig", directory.path() + "/working", bytes,
                               working);
            },
            titles < 1000 ? 0.8 : 0.7);
    }
}

} // namespace

int main(int argc, char **argv) {
    Ratios ratios(CLOCK_MONOTONIC, argc > 1 && std::strcmp(argv[1], "--quick") == 0);
    catalogue(ratios);
    opening(ratios);
    return 0;
}
