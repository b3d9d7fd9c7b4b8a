/*
 * bytes.h - bytes in tests, and memory that faults when a byte behind it is touched.
 */
#ifndef ACCSYM_TESTS_COMMON_BYTES_H
#define ACCSYM_TESTS_COMMON_BYTES_H

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <functional>

#include "support/text.h"

using Bytes = std::string;

using namespace std::string_literals;

inline Bytes pair(int first, int second) {
    return {static_cast<char>(first), static_cast<char>(second)};
}

/** -1 for null. */
inline int index_in(const unsigned char *text, const unsigned char *found) {
    return found == nullptr ? -1 : static_cast<int>(found - text);
}

/** Memory before a page that must not be touched. Blocks share it: one at a time. */
class GuardedMemory {
  public:
    GuardedMemory() : area_(mmap(nullptr, usable + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (area_ == MAP_FAILED || mprotect(end(), page, PROT_NONE) != 0) std::abort();
    }
    ~GuardedMemory() { munmap(area_, usable + page); }

    /** A block that holds exactly these bytes. */
    unsigned char *copy(const Bytes &data) { return std::copy(data.begin(), data.end(), end() - data.size()) - data.size(); }

  private:
    static constexpr std::size_t page = 65536;
    static constexpr std::size_t usable = 4 * page;
    unsigned char *end() { return static_cast<unsigned char *>(area_) + usable; }
    void *area_;
};

/** What a function makes of a text: all bytes that it writes, its NUL too, and its result. */
struct Example {
    const char *name;
    std::function<int(unsigned char *out, const unsigned char *in)> call;
    Bytes in, out;
    int result;
};

/** Holds the functions to their examples, in memory that ends behind both texts. */
inline void expect(const std::vector<Example> &examples) {
    for (const auto &[name, call, in, out, result] : examples) {
        GuardedMemory source, destination;
        unsigned char *const written = destination.copy(Bytes(out.size(), '\xEE'));
        EXPECT_EQ(call(written, source.copy(in + '\0')), result) << name;
        EXPECT_EQ(Bytes(written, written + out.size()), out) << name;
    }
}

#endif
