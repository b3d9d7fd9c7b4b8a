// The dispatcher: one command code, one procedure.
#include "accsym.h"

namespace {

struct Command {
    int code;
    int (*procedure)(Accdata *record);
};

constexpr Command commands[] = {
    {ACC_VKEY_DECISION, ACC_Sym_DecisionProc},
    {ACC_VKEY_NEXT_BLOCK, ACC_Sym_NextBlockProc},
    {ACC_VKEY_RIGHT_ITEM, ACC_Sym_RightItemProc},
    {ACC_VKEY_LEFT_ITEM, ACC_Sym_LeftItemProc},
    {ACC_VKEY_FILE_OPEN, ACC_Sym_FileOpenProc},
    {ACC_VKEY_FILE_CLOSE, ACC_Sym_FileCloseProc},
    {ACC_VKEY_DATA_REGISTER, ACC_Sym_DataRegProc},
    {ACC_VKEY_BEFORE_BLOCK, ACC_Sym_BeforeBlockProc},
    {ACC_VKEY_BEFORE_ITEM, ACC_Sym_BeforeItemProc},
    {ACC_VKEY_NEXT_ITEM, ACC_Sym_NextItemProc},
    {ACC_VKEY_GET_INFO, ACC_Sym_GetInfoProc},
    {ACC_VKEY_FILE_NEW, ACC_Sym_FileNewProc},
    {ACC_VKEY_FILE_SAVE, ACC_Sym_FileSaveProc},
    {ACC_VKEY_FILE_DELETE, ACC_Sym_FileDelProc},
    {ACC_VKEY_TITLE_ADD, ACC_Sym_TitleAddProc},
    {ACC_VKEY_TITLE_CHANGE, ACC_Sym_TitleChgProc},
    {ACC_VKEY_TITLE_DELETE, ACC_Sym_TitleDelProc},
    {ACC_VKEY_FILE_CHECK, ACC_Sym_FileChkProc},
    {ACC_VKEY_TREE_TITLES, ACC_Sym_GetTreeTitleProc},
    {ACC_VKEY_GET_EDIT, [](Accdata *) { return ACC_Sym_GetEditProc(); }},
    {ACC_VKEY_SET_ATTRIBUTE, ACC_Sym_SetAttribute},
    {ACC_VKEY_SET_POSITION, ACC_Sym_SetPosProc},
    {ACC_VKEY_FILE_TITLES, ACC_Sym_GetFileTitleProc},
    {ACC_VKEY_FILE_CONVERT, ACC_Sym_FileConvProc},
};

} // namespace

int AccSym(Accdata *record) {
    record->lpchMessage[0] = 0;
    record->cchMessage = 0;
    for (const Command &command : commands) {
        if (command.code == record->wVkey) return command.procedure(record);
    }
    return ACC_RET_NONE;
}
