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

/** What SymTempDevelop and the readers of the index answer. */
enum class Develop { done, write_failed, too_deep, does_not_fit };

/**
 * Creates a new temp file, readable and writable by its owner alone, in TMPDIR when that
 * is set or else in the system's directory.
 *
 * @param file  its names are set; hFile is left to the caller
 * @return      the handle, or -1
 */
int SymTempOpen(AccFile *file);

/** Closes a temp file and removes it; hFile becomes 0. */
void discard_temp_file(AccFile *file);

/** A new temp file; unless it became the working one it is removed at the end. */
class NewTempFile {
  public:
    NewTempFile() = default;
    ~NewTempFile() {
        if (file_.hFile != 0) discard_temp_file(&file_);
    }
    NewTempFile(const NewTempFile &) = delete;
    NewTempFile &operator=(const NewTempFile &) = delete;

    /** @return false when it cannot be created */
    bool create();

    int handle() const { return file_.hFile; }
    const unsigned char *path() const { return file_.ucFullName; }

    /** Removes the working temp file and takes its place. */
    void become_working();

  private:
    AccFile file_{};
};

/**
 * Creates the working temp file into g_tAccFile[1].
 * @return 1; 0 with message 1 in the record
 */
int SymTempOpenProc(Accdata *record);

/**
 * Develops a text into a temp file: header, records, text.
 *
 * A text that stops within its last block is closed first, so that the text written may
 * be a little longer than the one given. The file is flushed.
 *
 * @param handle  an empty temp file
 * @param title   place of the file title in the text
 * @param work    scratch record
 * @param header  set to the header written
 * @return        done; write_failed; too_deep when a block lies below level 10 (all is
 *                written); does_not_fit when a title, a path or the number of blocks is
 *                larger than the index holds, or the file would reach 2 GiB
 */
Develop SymTempDevelop(int handle, Text text, Range title, TempInfo *work, TempIndex *header);

} // namespace acc

#endif
