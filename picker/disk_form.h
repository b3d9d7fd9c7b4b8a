// disk_form.h - between the two forms of a symbol file: EUC-JP with LF on disk, Shift_JIS
// with CR LF in memory, by the library's converters.
#ifndef KIGOU_PICKER_DISK_FORM_H
#define KIGOU_PICKER_DISK_FORM_H

#include <span>

#include "picker/text.h"

namespace kigou {

/** Bytes of a file as text; ends before a NUL, as the library's reader does. */
Sjis text_form(std::span<const unsigned char> disk);

/** Text as bytes for a file; ends before a NUL. */
Sjis disk_form(std::span<const unsigned char> text);

/** Whether Shift_JIS is the same after a save and an open, that is through EUC-JP and back. */
bool survives_saving(std::span<const unsigned char> sjis);

} // namespace kigou

#endif
