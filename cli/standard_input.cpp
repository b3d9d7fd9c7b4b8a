// standard_input.cpp - see standard_input.h.
#include "cli/standard_input.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "cli/output.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"

namespace kigou {
namespace {

void read_all(int descriptor, const std::string &name,
              const std::function<void(std::string_view)> &take) {
    std::array<char, 65536> piece{};
    for (;;) {
        const ssize_t count = read(descriptor, piece.data(), piece.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            throw Failure(FailureKind::failed, "cannot read " + name + ": " + std::strerror(errno));
        }
        if (count == 0) return;
        take({piece.data(), static_cast<std::size_t>(count)});
    }
}

std::function<void(std::string_view)> into(Sjis &bytes, const std::string &name) {
    return [&bytes, name](std::string_view piece) {
        bytes.insert(bytes.end(), piece.begin(), piece.end());
        if (bytes.size() <= most_file_bytes) return;
        throw Failure(FailureKind::refused, name + " is more than a set can hold: at most " +
                                                std::to_string(most_file_bytes) +
                                                " bytes are read");
    };
}

} // namespace

void read_standard_input(const std::string &awaited,
                         const std::function<void(std::string_view)> &take) {
    if (isatty(STDIN_FILENO)) complain(awaited + "; end with Ctrl-D on a line of its own");
    read_all(STDIN_FILENO, "the standard input", take);
}

Sjis whole_standard_input(const std::string &awaited) {
    Sjis bytes;
    read_standard_input(awaited, into(bytes, "the standard input"));
    return bytes;
}

Sjis read_input(const std::string &path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        throw Failure(FailureKind::failed, "cannot read " + path + ": " + std::strerror(errno));
    }
    Sjis bytes;
    try {
        read_all(file, path, into(bytes, path));
    } catch (...) {
        close(file);
        throw;
    }
    close(file);
    return bytes;
}

} // namespace kigou
