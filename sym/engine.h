// What the engine keeps between two commands: the open file, its index, the directories,
// the list geometry and the edit flag. One process, one open file.
//
// A symbol file is open exactly while g_tAccFile[1].hFile is not 0; then m_tTempIndex,
// m_lptTempInfo and m_lpucChildFlags describe it and belong together.
#ifndef ACCSYM_SYM_ENGINE_H
#define ACCSYM_SYM_ENGINE_H

#include "common/heap_block.h"
#include "sym/block_index.h"
#include "sym/temp_index.h"

namespace acc {

extern TempIndex m_tTempIndex;          // header of the working temp file
extern TempInfo *m_lptTempInfo;         // its records
extern unsigned char *m_lpucChildFlags; // per record: has it child titles?
extern std::uint16_t m_bEditFlag;       // 1: edits that are not saved
extern std::uint16_t m_bTextCut;        // 1: the file opened holds more, behind a NUL byte

extern unsigned char m_ucZikDir[1024];       // user directory; nothing reads it
extern unsigned char m_ucZikProgDir[1024];   // program directory, scanned first
extern unsigned char m_ucZikCommonDir[1024]; // common directory, where new files go

extern unsigned short m_usLBItemLenMax; // item length, bytes
extern unsigned short m_usLBItemHead;   // header mode
extern unsigned short m_usLBItemNumMax; // items per page

inline bool is_file_open() {
    return g_tAccFile[1].hFile != 0;
}

/** The open file's title. */
inline const unsigned char *open_title() {
    return m_lptTempInfo[0].ucTitle;
}

/** The records of the open file; empty when none is open. */
inline Records open_records() {
    return {m_lptTempInfo, m_tTempIndex.usCount};
}

/** Makes an index the open file's and frees the one before. */
void install_index(const TempIndex &header, HeapBlock<TempInfo> &&records,
                   HeapBlock<unsigned char> &&child_flags);

/** Closes and removes the working temp file and frees the index: no file is open. */
void release_open_file();

/** Copies the engine's geometry into all ten lists. */
void set_list_geometry(Accdata *record);

} // namespace acc

#endif
