// run_program.cpp - see run_program.h.
#include "cli/run_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace kigou {

namespace {

/** A file in memory to read a text from, so that nobody waits for another; -1 for none. */
int file_with(const std::string &text) {
    const int file = memfd_create("input", MFD_CLOEXEC);
    if (file < 0) return file;
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t count = write(file, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) {
            close(file);
            return -1;
        }
        if (count > 0) done += static_cast<std::size_t>(count);
    }
    lseek(file, 0, SEEK_SET);
    return file;
}

} // namespace

ProgramEnd run_program(const std::vector<std::string> &words,
                       const std::optional<std::string> &input) {
    const int read_from = input ? file_with(*input) : STDIN_FILENO;
    std::array<int, 2> pipe_ends{};
    if (read_from < 0) return {};
    if (pipe2(pipe_ends.data(), O_CLOEXEC) != 0) return {};
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string &word : words) arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, pipe_ends[1], STDOUT_FILENO);
    if (input) posix_spawn_file_actions_adddup2(&files, read_from, STDIN_FILENO);
    pid_t child = 0;
    const bool runs =
        posix_spawnp(&child, arguments[0], &files, nullptr, arguments.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&files);
    close(pipe_ends[1]);
    if (input) close(read_from);
    ProgramEnd end;
    std::array<char, 65536> part{};
    for (ssize_t count = 1; runs && count != 0;) {
        count = read(pipe_ends[0], part.data(), part.size());
        if (count > 0) end.output.append(part.data(), static_cast<std::size_t>(count));
        if (count < 0 && errno != EINTR) break;
    }
    close(pipe_ends[0]);
    int status = 0;
    while (runs && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (runs && WIFEXITED(status)) end.status = WEXITSTATUS(status);
    return end;
}

} // namespace kigou
