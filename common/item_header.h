/*
 * item_header.h - the widths of list items as CM_LBMakeHeader makes them.
 */
#ifndef ACCSYM_COMMON_ITEM_HEADER_H
#define ACCSYM_COMMON_ITEM_HEADER_H

namespace acc {

/**
 * Bytes of the header of an item: 0 for modes 0 and 1, the digits for 2, else mode - 1 or,
 * when the number is too long for that, its digits and the ':'.
 */
unsigned item_header_bytes(unsigned short mode, unsigned short number);

/** Result of CM_LBMakeHeader before it is cut to 16 bits, for a text of text_bytes bytes. */
unsigned item_bytes(unsigned short mode, unsigned text_bytes, unsigned short number);

} // namespace acc

#endif
