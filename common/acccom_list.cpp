/*
 * acccom_list.cpp - the exported functions of list items: their headers and the walks over
 * packed and separated lists.
 */
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "common/acccom.h"
#include "common/item_header.h"

namespace {

constexpr unsigned short wide = 1;

/** Byte between the items of a separated list, where a character would start. */
constexpr unsigned char separator = 0xA5;

/** Most bytes of an item that CM_Bsistrpbrk looks at. */
constexpr int searched_item_bytes = 127;

/** Bytes of text in an item of CM_LBMakeHeaderXKP. */
constexpr short fixed_text_bytes = 16;

/** Digits of the number and a NUL. */
constexpr std::size_t number_bytes = 6;

unsigned digit_count(unsigned short number) {
    unsigned digits = 1;
    for (; number >= 10; number = static_cast<unsigned short>(number / 10)) ++digits;
    return digits;
}

/** Writes the header without a NUL. @return its bytes */
unsigned write_header(unsigned short mode, unsigned short number, unsigned char *destination) {
    const unsigned header_bytes = acc::item_header_bytes(mode, number);
    if (header_bytes == 0) return 0;
    std::array<char, number_bytes> digits;
    std::snprintf(digits.data(), digits.size(), "%d", number);
    const unsigned digits_length = digit_count(number);
    std::memset(destination, ' ', header_bytes);
    std::memcpy(destination, digits.data(), digits_length);
    if (mode >= 3) destination[digits_length] = ':';
    return header_bytes;
}

/** Offset behind the item at start: that of its separator, or list_bytes or one more. */
int item_end(const unsigned char *list, int list_bytes, int start) {
    while (start < list_bytes && list[start] != separator) start += 2;
    return start;
}

unsigned char *writable(const unsigned char *text) {
    return const_cast<unsigned char *>(text);
}

} // namespace

namespace acc {

unsigned item_header_bytes(unsigned short mode, unsigned short number) {
    if (mode <= 1) return 0;
    const unsigned digits = digit_count(number);
    return mode == 2 ? digits : std::max<unsigned>(mode - 1U, digits + 1);
}

unsigned item_bytes(unsigned short mode, unsigned text_bytes, unsigned short number) {
    return item_header_bytes(mode, number) + text_bytes + (mode == 0 ? 0 : 1);
}

} // namespace acc

unsigned char *CM_GetString(const unsigned char *list, int n) {
    if (list == nullptr) return nullptr;
    for (; n > 1; --n) {
        list += CM_lstrlen(list) + 1;
        if (*list == 0) ++list;
    }
    return writable(list);
}

unsigned char *CM_GetStringW(const unsigned char *list, int n) {
    if (list == nullptr) return nullptr;
    for (; n > 1; --n) {
        while (*list != 0) list += 2;
        ++list;
        if (*list == 0) ++list;
    }
    return writable(list);
}

unsigned char *CM_GetStringF(const unsigned char *list, int n, unsigned short flag) {
    return flag == wide ? CM_GetStringW(list, n) : CM_GetString(list, n);
}

int CM_LBMakeHeader(unsigned short mode, const unsigned char *text, unsigned short number,
                    unsigned char *destination) {
    const unsigned header_bytes = write_header(mode, number, destination);
    CM_strcpy(destination + header_bytes, text);
    const auto text_bytes = static_cast<unsigned>(CM_lstrlen(text));
    return static_cast<short>(acc::item_bytes(mode, text_bytes, number));
}

int CM_LBMakeHeaderW(unsigned short mode, const unsigned char *text, unsigned short number,
                     unsigned char *destination) {
    unsigned header_bytes = write_header(mode, number, destination);
    if (header_bytes % 2 != 0) destination[header_bytes++] = 0;
    CM_strcpyW(destination + header_bytes, text);
    return static_cast<short>(CM_strlenW(destination) + (mode == 0 ? 0 : 1));
}

int CM_LBMakeHeaderF(unsigned short mode, const unsigned char *text, unsigned short number,
                     unsigned char *destination, unsigned short flag) {
    return flag == wide ? CM_LBMakeHeaderW(mode, text, number, destination)
                        : CM_LBMakeHeader(mode, text, number, destination);
}

int CM_LBMakeHeaderXKP(unsigned short mode, const unsigned char *text, unsigned short number,
                       unsigned char *destination) {
    const unsigned header_bytes = write_header(mode, number, destination);
    CM_strncpy(destination + header_bytes, text, fixed_text_bytes);
    return static_cast<short>(acc::item_bytes(mode, fixed_text_bytes, number));
}

unsigned char *CM_CutHeader(const unsigned char *item, unsigned short mode) {
    return writable(mode <= 1 ? item : item + (mode - 1));
}

unsigned char *CM_CutHeaderW(const unsigned char *item, unsigned short mode) {
    return writable(mode <= 1 ? item : item + (mode - 1) * 4);
}

unsigned char *CM_CutHeaderF(const unsigned char *item, unsigned short mode, unsigned short flag) {
    return flag == wide ? CM_CutHeaderW(item, mode) : CM_CutHeader(item, mode);
}

unsigned char *CM_GetString2(const unsigned char *list, int n, int *length) {
    *length = 0;
    if (list == nullptr) return nullptr;
    const int list_bytes = CM_strlen(list);
    int start = 0;
    for (; n > 1; --n) {
        const int end = item_end(list, list_bytes, start);
        if (end >= list_bytes) return nullptr;
        start = end + 1;
    }
    *length = item_end(list, list_bytes, start) - start;
    return writable(list + start);
}

unsigned char *CM_Bsistrpbrk(const unsigned char *list, const unsigned char *key) {
    const int list_bytes = CM_strlen(list);
    const int key_bytes = CM_strlen(key);
    if (key_bytes > list_bytes) return nullptr;

    std::array<unsigned char, searched_item_bytes + 1> item;
    for (int start = 0; start < list_bytes;) {
        const int end = item_end(list, list_bytes, start);
        const auto bytes = static_cast<short>(std::min(end - start, searched_item_bytes));
        CM_strncpy(item.data(), list + start, bytes);
        if (CM_strncmp2(key, item.data(), static_cast<short>(key_bytes)) == 0) {
            return writable(list + start);
        }
        start = end + 1;
    }
    return nullptr;
}
