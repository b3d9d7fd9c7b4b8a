/*
 * unicode_tables.h - Unicode units and Shift_JIS codes by each other, looked up in two steps.
 */
#ifndef ACCSYM_COMMON_UNICODE_TABLES_H
#define ACCSYM_COMMON_UNICODE_TABLES_H

#include <array>
#include <cstddef>

namespace acc {

/**
 * A 16-bit value for each 16-bit code, in pages of 256 codes. What is kept is the value less the
 * code, so that all pages of codes that stand for themselves are one.
 */
template <std::size_t pages>
class PagedCodes {
  public:
    /** @param value  of each code, in an object with operator() */
    template <class Value>
    constexpr explicit PagedCodes(const Value &value) {
        std::size_t used = 1; // page 0 is that of themselves
        for (unsigned high = 0; high < 256; ++high) {
            bool themselves = true;
            for (unsigned low = 0; low < 256; ++low) {
                const unsigned code = high << 8 | low;
                differences_[used][low] = static_cast<unsigned short>(value(code) - code);
                themselves = themselves && differences_[used][low] == 0;
            }
            if (!themselves) page_[high] = static_cast<unsigned char>(used++);
        }
        for (unsigned short &difference : differences_[used]) difference = 0;
        used_ = used;
    }

    constexpr unsigned short operator[](unsigned short code) const {
        return static_cast<unsigned short>(code + differences_[page_[code >> 8]][code & 0xFF]);
    }

    /** Pages in use; the last one stays empty. */
    constexpr std::size_t used() const { return used_; }

  private:
    std::array<unsigned char, 256> page_{};
    std::array<std::array<unsigned short, 256>, pages + 1> differences_{};
    std::size_t used_ = 0;
};

} // namespace acc

#endif
