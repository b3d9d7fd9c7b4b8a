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

} // namespace
} // namespace acc

int ACC_Sym_FileOpenProc(Accdata *record) {
    if (const int result = acc::PathChkProc(record); result != ACC_RET_OK) return result;
    return acc::marking_lists(record, SYM_FileOpenProc(record));
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
