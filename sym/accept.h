// What an edit accepts: whatever it takes must come back the same after a save and an
// open, and must not be read as something else.
#ifndef ACCSYM_SYM_ACCEPT_H
#define ACCSYM_SYM_ACCEPT_H

#include <cstdint>

#include "record/message.h"

namespace acc {

/** Symbol data of one block that an edit takes, bytes. */
inline constexpr std::uint32_t max_data = 32767;

enum class Verdict { accepted, refused, no_memory };

/** Puts message 13 or 11 into the record for a verdict that is not accepted. */
[[nodiscard]] int refuse(Accdata *record, Verdict verdict);

/** Whether a NUL-terminated text survives Shift_JIS to EUC-JP and back. */
Verdict survives_the_disk(const unsigned char *text);

/**
 * A new title or file title: not empty, no more than max_bytes, no separator, no bracket,
 * no control character, and it survives the disk.
 */
Verdict accept_title(const unsigned char *title, std::uint32_t max_bytes);

/**
 * Symbol data: lines of an even number of bytes ended by CR LF (the last one may lack it),
 * no run of hyphens on the 2-byte grid that reads as an end line or that the end line
 * would join, and it survives the disk.
 */
Verdict accept_data(const unsigned char *data);

} // namespace acc

#endif
