/*
 * sjis_text.h - Shift_JIS text read character by character. A lead byte takes the byte
 * after it, whatever that is, so a trail byte 0x81 before a byte 0x5E is no "／".
 */
#ifndef ACCSYM_COMMON_SJIS_TEXT_H
#define ACCSYM_COMMON_SJIS_TEXT_H

namespace acc {

/** Whether a byte starts a double-byte character: 0x81 to 0x9F and 0xE0 to 0xFC. */
constexpr bool is_lead(unsigned char byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

/**
 * First double-byte character of that code in a NUL-terminated text.
 * @param pair  Shift_JIS code, lead byte in the high half
 * @return      pointer to its lead byte in text; null when there is none
 */
const unsigned char *find_char(const unsigned char *text, unsigned short pair);

/** Last such character. */
const unsigned char *find_last_char(const unsigned char *text, unsigned short pair);

inline unsigned char *find_char(unsigned char *text, unsigned short pair) {
    return const_cast<unsigned char *>(find_char(const_cast<const unsigned char *>(text), pair));
}

inline unsigned char *find_last_char(unsigned char *text, unsigned short pair) {
    return const_cast<unsigned char *>(
        find_last_char(const_cast<const unsigned char *>(text), pair));
}

} // namespace acc

#endif
