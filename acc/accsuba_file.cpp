// The commands on files and titles: each hands the record to one engine procedure.
#include "acc/path_check.h"
#include "common/acccom.h"
#include "record/message.h"

namespace acc {

int PathChkProc(Accdata *record) {
    if (!record->lpchString2) return fail(record, Message::memory_not_allocated);
    if (CM_strlen(record->lpchString2) < 1) return fail(record, Message::argument_error);
    return ACC_RET_OK;
}

namespace {

/** Tells the host to redraw the lists when a command succeeded. */
int marking_lists(Accdata *record, int result) {
    if (result == ACC_RET_OK) record->wDataStatus = record->wDataUpdate = ACCDATA_LIST;
    return result;
}

/** Runs an edit and, when it was made, shows the edited tree. */
int edit(Accdata *record, int (*procedure)(Accdata *)) {
    if (procedure(record) != ACC_RET_OK) return ACC_RET_NONE;
    return SYM_Reflesh(record);
}

/** Runs a procedure on files when lpchString2 can be used. */
int checked(Accdata *record, int (*procedure)(Accdata *)) {
    const int check = PathChkProc(record);
    return check == ACC_RET_OK ? procedure(record) : check;
}

} // namespace
} // namespace acc

int ACC_Sym_FileOpenProc(Accdata *record) {
    return acc::marking_lists(record, acc::checked(record, SYM_FileOpenProc));
}

int ACC_Sym_FileCloseProc(Accdata *record) {
    return SYM_FileCloseProc(record);
}

int ACC_Sym_GetInfoProc(Accdata *record) {
    return acc::marking_lists(record, SYM_GetInfo(record));
}

int ACC_Sym_FileChkProc(Accdata *record) {
    return SYM_FileChkProc(record);
}

int ACC_Sym_GetTreeTitleProc(Accdata *record) {
    return SYM_GetTreeTitle(record);
}

int ACC_Sym_GetEditProc(void) {
    return SYM_GetEdit();
}

int ACC_Sym_GetFileTitleProc(Accdata *record) {
    return SYM_GetFileTitle(record);
}

int ACC_Sym_DataRegProc(Accdata *record) {
    return acc::edit(record, SYM_DataChg);
}

int ACC_Sym_TitleAddProc(Accdata *record) {
    return acc::edit(record, SYM_TitleAdd);
}

int ACC_Sym_TitleChgProc(Accdata *record) {
    return acc::edit(record, SYM_TitleChg);
}

int ACC_Sym_TitleDelProc(Accdata *record) {
    return acc::edit(record, SYM_TitleDel);
}

int ACC_Sym_FileNewProc(Accdata *record) {
    SYM_FileCloseProc(record); // with no file open its message stays
    return SYM_FileNewProc(record);
}

int ACC_Sym_FileSaveProc(Accdata *record) {
    return acc::checked(record, SYM_FileSaveProc);
}

int ACC_Sym_FileDelProc(Accdata *record) {
    return acc::checked(record, SYM_FileDelProc);
}

int ACC_Sym_FileConvProc(Accdata *record) {
    return SYM_FileConv(record);
}
