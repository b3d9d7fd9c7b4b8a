// The working temp file and its block index.
//
//   0            TempIndex header
//   8            usCount TempInfo records, the file's own first, then one per block
//   ulTextPos    the text form of the symbol file
//
// Invariants
//  1. Between two commands the temp file holds exactly the header and records that are
//     in memory, followed by the text they describe.
//  2. Records stand in the order of their blocks. Offsets count bytes of the text.
//  3. ulTextPos = 8 + 792 * usCount.
//
// The records are private to one process: they are in its byte order and layout.
#ifndef ACCSYM_SYM_TEMP_INDEX_H
#define ACCSYM_SYM_TEMP_INDEX_H

#include <cstddef>
#include <cstdint>

#include "accsym.h"
#include "sym/format.h"

struct TempIndex {
    std::uint16_t usCount;  // records, the file's own included
    std::uint16_t reserved; // 0
    std::uint32_t ulTextPos;
};

struct TempInfo {
    std::uint32_t ulTitlePos;  // of the title line; the file's own: of the file title
    std::uint32_t ulDataPos;   // of the first data byte
    std::uint32_t ulDataLen;   // data in 2-byte units, CR LF included
    std::uint32_t ulSymbolNum; // units that are not CR LF
    std::uint16_t usBlockNo;   // 1 for the file's own, then 2, 3, ...
    std::uint16_t usLevel;     // 1 for the file's own, 2 for a top-level title
    unsigned char ucTitle[257];
    unsigned char ucPath[515]; // full path, file title first
};

static_assert(sizeof(TempIndex) == 8 && offsetof(TempIndex, ulTextPos) == 4);
static_assert(sizeof(TempInfo) == 792 && offsetof(TempInfo, usLevel) == 18 &&
              offsetof(TempInfo, ucTitle) == 20 && offsetof(TempInfo, ucPath) == 277);
static_assert(sizeof(AccFile) == 1552 && offsetof(AccFile, ucName) == 512 &&
              offsetof(AccFile, ucFullName) == 772 && offsetof(AccFile, hFile) == 1548);

namespace acc {

inline constexpr std::uint16_t max_records = 32767;

/** What a temp file with that many records has before its text. */
constexpr std::uint32_t text_position(std::uint32_t records) {
    return static_cast<std::uint32_t>(sizeof(TempIndex) + records * sizeof(TempInfo));
}

} // namespace acc

#endif
