// What a fuzz target asserts, in every build type.
#ifndef FUZZ_HOLDS_H
#define FUZZ_HOLDS_H

#include <cstdio>
#include <cstdlib>

/** Ends the program with a line when a condition does not hold. */
#define HOLDS(condition)                                                                        \
    do {                                                                                        \
        if (!(condition)) {                                                                     \
            std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                       \
        }                                                                                       \
    } while (false)

#endif
