/*
 * accfile.h - the engine's file records and catalogue counters, exported for
 * hosts that want to look at them. Reading them is safe between two calls of
 * AccSym; writing them is not.
 */
#ifndef ACCSYM_ACCFILE_H
#define ACCSYM_ACCFILE_H

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/** A file by its names and its open handle; 1552 bytes. Names are NUL-ended. */
typedef struct AccFile {
    unsigned char ucDir[512];      /**< directory with its trailing "/"; empty for a temp file */
    unsigned char ucName[260];     /**< what follows the last "/" */
    unsigned char ucFullName[776]; /**< whole path, used to open and to remove the file */
    int hFile;                     /**< handle of CM_open or CM_create; 0: not open */
} AccFile;

/**
 * Record 0 is the symbol file, whose handle is used only while it is being read;
 * record 1 is the working temp file. A symbol file is open exactly while
 * g_tAccFile[1].hFile is not 0.
 */
extern AccFile g_tAccFile[2];

/** Entries in the catalogue of symbol files as the last scan left it. */
extern int m_lSymSVValue;

/** Bytes those entries take: 520 each. */
extern int m_lSymSVBuffSize;

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
