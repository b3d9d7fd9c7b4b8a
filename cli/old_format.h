// old_format.h - what the conversion of an old-format file (".ini") takes and leaves out,
// line by line. The library converts; it does not tell.
#ifndef KIGOU_OLD_FORMAT_H
#define KIGOU_OLD_FORMAT_H

#include <string>
#include <vector>

#include "cli/symbol_set.h"

namespace kigou {

struct OldTitle {
    Sjis title;
    std::string place;
};

struct OldFile {
    std::vector<OldTitle> titles;
    std::vector<LeftOut> left_out; /**< not taken, or taken for something else */
    std::vector<LeftOut> fatal;    /**< what the library refuses the whole file for */
};

/** @param bytes  of the file: Shift_JIS, lines ended by LF or CR LF */
OldFile examine_old_file(const Sjis &bytes);

} // namespace kigou

#endif
