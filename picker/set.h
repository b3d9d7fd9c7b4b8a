// set.h - a whole symbol file in memory, as it is exported and imported.
#ifndef KIGOU_PICKER_SET_H
#define KIGOU_PICKER_SET_H

#include <string>
#include <vector>

#include "picker/snapshot.h"
#include "picker/text.h"

namespace kigou {

struct SetBlock {
    Sjis path;           /**< titles joined by "／", the file title not among them */
    Sjis data;           /**< lines of symbols, CR LF behind each */
    std::string place{}; /**< where it was read, for reports: "line 3" */
};

struct SymbolSet {
    Sjis file; /**< file title */
    std::vector<SetBlock> blocks;
};

SymbolSet set_of(const Snapshot &snapshot);

} // namespace kigou

#endif
