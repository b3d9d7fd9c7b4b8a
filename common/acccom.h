/*
 * acccom.h - the common library: byte strings, heap blocks, file streams, Japanese
 * codes and the items of lists.
 *
 * Conventions
 *  1. A narrow string is bytes ended by a NUL, Shift_JIS in practice, at most 32767
 *     bytes long: lengths are 16-bit signed. Unless said otherwise nothing here knows
 *     lead and trail bytes, so a search can hit the second byte of a character.
 *  2. A wide string is a sequence of 2-byte units, high byte first, ended by a single
 *     0 byte where a unit would start. Its lengths count bytes, 2 for each unit.
 *  3. A function with a flag (..F) works on wide strings for flag 1, else on narrow.
 *  4. Pointers must not be null and destinations must be large enough, unless a
 *     function says what happens.
 *  5. A 16-bit signed result comes sign-extended in an int.
 *  6. No function keeps state; two threads may use different handles at one time.
 */
#ifndef ACCSYM_ACCCOM_H
#define ACCSYM_ACCCOM_H

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)

/* ---- Strings: copying and lengths ------------------------------------------------ */

/** Upper case of 'a' to 'z'; any other byte unchanged. */
int CM_CharUpperCnv(unsigned char byte);

/** Copies source with its NUL. */
void CM_strcpy(unsigned char *destination, const unsigned char *source);

/** Copies a wide string with its single 0 byte. */
void CM_strcpyW(unsigned char *destination, const unsigned char *source);

/** CM_strcpyW for flag 1, else CM_strcpy. */
void CM_strcpyF(unsigned char *destination, const unsigned char *source, unsigned short flag);

/**
 * Copies exactly n bytes, also past a NUL in source, then stores a NUL at
 * destination[n]; unlike strncpy it neither stops early nor pads.
 * @param n  0 or more; a negative n counts as 0
 */
void CM_strncpy(unsigned char *destination, const unsigned char *source, short n);

/** Appends source with its NUL at the end of destination. */
void CM_strcat(unsigned char *destination, const unsigned char *source);

/** CM_strncpy to the end of destination: exactly n bytes and a NUL. */
void CM_strncat(unsigned char *destination, const unsigned char *source, short n);

/** Bytes before the NUL, cut to 16 bits: 32768 bytes give -32768. */
int CM_strlen(const unsigned char *text);

/** Bytes of a wide string before its end, cut to 16 bits. */
int CM_strlenW(const unsigned char *text);

/** CM_strlenW for flag 1, else CM_strlen. */
int CM_strlenF(const unsigned char *text, unsigned short flag);

/** Bytes before the NUL, in 32 bits. */
int CM_lstrlen(const unsigned char *text);

/** Appends "/" unless path is empty or ends with it; path needs room for one more byte. */
void CM_PathEndChk(unsigned char *path);

/**
 * Copies what follows the last backslash of path, or all of it when there is none.
 *
 * A backslash at index 0 is not looked at. Bytes are compared, so a character whose
 * trail byte is 0x5C counts as a backslash.
 */
void CM_GetFullPathToFileName(const unsigned char *path, unsigned char *file_name);

/** Whether the platform's strings are wide. @return always 0 */
int CM_GetUnicodeOs(void);

/* ---- Strings: comparing, searching, numbers -------------------------------------- */

/**
 * Compares n bytes without regard to ASCII case; does not stop at a NUL, so both must
 * hold n readable bytes.
 * @return  0 equal, -1 different (there is no order)
 */
int CM_strnicmp(const unsigned char *a, const unsigned char *b, short n);

/** Orders by unsigned bytes, a proper prefix first. @return 1 a greater, -1 smaller, 0 equal */
int CM_strcmp(const unsigned char *a, const unsigned char *b);

/** CM_strcmp of wide strings. */
int CM_strcmpW(const unsigned char *a, const unsigned char *b);

/** CM_strcmpW for flag 1, else CM_strcmp. */
int CM_strcmpF(const unsigned char *a, const unsigned char *b, unsigned short flag);

/**
 * Compares over the common length, n bytes at most: strings of which one begins with
 * the other count as equal, and so does an empty string with any.
 * @return  1 a greater, -1 smaller, 0 no difference within the common length
 */
int CM_strncmp(const unsigned char *a, const unsigned char *b, short n);

/**
 * Compares exactly n bytes.
 * @return  0 both have n bytes and these are equal; 1 a greater or, without a
 *          difference, b shorter than n; -1 a smaller or a shorter than n
 */
int CM_strncmp2(const unsigned char *a, const unsigned char *b, short n);

/**
 * First place where text and key agree over their common length (see CM_strncmp): near
 * the end of text its last bytes need only begin the key.
 * @return  pointer into text; null when there is none or key is longer than text
 */
unsigned char *CM_strpbrk(const unsigned char *text, const unsigned char *key);

/** CM_strpbrk as an index. @return index in bytes; -1 when there is none */
int CM_strpbrk2(const unsigned char *text, const unsigned char *key);

/**
 * Last place of key in text, which must be longer than key. A match that would end at
 * index 0 (a 1-byte key at the start) is not found.
 * @return  pointer into text; null when there is none
 */
unsigned char *CM_strpbrke(const unsigned char *text, const unsigned char *key);

/**
 * Decimal value without any check: no sign, every byte counts as its code - 0x30, and
 * the sum wraps at 32 bits.
 * @return  the value; 0 for an empty string
 */
int CM_atol(const unsigned char *text);

/** CM_atol computed in 16 bits. */
int CM_atos(const unsigned char *text);

/* ---- Memory ---------------------------------------------------------------------- */

/** Copies n bytes; the areas must not overlap. */
void CM_memcpy(void *destination, const void *source, unsigned int n);

/** Copies n bytes between areas that may overlap. @return destination */
void *CM_memmove(void *destination, const void *source, unsigned int n);

/** Swaps n bytes of two areas that do not overlap; nothing for n of 0 or less. */
void CM_memchg(void *a, void *b, int n);

/** Sets n bytes. */
void CM_memfill(void *destination, unsigned char byte, unsigned int n);

/** Sets n bytes to 0. */
void CM_memzero(void *destination, unsigned int n);

/** New block, zero-filled, to be given back with CM_free. @return null: heap exhausted */
void *CM_malloc(unsigned int size);

/**
 * Moves a block to a new one of new_size bytes, of which the first old_size come from
 * the old block and the rest are 0.
 * @param old_size  bytes to keep, at most new_size
 * @return          the new block, the old one is freed; null: heap exhausted, the old
 *                  block stays as it is
 */
void *CM_realloc(void *old_block, unsigned int old_size, unsigned int new_size);

/** Gives a block back; null is ignored. */
void CM_free(void *block);

/* ---- Files ----------------------------------------------------------------------- */

/*
 * A handle is a positive number. 0, -1, a number never given out or a closed one make
 * every function below answer its failure value. Files are buffered: bytes that CM_write
 * took can still be refused when they are flushed, at the latest by CM_close.
 */

/**
 * Opens a file.
 * @param mode  as for fopen; "rb" to read, "r+b" to read and write an existing file
 * @return      handle; -1 when it cannot be opened
 */
int CM_open(const unsigned char *path, const char *mode);

/** Creates or empties a file, to be read and written. @return handle; -1 on failure */
int CM_create(const unsigned char *path);

/** Flushes and closes. @return 0; -1 when bytes were lost (the handle is closed all the same) */
int CM_close(int handle);

/**
 * Reads up to n bytes.
 * @return  bytes read, fewer than n at the end of the file and after an error alike;
 *          0 at the end, never negative
 */
int CM_read(int handle, int n, void *buffer);

/** Writes n bytes as one block. @return n, also for 0; -1 when writing failed */
int CM_write(int handle, int n, const void *buffer);

/**
 * Moves the position; needed between reading and writing the same handle.
 * @param origin  0 start of the file, 1 current position, 2 end of the file
 * @return        0; -1 on failure
 */
int CM_seek(int handle, int offset, int origin);

/** Size of a file in bytes; 0 when it cannot be examined, is empty, or has 2 GiB or more. */
int CM_stat(const unsigned char *path);

/** Removes a file. @return 0; -1 on failure */
int CM_remove(const unsigned char *path);

/**
 * Copies from the source's current position to its end.
 *
 * An error while reading counts as the end.
 *
 * @return  0; -1 when writing failed, the destination is then partly written
 */
int CM_CopyFile(int destination, int source);

/** CM_CopyFile, but count bytes at most. The end of the source before that is no error. */
int CM_CopyFilen(int destination, int source, unsigned int count);

/* ---- Japanese codes -------------------------------------------------------------- */

/**
 * Classes of bytes: entry byte + 1 (entry 0 stands for end of file, -1) is a sum of 1
 * Shift_JIS lead byte, 2 Shift_JIS trail byte, 4 EUC-JP byte of a double-byte character,
 * 8 half-width katakana.
 */
extern const unsigned char ___kanjitbl[257];

/**
 * Converts Shift_JIS text to EUC-JP.
 *
 * A CR is dropped and the byte after it copied as it is, so CR LF ends lines with LF. A
 * lead byte takes the byte after it without a check: malformed text gives malformed
 * text. A lead byte or CR right before the NUL is dropped.
 *
 * @param sjis  NUL-terminated Shift_JIS, or null
 * @return      new NUL-terminated EUC-JP text; the caller frees it with CM_free.
 *              Null when sjis is null or the heap is exhausted.
 */
unsigned char *CM_sjis2euc(const unsigned char *sjis);

/**
 * Converts EUC-JP text to Shift_JIS.
 *
 * Every LF becomes CR LF. The byte after 0x8E is copied as it is, and so is 0x8F alone:
 * there is no JIS X 0212. Nothing is checked; a first byte right before the NUL is
 * dropped.
 *
 * @param euc  NUL-terminated EUC-JP, or null
 * @return     new NUL-terminated Shift_JIS text; the caller frees it with CM_free.
 *             Null when euc is null or the heap is exhausted.
 */
unsigned char *CM_euc2sjis(const unsigned char *euc);

/**
 * Writes the 7-bit JIS bytes of EUC-JP text: no escape sequences, no NUL at the end.
 * Half-width katakana is 1 byte that keeps its high bit.
 * @return  characters written, a double-byte one counting as 1
 */
unsigned short CM_euc2jis(unsigned char *destination, const unsigned char *euc);

/**
 * CM_euc2jis of Shift_JIS text.
 * @return  characters written; 0 when sjis is null or the heap is exhausted
 */
unsigned short CM_ShiftjisToJis(unsigned char *destination, const unsigned char *sjis);

/**
 * Writes Shift_JIS text as EUC-JP bytes, two to an element, the first in its low half.
 *
 * Bytes are paired from the start without regard to characters; a last single byte has a
 * high half of 0. No element ends the array.
 *
 * @return  elements written; 0 when sjis is null or the heap is exhausted
 */
unsigned short CM_ShiftjisToUshortEuc(unsigned short *destination, const unsigned char *sjis);

/**
 * Writes X11 Compound Text and a NUL; no designation is reset at the end.
 *
 * Below 0x80 a code is JIS X 0201 Roman (control characters but TAB and LF are dropped),
 * below 0x100 half-width katakana, else the two EUC-JP bytes of a character, the first
 * in the high half.
 *
 * @param codes  ended by 0 or by maximum
 * @param maximum  most codes to convert; none when 0 or negative
 * @return         bytes written before the NUL
 */
unsigned short CM_EUC_To_CompoundText(unsigned char *destination, const unsigned short *codes,
                                      short maximum);

/**
 * Prints the JIS code of a Shift_JIS code, lead byte in the high half, as four upper-case
 * hexadecimal digits and a NUL; "0000" when its lead byte is none or the trail is 0x7F.
 * @return  characters written, 4
 */
int CM_SjisToJis(unsigned short sjis, unsigned char *destination);

/**
 * Prints row and cell of a Shift_JIS code, lead byte in the high half, as two decimal
 * digits each and a NUL. Nothing is checked: other codes than JIS X 0208 characters give
 * meaningless numbers of up to three digits each.
 * @return  characters written, 4 for a JIS X 0208 character
 */
int CM_SjisToKuten(unsigned short sjis, unsigned char *destination);

/* ---- Unicode --------------------------------------------------------------------- */

/*
 * Both work in steps of two bytes, whatever the characters are: text must consist of
 * double-byte characters, or single bytes standing in pairs. An odd last byte is paired
 * with 0. At most the source length rounded up to even, and a NUL, are written.
 */

/**
 * Converts Shift_JIS to 16-bit Unicode units, high byte first.
 *
 * Pairs that start below 0x80 or at 0xA0 to 0xDF stay as they are. A code that is no
 * JIS X 0208 character becomes U+3013. Of a result below U+0100 nothing is written.
 *
 * @param destination_size  not used
 * @param source_bytes      length of source
 * @return                  source_bytes rounded up to even, cut to 16 bits
 */
int CM_SjisToUnicode(unsigned char *destination, unsigned short destination_size,
                     const unsigned char *source, unsigned short source_bytes);

/**
 * Converts 16-bit Unicode units, high byte first, to Shift_JIS.
 *
 * Nothing is written for a unit below U+0100. A unit that is not in JIS X 0208 is written
 * as its low byte and then its high byte.
 *
 * @param destination_size  not used
 * @param source_bytes      length of source
 * @return                  source_bytes rounded up to even, cut to 16 bits
 */
int CM_UnicodeToSjis(unsigned char *destination, unsigned short destination_size,
                     const unsigned char *source, unsigned short source_bytes);

/* ---- Items of lists -------------------------------------------------------------- */

/*
 * A packed list is strings one behind the other, each with its NUL and perhaps one more.
 * A header is the item's number in decimal, for modes from 3 on a ':', and spaces up to
 * mode - 1 bytes; modes 0 and 1 have none. A number with more digits than fit makes the
 * header longer.
 */

/**
 * The n-th string of a packed list, counted from 1.
 *
 * The walk does not know the end: the list must hold n strings. An empty string between
 * two is passed over as if it were a separator.
 *
 * @return  pointer into list, list itself for n of 1 or less; null for a null list
 */
unsigned char *CM_GetString(const unsigned char *list, int n);

/** CM_GetString for a list of wide strings. */
unsigned char *CM_GetStringW(const unsigned char *list, int n);

/** CM_GetStringW for flag 1, else CM_GetString. */
unsigned char *CM_GetStringF(const unsigned char *list, int n, unsigned short flag);

/**
 * Makes an item: header, text, NUL.
 * @return  bytes of the item with its NUL, for mode 0 without it; cut to 16 bits
 */
int CM_LBMakeHeader(unsigned short mode, const unsigned char *text, unsigned short number,
                    unsigned char *destination);

/**
 * Makes a wide item. The bytes of the header stand two to a unit, an odd last one with 0.
 * @return  bytes of the item with its end, for mode 0 without it; cut to 16 bits
 */
int CM_LBMakeHeaderW(unsigned short mode, const unsigned char *text, unsigned short number,
                     unsigned char *destination);

/** CM_LBMakeHeaderW for flag 1, else CM_LBMakeHeader. */
int CM_LBMakeHeaderF(unsigned short mode, const unsigned char *text, unsigned short number,
                     unsigned char *destination, unsigned short flag);

/**
 * Makes an item with exactly 16 bytes of text, also past a NUL in it, and a NUL.
 * @return  bytes of the item with its NUL, for mode 0 without it; cut to 16 bits
 */
int CM_LBMakeHeaderXKP(unsigned short mode, const unsigned char *text, unsigned short number,
                       unsigned char *destination);

/**
 * The text of an item, mode - 1 bytes on: of a header that a long number made longer,
 * the surplus stays in front of the text.
 * @return  pointer into item; item itself for modes 0 and 1
 */
unsigned char *CM_CutHeader(const unsigned char *item, unsigned short mode);

/** Skips (mode - 1) * 4 bytes of a wide item, or none for modes 0 and 1. */
unsigned char *CM_CutHeaderW(const unsigned char *item, unsigned short mode);

/** CM_CutHeaderW for flag 1, else CM_CutHeader. */
unsigned char *CM_CutHeaderF(const unsigned char *item, unsigned short mode, unsigned short flag);

/**
 * The n-th item, counted from 1, of a list of double-byte characters with a byte 0xA5
 * between items.
 *
 * @param length  set to the item's bytes, 0 when there is none; one too many for a last
 *                item with an odd number of bytes
 * @return        pointer into list, the item has no NUL of its own; null when there are
 *                fewer items or list is null
 */
unsigned char *CM_GetString2(const unsigned char *list, int n, int *length);

/**
 * First item of such a list that begins with key; items count up to 127 bytes.
 * @return  pointer into list; null when there is none
 */
unsigned char *CM_Bsistrpbrk(const unsigned char *list, const unsigned char *key);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
