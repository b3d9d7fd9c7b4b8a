/*
 * bytes.h - bytes in tests: literals, text for failures, and memory that faults when a
 * byte behind it is touched.
 */
#ifndef ACCSYM_TESTS_COMMON_BYTES_H
#define ACCSYM_TESTS_COMMON_BYTES_H

#include <sys/mman.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

using Bytes = std::string;

/** Bytes of a literal, which may hold NULs. */
template <std::size_t N>
Bytes bytes(const char (&literal)[N]) {
    return Bytes(literal, N - 1);
}

inline const unsigned char *u(const char *text) {
    return reinterpret_cast<const unsigned char *>(text);
}
inline const unsigned char *u(const Bytes &text) {
    return u(text.c_str());
}

inline Bytes text_of(const unsigned char *text) {
    return text == nullptr ? Bytes("(null)") : Bytes(reinterpret_cast<const char *>(text));
}

inline std::string hex(std::string_view data) {
    std::string result;
    for (const char byte : data) {
        constexpr char digits[] = "0123456789ABCDEF";
        const auto value = static_cast<unsigned char>(byte);
        result += {digits[value >> 4], digits[value & 15], ' '};
    }
    return result;
}

/** Memory before a page that must not be touched. Blocks share it: one at a time. */
class GuardedMemory {
  public:
    GuardedMemory() {
        void *const area = mmap(nullptr, usable + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (area == MAP_FAILED) throw std::runtime_error("mmap");
        area_ = static_cast<unsigned char *>(area);
        if (mprotect(area_ + usable, page, PROT_NONE) != 0) throw std::runtime_error("mprotect");
    }
    GuardedMemory(const GuardedMemory &) = delete;
    GuardedMemory &operator=(const GuardedMemory &) = delete;
    ~GuardedMemory() { munmap(area_, usable + page); }

    /** A block of exactly this size, filled with 0xEE. */
    unsigned char *block(std::size_t size) {
        unsigned char *const start = area_ + usable - size;
        std::memset(start, 0xEE, size);
        return start;
    }

    /** A block that holds exactly these bytes. */
    unsigned char *copy(std::string_view data) {
        unsigned char *const start = area_ + usable - data.size();
        std::memcpy(start, data.data(), data.size());
        return start;
    }

    /** The same with a NUL. */
    unsigned char *text(const Bytes &data) { return copy(std::string_view(data.c_str(), data.size() + 1)); }

  private:
    static constexpr std::size_t page = 65536;
    static constexpr std::size_t usable = 4 * page;
    unsigned char *area_ = nullptr;
};

#endif
