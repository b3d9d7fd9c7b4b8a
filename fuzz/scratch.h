// Scratch directories for a fuzz target, and looking at files.
#ifndef FUZZ_SCRATCH_H
#define FUZZ_SCRATCH_H

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "fuzz/holds.h"

/** Scratch directories, in memory where that is possible; gone at exit. */
struct Scratch {
    Scratch() {
        namespace fs = std::filesystem;
        std::error_code ignored;
        const bool memory = fs::is_directory("/dev/shm", ignored) && access("/dev/shm", W_OK) == 0;
        std::string name =
            (memory ? fs::path("/dev/shm") : fs::temp_directory_path()) / "accsym-fuzz-XXXXXX";
        HOLDS(mkdtemp(name.data()) != nullptr);
        root = name;
        files = root / "files";
        temp = root / "temp";
        fs::create_directory(files);
        fs::create_directory(temp);
        setenv("TMPDIR", temp.c_str(), 1);
    }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    std::filesystem::path root, files, temp;
};

inline std::string content(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) return {};
    std::string bytes(static_cast<std::size_t>(file.tellg()), 0);
    file.seekg(0).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

/** The bytes of the one file in a directory. */
inline std::string only_file(const std::filesystem::path &directory) {
    const std::vector<std::filesystem::path> files{std::filesystem::directory_iterator(directory),
                                                   std::filesystem::directory_iterator()};
    HOLDS(files.size() == 1);
    return content(files[0]);
}

inline void write(const std::filesystem::path &path, const std::string &bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string text(const unsigned char *bytes) {
    return reinterpret_cast<const char *>(bytes);
}

/** Descriptors that are in use, of those that a target can come to use. */
inline int descriptors_in_use() {
    int count = 0;
    for (int descriptor = 0; descriptor < 64; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1) ++count;
    }
    return count;
}

#endif
