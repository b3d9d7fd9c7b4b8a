// clipboard.cpp - see clipboard.h.
#include "browser/clipboard.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace kigou {
namespace {

constexpr std::size_t piece_bytes = 200; // screen loses what comes in long ones
constexpr const char *escape = "\033", *bell = "\a", *string_end = "\033\\";

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    unsigned held = 0, bits = 0;
    for (const char byte : bytes) {
        held = (held << 8 | static_cast<unsigned char>(byte)) & 0xFFFF;
        for (bits += 8; bits >= 6; bits -= 6) text += digits[held >> (bits - 6) & 63];
    }
    if (bits > 0) text += digits[held << (6 - bits) & 63];
    text.append((4 - text.size() % 4) % 4, '=');
    return text;
}

std::string variable(const char *name) {
    const char *const value = std::getenv(name);
    return value ? value : "";
}

/** By the variables, and where a remote login has lost them by the name of the terminal. */
Between what_is_between(const std::string &term) {
    if (!variable("TMUX").empty()) return Between::tmux;
    if (!variable("STY").empty()) return Between::screen;
    if (term.starts_with("tmux")) return Between::tmux;
    return term.starts_with("screen") ? Between::screen : Between::nothing;
}

/** Asks the tmux around: as it comes it passes no clipboard of programs on. @return done? */
bool set_buffer_of_tmux(const std::string &utf8) {
    if (variable("TMUX").empty()) return false;
    std::string text = utf8;
    std::string words[] = {"tmux", "set-buffer", "-w", "--"};
    char *const arguments[] = {words[0].data(), words[1].data(), words[2].data(),
                               words[3].data(), text.data(),     nullptr};
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const bool runs = posix_spawnp(&child, arguments[0], &files, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&files);
    if (!runs) return false;
    int status = -1;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

std::string clipboard_bytes(std::string_view utf8, Between between) {
    // The bell ends it, because the other end would also be that of what is put around it.
    std::string plain = std::string(escape) + "]52;c;" + base64(utf8) + bell;
    std::string bytes;
    switch (between) {
        case Between::nothing:
            return plain;
        case Between::tmux:
            return std::string(escape) + "Ptmux;" + escape + plain + string_end;
        case Between::screen:
            for (std::size_t at = 0; at < plain.size(); at += piece_bytes) {
                bytes += std::string(escape) + "P" + plain.substr(at, piece_bytes) + string_end;
            }
    }
    return bytes;
}

bool copy_to_clipboard(int terminal, const std::string &utf8) {
    if (set_buffer_of_tmux(utf8)) return true;
    const std::string term = variable("TERM");
    if (term.empty() || term == "dumb" || term == "linux") return false;
    return dprintf(terminal, "%s", clipboard_bytes(utf8, what_is_between(term)).c_str()) >= 0;
}

} // namespace kigou
