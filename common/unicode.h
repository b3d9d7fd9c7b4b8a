/*
 * unicode.h - single characters between Shift_JIS and Unicode.
 */
#ifndef ACCSYM_COMMON_UNICODE_H
#define ACCSYM_COMMON_UNICODE_H

/**
 * Unicode value of a Shift_JIS code, lead byte in the high half.
 * @return  the code itself below 0x8000 and from 0xA000 to 0xDFFF; U+3013 for any other
 *          code that is no JIS X 0208 character
 */
unsigned short SjisToUniCode(unsigned short sjis);

/**
 * Shift_JIS code of a Unicode value, lead byte in the LOW half.
 * @return  the value itself below U+0100 and for one that is not in JIS X 0208
 */
unsigned short UniCodeToSjis(unsigned short unicode);

#endif
