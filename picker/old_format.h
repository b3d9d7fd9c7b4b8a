// old_format.h - an old-format file (".ini") made into titles and symbols as the library
// converts one, with what is left out, line by line. The library takes such a file from the
// current directory alone, and does not tell what it leaves out.
#ifndef KIGOU_PICKER_OLD_FORMAT_H
#define KIGOU_PICKER_OLD_FORMAT_H

#include <string>
#include <vector>

#include "picker/symbol_reading.h"

namespace kigou {

struct OldTitle {
    Sjis title;
    std::string place;
    Sjis data{}; /**< a line for each key with symbols, CR LF behind it */
};

struct OldFile {
    std::vector<OldTitle> titles;
    std::vector<LeftOut> left_out; /**< not taken, or taken for something else */
    std::vector<LeftOut> fatal;    /**< what the library refuses the whole file for */
};

/** @param bytes  of the file: Shift_JIS, lines ended by LF or CR LF */
OldFile read_old_file(const Sjis &bytes);

} // namespace kigou

#endif
