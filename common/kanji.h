/*
 * kanji.h - conversions behind the exported ones of Japanese codes.
 */
#ifndef ACCSYM_COMMON_KANJI_H
#define ACCSYM_COMMON_KANJI_H

/**
 * JIS code of a Shift_JIS code; in both the first byte is the LOW half. Nothing is checked.
 * The code is a 16-bit sum, so a lead byte up to 0x70, whose row is below 0, borrows from
 * the cell.
 */
unsigned short sjis2jis(unsigned short sjis);

/**
 * Stores bytes two to an element, the first in the low half, up to a pair whose first byte
 * is NUL. Behind text of odd length there must be a second NUL.
 * @return  elements stored, cut to 16 bits
 */
unsigned short Ascii2Short(unsigned short *destination, const unsigned char *text);

#endif
