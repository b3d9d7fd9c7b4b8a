/*
 * bytes.h - bytes in tests, and memory that faults when a byte behind it is touched.
 */
#ifndef ACCSYM_TESTS_COMMON_BYTES_H
#define ACCSYM_TESTS_COMMON_BYTES_H

#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

using Bytes = std::string;

using namespace std::string_literals;

inline Bytes pair(int first, int second) {
    return {static_cast<char>(first), static_cast<char>(second)};
}

inline const unsigned char *u(std::string_view text) {
    return reinterpret_cast<const unsigned char *>(text.data());
}

inline Bytes text_of(const unsigned char *text) {
    return text == nullptr ? Bytes("(null)") : Bytes(reinterpret_cast<const char *>(text));
}

/** -1 for null. */
inline int index_in(const unsigned char *text, const unsigned char *found) {
    return found == nullptr ? -1 : static_cast<int>(found - text);
}

inline std::string hex(std::string_view data) {
    std::string result;
    for (const char byte : data) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02X ", static_cast<unsigned char>(byte));
        result += digits;
    }
    return result;
}

/** Memory before a page that must not be touched. Blocks share it: one at a time. */
class GuardedMemory {
  public:
    GuardedMemory() : area_(mmap(nullptr, usable + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (area_ == MAP_FAILED || mprotect(end(), page, PROT_NONE) != 0) std::abort();
    }
    ~GuardedMemory() { munmap(area_, usable + page); }

    /** A block that holds exactly these bytes. */
    unsigned char *copy(std::string_view data) { return std::copy(data.begin(), data.end(), end() - data.size()) - data.size(); }

    /** A block of exactly this size, filled with 0xEE. */
    unsigned char *block(std::size_t size) { return copy(Bytes(size, '\xEE')); }

    /** The bytes and a NUL. */
    unsigned char *text(const Bytes &data) { return copy(data + '\0'); }

  private:
    static constexpr std::size_t page = 65536;
    static constexpr std::size_t usable = 4 * page;
    unsigned char *end() { return static_cast<unsigned char *>(area_) + usable; }
    void *area_;
};

#endif
