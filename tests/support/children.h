// Child processes of a test: they end at once, or as another user, or side by side.
#ifndef TESTS_SUPPORT_CHILDREN_H
#define TESTS_SUPPORT_CHILDREN_H

#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <vector>

/** Runs body(0), body(1), ... side by side in a process each. @return their exit codes; -1 for a crash */
template <typename Body>
std::vector<int> in_children(int count, Body body) {
    std::vector<pid_t> children;
    for (int i = 0; i < count; ++i) {
        children.push_back(fork());
        if (children.back() == 0) _exit(body(i));
    }
    std::vector<int> codes;
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        codes.push_back(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    }
    return codes;
}

/** This process is killed soon; the signal's own handler is gone. */
inline void die_in(int microseconds) {
    const itimerval soon{{0, 0}, {0, microseconds}};
    signal(SIGALRM, SIG_DFL);
    setitimer(ITIMER_REAL, &soon, nullptr);
}

/** From now on no file of this process may have more bytes. @return how it was */
inline rlimit limit_files(rlim_t bytes) {
    signal(SIGXFSZ, SIG_IGN);
    rlimit room{};
    getrlimit(RLIMIT_FSIZE, &room);
    const rlimit less{bytes, room.rlim_max};
    setrlimit(RLIMIT_FSIZE, &less);
    return room;
}

/** Whether a body holds when a user runs it whom permissions bind; root could do everything. */
template <typename Body>
bool holds_for_nobody(Body body) {
    const bool root = getuid() == 0;
    return in_children(1, [&](int) { return (!root || (setgid(65534) == 0 && setuid(65534) == 0)) && body() ? 0 : 1; })[0] == 0;
}

#endif
