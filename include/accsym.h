/*
 * accsym.h - every exported procedure of the command layer and of the engine.
 *
 * Conventions
 *  1. Hosts call AccSym. The other procedures are what it calls; they are exported
 *     for hosts that drive one step themselves, and take the same record.
 *  2. One call at a time, from any thread: the open file, the catalogue and the list
 *     geometry are process-wide and unguarded.
 *  3. The record and its buffers (see accdata.h) must not be null.
 *  4. A procedure that fails with a message puts it into lpchMessage and its length
 *     into cchMessage. The numbers below are those of the message table in
 *     docs/host-guide.md.
 *  5. wCurrentList outside 1 to ACC_LISTBOX_MAX: a command that uses the current list
 *     answers ACC_RET_NONE and touches nothing. A null string that a command reads:
 *     message 4 and ACC_RET_ERROR.
 */
#ifndef ACCSYM_ACCSYM_H
#define ACCSYM_ACCSYM_H

#include "accdata.h"
#include "accfile.h"

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/**
 * Runs one command: empties the message, then calls the procedure that wVkey names.
 *
 * Nothing else of the record is reset, so the data-status fields keep what the host
 * sent unless the command says otherwise.
 *
 * @return the procedure's result, an ACC_RET_ value; ACC_RET_NONE for an unknown code
 */
int AccSym(Accdata *record);

/**
 * Copies an error message with its NUL (at most 41 bytes) into a buffer.
 *
 * @param index   0 to 19; any other value empties the buffer
 * @return        the text's length in bytes, which the caller stores in cchMessage
 */
unsigned short ACC_Sym_SetErrMsgProc(int index, unsigned char *buffer);

/** The same for status message 0 (end of the candidates) or 1 (no candidates). */
unsigned short ACC_Sym_SetStsMsgProc(int index, unsigned char *buffer);

/* ---- Moving in the lists --------------------------------------------------------- */

/** Next item on the page. @return 1 moved; 2 at the end of the page or list */
int ACC_Sym_NextItemProc(Accdata *record);

/** Previous item on the page. @return 1 moved; 2 at the start of the page or list */
int ACC_Sym_BeforeItemProc(Accdata *record);

/**
 * Next page; the cursor goes to its first item.
 * @return 1 moved; 2 there is none; 0 the lists could not be refilled (message 7), the
 *         cursor has moved all the same
 */
int ACC_Sym_NextBlockProc(Accdata *record);

/** Previous page; results as for the next page. */
int ACC_Sym_BeforeBlockProc(Accdata *record);

/**
 * Shows the current title's contents in the next list and moves focus there.
 * @return 1 descended (also when the title has vanished: then that list is empty and
 *         the data-status fields are untouched); 2 the current item is no title, or
 *         the current list is the last
 */
int ACC_Sym_RightItemProc(Accdata *record);

/** Moves focus to the list before; no list changes. @return 1 moved; 2 already at list 1 */
int ACC_Sym_LeftItemProc(Accdata *record);

/**
 * Puts the current symbol into lpchResult.
 *
 * wDataUpdate tells a new choice (bit 128 added) from the same one again (set to 0).
 *
 * @return 1 taken; 2 the current item is no symbol
 */
int ACC_Sym_DecisionProc(Accdata *record);

/**
 * Positions the lists on the title whose full path is lpchString1.
 *
 * The current list on entry is emptied first, also when the title is not found.
 *
 * @return 1 done; 0 the file has no titles (the path is only stored), a list could not
 *         be filled (message 7), or lpchString1 is null (message 4); -1 no such title
 */
int ACC_Sym_SetPosProc(Accdata *record);

/**
 * Sets caption and geometry of all ten lists and refills them.
 *
 * lpchString1 is the caption, copied into every lpchLBTitle that is not null. Items per
 * page, header length and item length are the first two bytes of lpchString2, 3 and 4,
 * high byte first: these three are not text and may hold a NUL. The values stay in
 * force across closes and opens.
 *
 * @return 1 done; 0 the lists could not be refilled (message 7)
 */
int ACC_Sym_SetAttribute(Accdata *record);

/**
 * Index of a list's current item, 0-based.
 * @param list_index  0 to 9
 * @return            the index; 65535 when there is none. It can lie beyond the list.
 */
unsigned short ACC_Sym_GetLBIndexProc(Accdata *record, unsigned short list_index);

/**
 * Text of a list's current item, behind its header.
 * @param list_index  0 to 9; the list must have a current item
 * @return            a pointer into lpchLBList; nothing is copied
 */
unsigned char *ACC_Sym_GetLBDataProc(Accdata *record, unsigned short list_index);

/* ---- Files and queries ----------------------------------------------------------- */

/**
 * Opens the symbol file titled lpchString1 and shows its titles in list 1.
 *
 * lpchString2 to 4 are the user, program and common directories; lpchString2 must not
 * be empty. Success stores exactly ACCDATA_LIST in both data-status fields.
 *
 * @return 1 open; 4 deeper than ten levels (message 9); 0 with message 0 no such file,
 *         1 no temp file, 2 lpchString2 is empty or a directory longer than 1022 bytes,
 *         4 a null string, 5 a file is open, 6 not a symbol file, 7 the index cannot be read,
 *         8 the temp file cannot be written, 11 no memory
 */
int ACC_Sym_FileOpenProc(Accdata *record);

/** Closes the open file; unsaved edits are lost. @return 1 closed; 0 none open (message 10) */
int ACC_Sym_FileCloseProc(Accdata *record);

/** SYM_GetInfo, and on success ACCDATA_LIST in both data-status fields. */
int ACC_Sym_GetInfoProc(Accdata *record);

/**
 * Replaces the symbols of the title that the current list shows, then refills the lists.
 *
 * As for all four edits: the edit is in the working temp file at once, the symbol file
 * changes with the next save, and a failed edit changes nothing.
 *
 * @return 1 done; 2 not done, with the message of SYM_DataChg; 0 done, but the lists could
 *         not be refilled (message 7)
 */
int ACC_Sym_DataRegProc(Accdata *record);

/** SYM_TitleAdd, then refills the lists; results as for ACC_Sym_DataRegProc. */
int ACC_Sym_TitleAddProc(Accdata *record);

/** SYM_TitleChg, then refills the lists; results as for ACC_Sym_DataRegProc. */
int ACC_Sym_TitleChgProc(Accdata *record);

/** SYM_TitleDel, then refills the lists; results as for ACC_Sym_DataRegProc. */
int ACC_Sym_TitleDelProc(Accdata *record);

/**
 * Closes the open file, unsaved edits and all, then SYM_FileNewProc.
 *
 * When no file was open, message 10 stands in the record beside the new file's result.
 */
int ACC_Sym_FileNewProc(Accdata *record);

/** SYM_FileSaveProc; lpchString2 must not be empty (message 2 or 4 and result 0). */
int ACC_Sym_FileSaveProc(Accdata *record);

/** SYM_FileDelProc; lpchString2 must not be empty (message 2 or 4 and result 0). */
int ACC_Sym_FileDelProc(Accdata *record);

/** SYM_FileConv. */
int ACC_Sym_FileConvProc(Accdata *record);

/** SYM_FileChkProc. */
int ACC_Sym_FileChkProc(Accdata *record);

/** SYM_GetTreeTitle. */
int ACC_Sym_GetTreeTitleProc(Accdata *record);

/** SYM_GetEdit. */
int ACC_Sym_GetEditProc(void);

/** SYM_GetFileTitle. */
int ACC_Sym_GetFileTitleProc(Accdata *record);

/* ---- The engine ------------------------------------------------------------------ */

/** The open behind ACC_Sym_FileOpenProc: the same but for the check of lpchString2. */
int SYM_FileOpenProc(Accdata *record);

/** The close behind ACC_Sym_FileCloseProc. */
int SYM_FileCloseProc(Accdata *record);

/**
 * Empties the current list, then positions the lists on a title.
 * @param path  full path, file title first
 * @return      1 done; 0 the file has no titles or a list could not be filled
 *              (message 7); -1 no such title, one below level 10, or a path longer than
 *              514 bytes; 2 wCurrentList is out of range
 */
int SYM_SetDataPos(Accdata *record, const unsigned char *path);

/**
 * Refills lists 1 to wCurrentList from the current list's lpchLBLevel.
 *
 * Cursors stay, but a current list without a current item gets its first one. A list
 * that does not fit its buffer ends at the last item that does, with message 9 beside
 * result 1.
 *
 * @return 1 done, or no file open (nothing happens); 0 a path on the way up is not in
 *         the file, or a block could not be read (message 7); 2 wCurrentList is out of
 *         range
 */
int SYM_Reflesh(Accdata *record);

/** Items per page for later fills and opens; 0: not paged, numbers do not start again. */
void SYM_SetBlockLength(unsigned short items_per_page);

/** Header setting of later fills and opens (see ListBox). */
void SYM_SetHeaderLength(unsigned short header_length);

/** Item length of later opens, bytes; only hosts read it. */
void SYM_SetItemLength(unsigned short item_length);

/**
 * Puts every symbol file's title into lpchDisplay, in catalogue order.
 *
 * A list that does not fit ends at the last title that does, with message 9 beside
 * result 1.
 *
 * @return 1 delivered; 0 lpchString1 is null or the program directory cannot be read
 *         (no message)
 */
int SYM_GetFileTitle(Accdata *record);

/** @return 1 a file titled lpchString1 exists and opens; 0 it does not (message 0) */
int SYM_FileChkProc(Accdata *record);

/**
 * Writes the current symbol's codes into lpchLBItemInfo of the current list.
 * @return 1 written (cchLBItemInfoSize 15); 2 the current item is no symbol
 */
int SYM_GetInfo(Accdata *record);

/**
 * Puts the file title and every full title path into lpchDisplay, in file order.
 *
 * A list that does not fit ends at the last path that does, with message 9 beside
 * result 1.
 *
 * @return 1 delivered; 2 no file is open
 */
int SYM_GetTreeTitle(Accdata *record);

/** @return 1 the open file has unsaved edits; 2 it has none */
int SYM_GetEdit(void);

/* ---- Editing --------------------------------------------------------------------- */

/**
 * Adds the title lpchString1 below the title that the current list shows, as an empty
 * block behind all that lies below that title. The depth is not limited, but a file with
 * a title below level 10 does not open again.
 *
 * A title is Shift_JIS, 1 to 256 bytes, without "／", "［", "］" or control characters, and
 * comes back the same from EUC-JP; its full path has at most 514 bytes.
 *
 * @return 1 added; 0 with message 1 no temp file, 4 a null string, 8 the temp file cannot
 *         be written, 11 no memory, 12 the title exists, 13 no such title or parent
 */
int SYM_TitleAdd(Accdata *record);

/**
 * Renames the title that the current list shows to lpchString1, with the paths of all that
 * lies below it; in list 1 that is the file title (at most 255 bytes). The new path is
 * shown in that list's lpchLBLevel.
 *
 * Renaming a block writes the text anew: remarks between blocks are not carried over.
 *
 * @return 1 renamed, or message 12 and the file title unchanged; 0 with message 1, 8, 11,
 *         13 as for SYM_TitleAdd, 4 a null string or no memory, 10 no file open, 12 the
 *         title exists or the list shows none
 */
int SYM_TitleChg(Accdata *record);

/**
 * Deletes the title that the current list shows with all that lies below it; focus moves
 * to the list before.
 *
 * @return 1 deleted; 0 with message 1, 8, 11 as for SYM_TitleAdd, 12 the list shows no
 *         title, 14 it shows the file itself
 */
int SYM_TitleDel(Accdata *record);

/**
 * Makes lpchString1 the symbols of the title that the current list shows.
 *
 * The data are Shift_JIS, at most 32767 bytes: lines of whole 2-byte symbols ended by
 * CR LF, which the last may lack; no hyphens that would read as an end line; the same
 * after EUC-JP and back.
 *
 * @return 1 done; 0 with message 1, 8, 11 as for SYM_TitleAdd, 4 a null string, 12 the list
 *         shows no title, 13 data that cannot be stored, 15 it shows the file itself
 */
int SYM_DataChg(Accdata *record);

/**
 * Makes a new, empty symbol file titled lpchString1 the open one. It lies in the working
 * temp file alone until it is saved. The directories are those of the last open.
 *
 * @return 1 open; -1 no memory (no message); 0 with message 1 no temp file, 4 a null
 *         string, 7 the directories could not be read whole, 8 the temp file cannot be
 *         written, 13 no title (an empty one is taken), 18 a file of that title exists
 */
int SYM_FileNewProc(Accdata *record);

/**
 * Saves the open file under the title lpchString1.
 *
 * A title that a file has: that file is replaced, and the file title within stays the open
 * file's own. Any other: the open file's title changes to it (only list 1 shows that: lists
 * further on want positioning anew) and a new file "@0000000.kig", or with the next free
 * number, appears in the common directory. Either the new file is in place, whole, or what
 * was there before is untouched.
 *
 * @return 1 saved (message 12 may stand beside it: the title was the open file's already);
 *         -1 writing failed (no message); 0 with message 1 no file open, or the target
 *         cannot be written or its directory takes no new file, 4 a null string, 7 the
 *         directories could not be read whole, 11 no memory or no free name, 17 the standard
 * symbols, and those of a title change
 */
int SYM_FileSaveProc(Accdata *record);

/**
 * Deletes the symbol file titled lpchString1. The open file is not looked at.
 * @return 1 deleted, or the system refused to; 0 with message 0 no such file, 4 a null
 *         string, 19 the standard symbols
 */
int SYM_FileDelProc(Accdata *record);

/**
 * Appends the titles of an old-format file (".ini") to the open file as blocks.
 *
 * @param record  lpchString1 is the old file's path: a bare name, or one whose directories
 *                are separated by backslashes; a "/" before the first "." is refused
 * @return        1 appended; 0 with message 0 the name is refused, 1 no temp file, 4 a null
 *                string, 10 no file open, 16 anything else: no such file, no title in it,
 *                more than 99 titles or 32767 bytes, text that would not come back the same
 *                from a save, no memory, a file that cannot be written
 */
int SYM_FileConv(Accdata *record);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
