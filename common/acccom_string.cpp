/*
 * acccom_string.cpp - the exported string functions. Lengths are cut to 16 bits, so that a
 * text of 32768 bytes or more counts as having a negative or a smaller length.
 */
#include <algorithm>
#include <cstddef>
#include <cstring>

#include "common/acccom.h"

namespace {

constexpr unsigned short wide = 1;

std::size_t byte_length(const unsigned char *text) {
    return std::strlen(reinterpret_cast<const char *>(text));
}

short short_length(const unsigned char *text) {
    return static_cast<short>(byte_length(text));
}

/** Bytes of a wide string before its end. */
std::size_t wide_length(const unsigned char *text) {
    std::size_t length = 0;
    while (text[length] != 0) length += 2;
    return length;
}

/** The order of the first n bytes, which both have; n may be negative. */
int compare_bytes(const unsigned char *a, const unsigned char *b, int n) {
    if (n <= 0) return 0;
    const int order = std::memcmp(a, b, static_cast<std::size_t>(n));
    return (order > 0) - (order < 0);
}

int compare_lengths(int a, int b) {
    return (a > b) - (a < b);
}

/** Copies n bytes and a NUL. */
void copy_bytes(unsigned char *destination, const unsigned char *source, int n) {
    const auto count = static_cast<std::size_t>(std::max(n, 0));
    std::memcpy(destination, source, count);
    destination[count] = 0;
}

/** Sum of (byte - 0x30) times powers of ten, modulo 2 to the 32. */
unsigned int decimal_value(const unsigned char *text) {
    unsigned int sum = 0;
    unsigned int multiplier = 1;
    for (int at = short_length(text) - 1; at >= 0; --at) {
        sum += (text[at] - 0x30U) * multiplier;
        multiplier *= 10;
    }
    return sum;
}

} // namespace

int CM_CharUpperCnv(unsigned char byte) {
    return byte >= 'a' && byte <= 'z' ? byte - ('a' - 'A') : byte;
}

void CM_strcpy(unsigned char *destination, const unsigned char *source) {
    std::memcpy(destination, source, byte_length(source) + 1);
}

void CM_strcpyW(unsigned char *destination, const unsigned char *source) {
    std::memcpy(destination, source, wide_length(source) + 1);
}

void CM_strcpyF(unsigned char *destination, const unsigned char *source, unsigned short flag) {
    flag == wide ? CM_strcpyW(destination, source) : CM_strcpy(destination, source);
}

void CM_strncpy(unsigned char *destination, const unsigned char *source, short n) {
    copy_bytes(destination, source, n);
}

void CM_strcat(unsigned char *destination, const unsigned char *source) {
    CM_strcpy(destination + byte_length(destination), source);
}

void CM_strncat(unsigned char *destination, const unsigned char *source, short n) {
    copy_bytes(destination + byte_length(destination), source, n);
}

int CM_strlen(const unsigned char *text) {
    return short_length(text);
}

int CM_strlenW(const unsigned char *text) {
    return static_cast<short>(wide_length(text));
}

int CM_strlenF(const unsigned char *text, unsigned short flag) {
    return flag == wide ? CM_strlenW(text) : CM_strlen(text);
}

int CM_lstrlen(const unsigned char *text) {
    return static_cast<int>(byte_length(text));
}

void CM_PathEndChk(unsigned char *path) {
    const std::size_t length = byte_length(path);
    if (length == 0 || path[length - 1] == '/') return;
    path[length] = '/';
    path[length + 1] = 0;
}

void CM_GetFullPathToFileName(const unsigned char *path, unsigned char *file_name) {
    int start = short_length(path);
    while (start > 0 && path[start] != '\\') --start;
    CM_strcpy(file_name, start > 0 ? path + start + 1 : path);
}

int CM_GetUnicodeOs(void) {
    return 0;
}

int CM_strnicmp(const unsigned char *a, const unsigned char *b, short n) {
    for (int at = n - 1; at >= 0; --at) {
        if (CM_CharUpperCnv(a[at]) != CM_CharUpperCnv(b[at])) return -1;
    }
    return 0;
}

int CM_strcmp(const unsigned char *a, const unsigned char *b) {
    const short a_length = short_length(a);
    const short b_length = short_length(b);
    const int order = compare_bytes(a, b, std::min(a_length, b_length));
    return order != 0 ? order : compare_lengths(a_length, b_length);
}

int CM_strcmpW(const unsigned char *a, const unsigned char *b) {
    const int a_length = CM_strlenW(a);
    const int b_length = CM_strlenW(b);
    const int order = compare_bytes(a, b, std::min(a_length, b_length));
    return order != 0 ? order : compare_lengths(a_length, b_length);
}

int CM_strcmpF(const unsigned char *a, const unsigned char *b, unsigned short flag) {
    return flag == wide ? CM_strcmpW(a, b) : CM_strcmp(a, b);
}

int CM_strncmp(const unsigned char *a, const unsigned char *b, short n) {
    return compare_bytes(a, b, std::min({short_length(a), short_length(b), n}));
}

int CM_strncmp2(const unsigned char *a, const unsigned char *b, short n) {
    const short a_length = short_length(a);
    const short b_length = short_length(b);
    const int order = compare_bytes(a, b, std::min({a_length, b_length, n}));
    if (order != 0) return order;
    if (n > b_length) return 1;
    return n > a_length ? -1 : 0;
}

unsigned char *CM_strpbrk(const unsigned char *text, const unsigned char *key) {
    const int index = CM_strpbrk2(text, key);
    return index < 0 ? nullptr : const_cast<unsigned char *>(text + index);
}

int CM_strpbrk2(const unsigned char *text, const unsigned char *key) {
    const int text_length = short_length(text);
    const int key_length = short_length(key);
    if (key_length > text_length) return -1;
    for (int at = 0; at < text_length; ++at) {
        if (compare_bytes(text + at, key, std::min(text_length - at, key_length)) == 0) return at;
    }
    return -1;
}

unsigned char *CM_strpbrke(const unsigned char *text, const unsigned char *key) {
    const int key_length = short_length(key);
    int last = short_length(text) - 1;
    if (key_length > last) return nullptr;
    for (; last > 0; --last) {
        const int start = last - (key_length - 1);
        if (start >= 0 && compare_bytes(text + start, key, key_length) == 0) {
            return const_cast<unsigned char *>(text + start);
        }
    }
    return nullptr;
}

int CM_atol(const unsigned char *text) {
    return static_cast<int>(decimal_value(text));
}

int CM_atos(const unsigned char *text) {
    return static_cast<short>(decimal_value(text));
}
