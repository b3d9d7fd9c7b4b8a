// Texts in tests are written in UTF-8; the platform's codec makes the library's bytes.
#ifndef TESTS_SUPPORT_TEXT_H
#define TESTS_SUPPORT_TEXT_H

#include <string>

std::string to_sjis(const std::string &utf8);
std::string to_euc(const std::string &utf8);
std::string to_utf8(const std::string &sjis);

inline const unsigned char *bytes(const std::string &text) {
    return reinterpret_cast<const unsigned char *>(text.data());
}

inline std::string text(const unsigned char *bytes) {
    return reinterpret_cast<const char *>(bytes);
}

/** 40 hyphens. */
inline const std::string hyphens(40, '-');

#endif
